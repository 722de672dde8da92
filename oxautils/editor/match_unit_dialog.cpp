// SPDX-License-Identifier: Apache-2.0
#include "oxautils/editor/match_unit_dialog.h"

#include "oxautils/editor/oxautils_common.h"
#include "oxautils/editor/tree_line_edit.h"
#include "oxautils/model/ao_core.h"
#include "ui_match_unit_dialog.h"

#include <QMessageBox>
#include <QRegularExpressionValidator>

#include <climits>

namespace OXA {

namespace {

constexpr MatchType kTypes[] = {
    MatchBasic,
    MatchBasicEdges,
    MatchExtended,
    MatchExtendedEdges,
    MatchRange,
    MatchRangeEdges,
};

/// 2 to the power of `width`: counters count matches from 1.
int counterMaximum(unsigned width)
{
    return width < 32 ? int(qMin(1u << width, unsigned(INT_MAX))) : INT_MAX;
}

/// Shows `value` even when it is outside the range that a user can choose.
void setStoredValue(QSpinBox* box, int value)
{
    box->setMinimum(qMin(box->minimum(), value));
    box->setMaximum(qMax(box->maximum(), value));
    box->setValue(value);
}

}

MatchUnitDialog::MatchUnitDialog(MatchUnit* unit, bool fixedUnit, QWidget* parent)
    : QDialog(parent)
    , ui(new Ui_MatchUnitDialog)
    , fixedUnit(fixedUnit)
    , unit(unit)
    , core(unit->core)
    , type(unit->matchType)
    , func(unit->matchFunc)
    , validator(new ValueValidator(this))
{
    ui->setupUi(this);
    initialize();
    if (fixedUnit) {
        ui->comboBoxTrigger->setEnabled(false);
        ui->comboBoxType->setEnabled(false);
        ui->groupBoxCounter->setCheckable(false); // enables its content
        if (!unit->counterEnable) {
            ui->groupBoxCounter->setEnabled(false);
            ui->spinBoxCounterWidth->setEnabled(false);
        }
    }
    for (QTreeWidget* tree : {ui->treeSignals, ui->treeSignals0, ui->treeSignals1})
        tree->setTextElideMode(Qt::ElideMiddle);
}

MatchUnitDialog::~MatchUnitDialog()
{
    // An editor that loses the focus during destruction would still emit its text.
    for (TreeLineEdit* edit : findChildren<TreeLineEdit*>())
        edit->disconnect(this);
}

void MatchUnitDialog::initialize()
{
    ui->lbTitle->setText(tr("Match Unit %1").arg(unit->index));
    for (const MatchType each : kTypes)
        ui->comboBoxType->addItem(type2string(each), each);
    if (core) {
        for (const TriggerPort* port : core->availableTriggers())
            ui->comboBoxTrigger->addItem(tr("Trigger Port %1").arg(port->index), port->index);
    }
    ui->rbtnBin->setChecked(true);
    const int port = unit->trigger ? unit->trigger->index : -1;
    ui->comboBoxTrigger->setCurrentIndex(ui->comboBoxTrigger->findData(port));
    onTriggerChanged();
    ui->comboBoxType->setCurrentIndex(ui->comboBoxType->findData(type));
    fillFunctions();
    showRange();
    setEditor(withoutForbidden(unit->value0), ui->treeSignals0);
    setEditor(withoutForbidden(unit->value1), ui->treeSignals1);
    initializeCounter();
    toolTipValueChanged(ui->treeSignals0);
    toolTipValueChanged(ui->treeSignals1);
    connectInputs();
}

void MatchUnitDialog::initializeCounter()
{
    ui->groupBoxCounter->setChecked(unit->counterEnable);
    setStoredValue(ui->spinBoxCounterWidth, unit->counterWidth);
    ui->spinBoxCounter->setMaximum(counterMaximum(unsigned(qMax(unit->counterWidth, 0))));
    ui->spinBoxCounter->setMinimum(qMin(ui->spinBoxCounter->minimum(), unit->counter));
    ui->spinBoxCounter->setValue(unit->counter);
    ui->checkBoxContinuous->setChecked(unit->continuous);
}

void MatchUnitDialog::connectInputs()
{
    const auto activated = QOverload<int>::of(&QComboBox::activated);
    connect(ui->comboBoxTrigger, activated, this, &MatchUnitDialog::onTriggerChanged);
    connect(ui->comboBoxType, activated, this, &MatchUnitDialog::onTypeChanged);
    connect(ui->comboBoxFunc, activated, this, &MatchUnitDialog::onFuncChanged);
    connect(ui->spinBoxCounterWidth, QOverload<int>::of(&QSpinBox::valueChanged), this,
        &MatchUnitDialog::onCounterWidthChanged);
    for (QTreeWidget* tree : {ui->treeSignals0, ui->treeSignals1})
        tree->installEventFilter(this);
    for (QRadioButton* button : {ui->rbtnBin, ui->rbtnOct, ui->rbtnDec, ui->rbtnHex})
        connect(button, &QRadioButton::toggled, this, &MatchUnitDialog::onBaseChanged);
}

/// Adds the functions of the type. A stored function that the type does not have is kept, unseen,
/// until the user chooses one.
void MatchUnitDialog::fillFunctions()
{
    ui->comboBoxFunc->clear();
    for (const int each : optionalFunctions(MatchType(type)))
        ui->comboBoxFunc->addItem(func2string(MatchFunc(each)), each);
    ui->comboBoxFunc->setCurrentIndex(ui->comboBoxFunc->findData(func));
}

void MatchUnitDialog::showRange()
{
    const bool range = isRangeFunction(MatchFunc(func));
    ui->lbValue0->setVisible(range);
    ui->lbValue1->setVisible(range);
    ui->treeSignals1->setVisible(range);
}

void MatchUnitDialog::onTriggerChanged()
{
    const QVariant chosen = ui->comboBoxTrigger->currentData();
    TriggerPort* port = core && chosen.isValid() ? core->getTrigger(chosen.toInt()) : nullptr;
    if (port && port == triggerPort)
        return;
    for (QTreeWidget* tree : {ui->treeSignals, ui->treeSignals0, ui->treeSignals1})
        resetTree(tree);
    triggerPort = port;
    ui->widgetRight->setEnabled(port);
    if (!port)
        return;
    for (int row = 0; row < port->signalList.size(); ++row) {
        const SignalItem& item = port->signalList.at(row);
        Signal2treeItem(ui->treeSignals, item);
        Signal2treeItemAndEdit(ui->treeSignals0, item, row);
        Signal2treeItemAndEdit(ui->treeSignals1, item, row);
    }
    for (QTreeWidget* tree : {ui->treeSignals0, ui->treeSignals1}) {
        layOutEditors(tree);
        toolTipValueChanged(tree);
    }
}

void MatchUnitDialog::onTypeChanged()
{
    finishEdits();
    if (ui->comboBoxType->currentIndex() < 0)
        return;
    type = ui->comboBoxType->currentData().toInt();
    fillFunctions();
    if (ui->comboBoxFunc->currentIndex() < 0) {
        ui->comboBoxFunc->setCurrentIndex(0);
        func = ui->comboBoxFunc->currentData().toInt();
    }
    showRange();
    rewriteValues(base, false);
}

void MatchUnitDialog::onFuncChanged()
{
    finishEdits();
    if (ui->comboBoxFunc->currentIndex() < 0)
        return;
    func = ui->comboBoxFunc->currentData().toInt();
    showRange();
    rewriteValues(base, func != MatchEqual && func != MatchNotEqual);
}

void MatchUnitDialog::onBaseChanged()
{
    const int chosen = ui->rbtnBin->isChecked() ? 2
        : ui->rbtnHex->isChecked()              ? 16
        : ui->rbtnOct->isChecked()              ? 8
        : ui->rbtnDec->isChecked()              ? 10
                                                : base;
    if (chosen == base) // both changing buttons emit the signal
        return;
    finishEdits();
    rewriteValues(chosen, true);
    toolTipValueChanged(ui->treeSignals0);
    toolTipValueChanged(ui->treeSignals1);
}

/// Sets up the editors for `newBase`, the type and the function; clears values that they do not
/// allow. With `convert`, clears only rows with letters.
void MatchUnitDialog::rewriteValues(int newBase, bool convert)
{
    const QString value0 = getEditor(ui->treeSignals0, convert);
    const QString value1 = getEditor(ui->treeSignals1, convert);
    base = newBase;
    resetEditor();
    setEditor(fits(value0, ui->treeSignals0) ? value0 : QString(), ui->treeSignals0);
    setEditor(fits(value1, ui->treeSignals1) ? value1 : QString(), ui->treeSignals1);
}

void MatchUnitDialog::onCounterWidthChanged()
{
    // The format's rule: the width counts modulo 32 here.
    ui->spinBoxCounter->setMaximum(counterMaximum(unsigned(ui->spinBoxCounterWidth->value()) % 32));
}

void MatchUnitDialog::accept()
{
    finishEdits();
    if (triggerPort) {
        const QString value0 = getEditor(ui->treeSignals0, false);
        const QString value1 = getEditor(ui->treeSignals1, false);
        const QString text = objection(value0, value1);
        if (!text.isEmpty()) {
            QMessageBox::warning(this, tr("Value Invalid"), text, QMessageBox::Ok);
            return;
        }
        writeUnit(value0, value1);
    }
    QDialog::accept();
}

/// The error in the values; empty when there is none.
QString MatchUnitDialog::objection(const QString& value0, const QString& value1) const
{
    const bool range = isRangeFunction(MatchFunc(func));
    // Always empty: the editors limit the values, and hosts rely on no other limit.
    const QString effective;
    if (value0.length() < effective.length() || (range && value1.length() < effective.length()))
        return tr("value is more than effective width.");
    if (range && value0 > value1)
        return tr("Maximum value is less than minimum value.");
    return {};
}

void MatchUnitDialog::writeUnit(const QString& value0, const QString& value1)
{
    if (!fixedUnit) {
        unit->trigger = triggerPort;
        unit->matchType = MatchType(type);
        unit->counterEnable = ui->groupBoxCounter->isChecked();
        unit->counterWidth = ui->spinBoxCounterWidth->value();
    }
    unit->matchFunc = MatchFunc(func);
    unit->counter = ui->spinBoxCounter->value();
    unit->continuous = ui->checkBoxContinuous->isChecked();
    unit->value0 = value0;
    unit->value1 = value1;
}

}
