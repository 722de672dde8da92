// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_EXPRESSIONS_PAGE_H
#define APPS_OXA_EDITOR_EXPRESSIONS_PAGE_H

#include "core_page.h"

#include <functional>

class ExpressionEdit;
class QComboBox;
class QLabel;
class QListWidget;
class QToolButton;
class QTableView;
class TruthTable;

/// The trigger expressions of a Standard core in the order of its trigger sequence.
class ExpressionsPage : public CorePage {
    Q_OBJECT

public:
    explicit ExpressionsPage(Document& document, QWidget* parent = nullptr);

    void reveal(int item) override;

protected:
    void refresh() override;

private:
    QWidget* makeKind();
    QWidget* makeList();
    QWidget* makeEditor();
    void showExpression();
    QStringList expressions() const;
    void change(const QStringList& expressions, const QString& step, int current);
    void add();
    void remove();
    void move(int by);
    void takeOrder();
    QToolButton* addButton(
        const QString& text, const QKeySequence& keys, const std::function<void()>& done);

    QComboBox* m_kind;
    QComboBox* m_memory;
    QListWidget* m_list;
    QList<QToolButton*> m_needRow;
    ExpressionEdit* m_edit;
    QLabel* m_complaint;
    TruthTable* m_table;
    QTableView* m_tableView;
    QLabel* m_reason;
};

#endif
