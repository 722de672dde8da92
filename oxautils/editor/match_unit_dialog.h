// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_EDITOR_MATCH_UNIT_DIALOG_H
#define OXAUTILS_EDITOR_MATCH_UNIT_DIALOG_H

#include "oxautils/model/match_unit.h"
#include "oxautils/model/signal_item.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QLineEdit;
class QRegExpValidator;
class QRegularExpressionValidator;
class QTreeWidget;

namespace OXA {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
/// Of the dialog's editors: Qt 6 has no QRegExpValidator.
using ValueValidator = QRegExpValidator;
#else
/// Of the dialog's editors: Qt 6 has no QRegExpValidator.
using ValueValidator = QRegularExpressionValidator;
#endif

class AoCore;
class TreeLineEdit;
class TriggerPort;
class Ui_MatchUnitDialog;

/// Edits one match unit: its port, type, function, values and counter.
///
/// The unit is written only when the user confirms; without a chosen port it is not changed. Values
/// are entered signal by signal in one of four radixes and stored as binary digits.
class OXAUTILS_EXPORT MatchUnitDialog : public QDialog {
    Q_OBJECT

public:
    /// `unit`, its core and the core's ports have to outlive the dialog. With `fixedUnit`, the
    /// port, the type and the counter's switch and width, which a netlist determines, cannot be
    /// changed.
    explicit MatchUnitDialog(MatchUnit* unit, bool fixedUnit = false, QWidget* parent = nullptr);
    ~MatchUnitDialog() override;

public Q_SLOTS:
    /// Writes the unit and closes; or reports why the values are not accepted, and stays open.
    void accept() override;
    /// For the dialog's own widgets: shows what they have now.
    /// @{
    void onTriggerChanged();
    void onTypeChanged();
    void onFuncChanged();
    void onBaseChanged();
    void onCounterWidthChanged();
    /// @}

    /// Digits of `width` bits in the current radix; 0 without a port.
    int calculatedBitwidth(int width);

    /// Sets the tooltip of each row's editor to its range in the current radix.
    void toolTipValueChanged(QTreeWidget* widget);

    /// For the dialog's own widgets: the digits of the value that is edited.
    /// @{
    void onEditMenu(QPoint position);
    void onChangeX();
    void onChange0();
    void onChange1();
    void onChangeR();
    void onChangeF();
    void onChangeB();
    void onChangeN();
    void onBusEditChange();
    void onSubEditChange();
    /// @}

protected:
    /// Moves the focus among the rows' editors.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void initialize();
    void setEditorType(QLineEdit* edit, int width);
    QString getEditor(QTreeWidget* tree, bool convert);
    void setEditor(QString value, QTreeWidget* tree);
    void resetTree(QTreeWidget* tree);
    void resetEditor();
    void clearEditorFocus(QTreeWidget* tree);
    void Signal2treeItemAndEdit(QTreeWidget* tree, SignalItem item, int row);

    void initializeCounter();
    void connectInputs();
    void fillFunctions();
    void showRange();
    void finishEdits();
    void rewriteValues(int newBase, bool convert);
    void writeUnit(const QString& value0, const QString& value1);
    QString objection(const QString& value0, const QString& value1) const;

    QString digits() const;
    bool offers(QChar digit) const;
    QString withoutForbidden(QString value) const;
    bool fits(const QString& value, QTreeWidget* tree) const;
    TreeLineEdit* makeEditor(QTreeWidget* tree, const QString& name);
    void layOutEditors(QTreeWidget* tree);
    void showBits(TreeLineEdit* edit, const QString& bits);
    void finishBus(TreeLineEdit* edit);
    void finishBit(TreeLineEdit* edit);
    void changeTo(QChar digit);

    std::unique_ptr<Ui_MatchUnitDialog> ui;
    bool fixedUnit;
    MatchUnit* unit;
    AoCore* core;
    TriggerPort* triggerPort = nullptr; ///< the chosen one
    qint32 type;
    qint32 func;
    qint32 base = 2;
    ValueValidator* validator; ///< of all rows' editors, for the current radix, type and function
    QPointer<TreeLineEdit> currentEdit; ///< where the digit menu was opened last
};

}

#endif
