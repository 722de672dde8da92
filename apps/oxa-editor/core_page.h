#ifndef APPS_OXA_EDITOR_CORE_PAGE_H
#define APPS_OXA_EDITOR_CORE_PAGE_H

#include "document.h"

#include <QWidget>

/// A page of the window: it shows one side of one core, and edits it through the document.
class CorePage : public QWidget {
    Q_OBJECT

public:
    CorePage(Document& document, Page page, QWidget* parent = nullptr);

    Page page() const { return m_page; }

    /// Shows `core`; the page is disabled without one.
    void setCore(const CorePtr& core);

    /// To be called when the core's content changed: shows it, now or when the page is next seen.
    void contentChanged();

    /// Gives the focus to what a user of the page begins with.
    void enter();

    /// Brings the port, unit or expression `item` to the user's eye.
    virtual void reveal(int item);

    /// Brings the first signal that `text` names to the user's eye.
    virtual void revealNamedIn(const QString& text);

    /// Puts signals into the list that the page shows, when it shows one.
    virtual void insert(const QList<OXA::SignalItem>& items);

Q_SIGNALS:
    void designWanted(); ///< the user wants to choose signals of the design

protected:
    void showEvent(QShowEvent* event) override;

    /// Shows what the core holds now.
    virtual void refresh() = 0;

    /// Where `enter` goes.
    void setEntry(QWidget* widget) { m_entry = widget; }

    const CorePtr& core() const { return m_core; }

    /// The core when it is a Standard one, else null. A click can come after its core is gone.
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
