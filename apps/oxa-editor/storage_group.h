// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_STORAGE_GROUP_H
#define APPS_OXA_EDITOR_STORAGE_GROUP_H

#include "document.h"

#include <QGroupBox>
#include <QHash>

class ExpressionEdit;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QStringListModel;

/// Which samples a Standard core stores: all, changes, or those at which an expression holds. Only
/// the fields that the choice uses are visible.
class StorageGroup : public QGroupBox {
    Q_OBJECT

public:
    explicit StorageGroup(Document& document, QWidget* parent = nullptr);

    /// Shows the storage of `core`; nothing for one without.
    void show(const CorePtr& core);

private:
    using Change = std::function<void(OXA::CoreStorage& storage)>;

    void addRow(const QString& text, QWidget* field);
    void addRows();
    void connectRows();
    void change(const Change& change, const QString& step, bool typed);
    void showFields(const OXA::AoCore& core);
    void showExpression(const OXA::AoCore& core);

    Document& m_document;
    QGridLayout* m_grid; // unlike a form it has no space for invisible rows
    QHash<QWidget*, QLabel*> m_labels; // of fields
    QComboBox* m_keep;
    QLineEdit* m_watch;
    QStringListModel* m_names; // that it completes
    ExpressionEdit* m_when;
    QLabel* m_complaint; // about the expression
    QSpinBox* m_gapBits;
    QDoubleSpinBox* m_limit; // larger numbers than QSpinBox has
    QLabel* m_sizes;
    CorePtr m_core;
};

#endif
