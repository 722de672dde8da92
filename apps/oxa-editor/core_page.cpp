// SPDX-License-Identifier: Apache-2.0
#include "core_page.h"

CorePage::CorePage(Document& document, Page page, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_page(page)
{
    setEnabled(false);
}

void CorePage::setCore(const CorePtr& core)
{
    m_core = core;
    setEnabled(core != nullptr);
    contentChanged();
}

void CorePage::contentChanged()
{
    m_stale = !isVisible();
    if (!m_stale)
        refresh();
}

void CorePage::showEvent(QShowEvent* event)
{
    if (m_stale)
        refresh();
    m_stale = false;
    QWidget::showEvent(event);
}

void CorePage::enter()
{
    if (m_entry)
        m_entry->setFocus(Qt::ShortcutFocusReason);
}

void CorePage::reveal(int) { }

void CorePage::revealNamedIn(const QString&) { }

void CorePage::insert(const QList<OXA::SignalItem>&) { }
