// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CORE_PAGES_H
#define APPS_OXA_EDITOR_CORE_PAGES_H

#include "document.h"

#include <QTabWidget>

class CorePage;

/// The pages of one core, for the mode of the document.
class CorePages : public QTabWidget {
    Q_OBJECT

public:
    explicit CorePages(Document& document, QWidget* parent = nullptr);

    /// Replaces the pages by those for cores of the document's mode.
    void makePages();

    /// Shows `core`; the pages are disabled without one.
    void setCore(const CorePtr& core);

    /// Call it when the core changed.
    void contentChanged();

    /// Shows the page, if cores of this mode have it; else the current one stays.
    void showPage(Page page);

    /// The page that is shown; null before `makePages`.
    CorePage* page() const;

    /// Shows the page and sets the focus to its first field.
    void enter(Page page);

    /// Shows the page and inserts signals there.
    void insert(Page page, const QList<OXA::SignalItem>& items);

Q_SIGNALS:
    void designWanted(); ///< the user wants to choose signals of the design

private:
    QList<CorePage*> pages() const;
    void orderTabs();

    Document& m_document;
};

#endif
