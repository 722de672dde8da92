// SPDX-License-Identifier: Apache-2.0
#include "core_form.h"

#include "design/design_tree.h"
#include "signal_names.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>

namespace {

/// Shows `value` even when it is outside the range that a user can choose.
void showNumber(QSpinBox* box, int value)
{
    const QSignalBlocker blocker(box);
    box->setMinimum(qMin(box->minimum(), value));
    box->setMaximum(qMax(box->maximum(), value));
    box->setValue(value);
}

/// The clocks of all cores and of the design, then the other signals of `core`.
QStringList clockCandidates(const Document& document, const Core& core)
{
    QStringList names;
    for (const CorePtr& each : document.cores())
        names += each->sampleClock();
    if (document.design())
        names += document.design()->design().clocks;
    names += OXA::flattenedNames(core.signalList());
    for (int i = 0; core.standard && i < core.standard->triggers.size(); ++i)
        names += core.standard->triggers.at(i)->singleSignals();
    names.removeAll(QString());
    names.removeDuplicates();
    return names;
}

}

void DoublingSpinBox::stepBy(int steps)
{
    qint64 number = value();
    for (; steps > 0; --steps)
        number = number > 0 ? number * 2 : 1;
    for (; steps < 0; ++steps)
        number /= 2;
    setValue(int(qBound(qint64(minimum()), number, qint64(maximum()))));
    selectAll();
}

QAbstractSpinBox::StepEnabled DoublingSpinBox::stepEnabled() const
{
    return (value() < maximum() ? StepUpEnabled : StepNone)
        | (value() > minimum() ? StepDownEnabled : StepNone);
}

CoreForm::CoreForm(Document& document, QFormLayout* layout)
    : QObject(layout)
    , m_document(document)
    , m_layout(layout)
{
}

QLineEdit* CoreForm::addName(const QString& label, const QString& step, const Field<QString>& field)
{
    auto* edit = new QLineEdit;
    m_layout->addRow(label, edit);
    connect(edit, &QLineEdit::editingFinished, this, [=] {
        if (m_core)
            m_document.set(location(), field(*m_core), cleanName(edit->text()), step);
    });
    m_rows += [=](const Core& core) {
        if (edit->text() != field(core))
            edit->setText(field(core));
    };
    return edit;
}

QLineEdit* CoreForm::addSignalName(
    const QString& label, const QString& step, const Field<QString>& field)
{
    QLineEdit* edit = addName(label, step, field);
    auto* names = new QStringListModel(edit);
    auto* completer = new QCompleter(names, edit);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    edit->setCompleter(completer);
    m_rows += [=](const Core& core) { names->setStringList(clockCandidates(m_document, core)); };
    return edit;
}

void CoreForm::addNumber(
    const QString& label, const QString& step, const Field<int>& field, QSpinBox* box)
{
    box->setKeyboardTracking(false);
    m_layout->addRow(label, box);
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, [=](int value) {
        if (m_core)
            m_document.type(location(), field(*m_core), value, step);
    });
    connect(box, &QSpinBox::editingFinished, this, [=] { m_document.endRun(); });
    m_rows += [=](const Core& core) { showNumber(box, field(core)); };
}

QComboBox* CoreForm::addChoice(const QString& label, const QString& step, const Field<int>& field,
    const QList<Choice>& choices)
{
    auto* box = new QComboBox;
    for (const Choice& choice : choices)
        box->addItem(choice.text, choice.value);
    m_layout->addRow(label, box);
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [=] {
        if (m_core)
            m_document.set(location(), field(*m_core), box->currentData().toInt(), step);
    });
    m_rows += [=](const Core& core) { box->setCurrentIndex(box->findData(field(core))); };
    return box;
}

QCheckBox* CoreForm::addSwitch(const QString& text, const QString& step, const Field<bool>& field)
{
    auto* box = new QCheckBox(text);
    m_layout->addRow(box);
    connect(box, &QCheckBox::clicked, this, [=](bool checked) {
        if (m_core)
            m_document.set(location(), field(*m_core), checked, step);
    });
    m_rows += [=](const Core& core) { box->setChecked(field(core)); };
    return box;
}

void CoreForm::show(const CorePtr& core)
{
    m_core = core;
    for (const auto& row : qAsConst(m_rows)) {
        if (core)
            row(*core);
    }
}
