// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SIGNAL_EDITOR_H
#define APPS_OXA_EDITOR_SIGNAL_EDITOR_H

#include "oxautils/model/signal_item.h"

#include <QSet>
#include <QWidget>

#include <memory>

class DesignTree;
class FlowLayout;
class QAction;
class QToolButton;
class QTreeView;
class SignalModel;

/// A tree of signals with actions: add, paste, rename, group, move, remove.
///
/// Like its model it shows its owner's list, and requests changes by `edited`.
class SignalEditor : public QWidget {
    Q_OBJECT

public:
    /// With `captures` the tree shows which signals are captured.
    explicit SignalEditor(bool captures, QWidget* parent = nullptr);

    void setItems(const QList<OXA::SignalItem>& items);

    /// The design that typed names are checked with; may be null.
    void setDesign(const std::shared_ptr<const DesignTree>& design) { m_design = design; }

    QTreeView* view() const { return m_view; }
    SignalModel* model() const { return m_model; }

    /// Adds a button for `action` after the editor's own.
    QToolButton* addButton(QAction* action);

    /// Inserts `items` after the selected rows, or at the end, as the step `step`.
    void insert(const QList<OXA::SignalItem>& items, const QString& step);

    /// Selects the first signal or bit that `text` names.
    void selectNamedIn(const QString& text);

public Q_SLOTS:
    void cut(); ///< the selected signals, to the clipboard
    void copy();
    void paste(); ///< signals, or a list of names

Q_SIGNALS:
    void edited(const QList<OXA::SignalItem>& items, const QString& step);
    void designWanted(); ///< the user wants to choose signals of the design

private:
    QAction* makeAction(const QString& text, const QKeySequence& keys, const QString& hint,
        void (SignalEditor::*done)());
    void makeActions();
    void setUpView(bool captures);
    void keepExpanded();
    void updateActions();
    void select(int first, int count, const QModelIndex& parent);

    QList<int> selectedTop() const;
    QList<OXA::SignalItem> selectedItems() const;

    void add();
    void rename();
    void remove();
    void group();
    void ungroup();
    void moveUp();
    void moveDown();
    void move(bool up);

    std::shared_ptr<const DesignTree> m_design;
    SignalModel* m_model;
    QTreeView* m_view = nullptr;
    FlowLayout* m_buttons;
    QList<QAction*> m_needSelection;
    QAction* m_ungroup;
    QSet<QString> m_expanded; // names of buses
};

#endif
