// SPDX-License-Identifier: Apache-2.0
#include "core_pages.h"

#include "capture_page.h"
#include "expressions_page.h"
#include "help_window.h"
#include "ports_page.h"
#include "signals_page.h"
#include "units_page.h"

#include <QTabBar>

namespace {

// In docs/editor.md, in the order of Page.
constexpr const char* kHelpAnchors[] = {
    "capture",
    "signals-and-trigger-ports",
    "signals-and-trigger-ports",
    "match-units",
    "expressions",
};

}

CorePages::CorePages(Document& document, QWidget* parent)
    : QTabWidget(parent)
    , m_document(document)
{
    setDocumentMode(true);
    // Allows dragging signals of the design to a hidden page.
    tabBar()->setAcceptDrops(true);
    tabBar()->setChangeCurrentOnDrag(true);
}

void CorePages::makePages()
{
    while (count() > 0)
        delete widget(0);
    if (m_document.mode() == OXA::Lite) {
        addTab(new LiteCapturePage(m_document), tr("Capture"));
        addTab(new SignalsPage(m_document), tr("Signals"));
    } else {
        addTab(new CapturePage(m_document), tr("Capture"));
        addTab(new SignalsPage(m_document), tr("Signals"));
        addTab(new PortsPage(m_document), tr("Trigger ports"));
        addTab(new UnitsPage(m_document), tr("Match units"));
        addTab(new ExpressionsPage(m_document), tr("Expressions"));
    }
    for (CorePage* page : pages()) {
        setHelpAnchor(page, kHelpAnchors[int(page->page())]);
        connect(page, &CorePage::designWanted, this, &CorePages::designWanted);
    }
    orderTabs();
}

/// Puts the pages into the Tab order behind their tabs. New widgets would come last.
void CorePages::orderTabs()
{
    QWidget* last = tabBar();
    for (QWidget* page : pages()) {
        QList<QWidget*> stops;
        for (QWidget* at = page->nextInFocusChain(); at != page; at = at->nextInFocusChain()) {
            if (page->isAncestorOf(at) && at->focusPolicy() & Qt::TabFocus && !at->focusProxy())
                stops += at;
        }
        for (QWidget* stop : qAsConst(stops)) {
            setTabOrder(last, stop);
            last = stop;
        }
    }
}

QList<CorePage*> CorePages::pages() const
{
    QList<CorePage*> all;
    for (int i = 0; i < count(); ++i)
        all += static_cast<CorePage*>(widget(i));
    return all;
}

CorePage* CorePages::page() const { return static_cast<CorePage*>(currentWidget()); }

void CorePages::setCore(const CorePtr& core)
{
    for (CorePage* page : pages())
        page->setCore(core);
}

void CorePages::contentChanged()
{
    for (CorePage* page : pages())
        page->contentChanged();
}

void CorePages::showPage(Page page)
{
    for (CorePage* each : pages()) {
        if (each->page() == page)
            setCurrentWidget(each);
    }
}

void CorePages::enter(Page page)
{
    showPage(page);
    this->page()->enter();
}

void CorePages::insert(Page page, const QList<OXA::SignalItem>& items)
{
    showPage(page);
    this->page()->insert(items);
}
