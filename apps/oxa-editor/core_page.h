// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_CORE_PAGE_H
#define APPS_OXA_EDITOR_CORE_PAGE_H

#include "document.h"

#include <QWidget>

/// A page of the window: shows some properties of one core and edits them through the document.
class CorePage : public QWidget {
    Q_OBJECT

public:
    CorePage(Document& document, Page page, QWidget* parent = nullptr);

    Page page() const { return m_page; }

    /// Shows `core`; the page is disabled without one.
    void setCore(const CorePtr& core);

    /// Call it when the core changed: updates the page now, or when it is next visible.
    void contentChanged();

    /// Sets the focus to the first field.
    void enter();

    /// Scrolls to the port, unit or expression `item`.
    virtual void reveal(int item);

    /// Scrolls to the first signal that `text` names.
    virtual void revealNamedIn(const QString& text);

    /// Inserts signals into the page's list, if it has one.
    virtual void insert(const QList<OXA::SignalItem>& items);

Q_SIGNALS:
    void designWanted(); ///< the user wants to choose signals of the design

protected:
    void showEvent(QShowEvent* event) override;

    /// Updates the page from the core.
    virtual void refresh() = 0;

    /// The widget that `enter` focuses.
    void setEntry(QWidget* widget) { m_entry = widget; }

    const CorePtr& core() const { return m_core; }

    /// The core when it is a Standard one, else null; also null after the core was removed.
    OXA::AoCore* standard() const { return m_core ? m_core->standard.get() : nullptr; }
    Document& document() const { return m_document; }
    Location location(int item = -1) const { return {m_core, m_page, item}; }

private:
    Document& m_document;
    const Page m_page;
    CorePtr m_core;
    QWidget* m_entry = nullptr;
    bool m_stale = false;
};

#endif
