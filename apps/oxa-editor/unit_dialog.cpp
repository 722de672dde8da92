// SPDX-License-Identifier: Apache-2.0
#include "unit_dialog.h"

#include "screen_size.h"

#include "oxautils/model/shown_text.h"
#include "oxautils/model/trigger_port.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>
#include <QShortcut>

using namespace OXA;

namespace {

constexpr int kMostLosses = 8; // listed

bool isCleared(const QString& before, const QString& after)
{
    const bool isBlank = after.count('0') == after.size() || after.count('X') == after.size();
    return before != after && isBlank;
}

/// The signals of `port` whose digits were cleared: "d: 1R becomes 00".
QStringList clearedIn(const TriggerPort& port, const QString& before, const QString& after)
{
    QStringList texts;
    int at = 0;
    for (const SignalItem& item : port.signalList) {
        const int width = item.isBus() ? int(item.subItems.size()) : 1;
        const QString old = before.mid(at, width);
        const QString now = after.mid(at, width);
        if (!old.isEmpty() && isCleared(old, now))
            texts += UnitDialog::tr("%1: %2 becomes %3").arg(shownText(item.name), old, now);
        at += width;
    }
    return texts;
}

}

UnitDialog::UnitDialog(MatchUnit* unit, QWidget* parent)
    : MatchUnitDialog(unit, false, parent)
    , m_unit(unit)
    , m_before(*unit)
{
    for (QRadioButton* radix : findChildren<QRadioButton*>())
        connect(radix, &QRadioButton::toggled, this, [this] { m_mayClear = true; });
    for (QComboBox* choice : findChildren<QComboBox*>())
        connect(
            choice, QOverload<int>::of(&QComboBox::activated), this, [this] { m_mayClear = true; });
    addLegend();
    chooseOnlyPort();
    resizeOnScreen(*this, size());
}

/// A unit without a port gets the one that has signals, when there is no other.
void UnitDialog::chooseOnlyPort()
{
    auto* ports = findChild<QComboBox*>("comboBoxTrigger");
    if (ports->currentIndex() >= 0 || ports->count() != 1)
        return;
    ports->setCurrentIndex(0);
    onTriggerChanged();
}

void UnitDialog::addLegend()
{
    auto* legend = new QLabel(tr("In BIN (Alt+B): X any, R rising, F falling, B either edge,"
                                 " N no edge. Another radix sets a signal that has these to 0."));
    legend->setWordWrap(true);
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(legend, grid->rowCount(), 0, 1, grid->columnCount());
    auto* binary = findChild<QRadioButton*>("rbtnBin");
    connect(new QShortcut(QKeySequence("Alt+B"), this), &QShortcut::activated, binary,
        &QRadioButton::click);
}

/// What another radix or type has cleared.
QStringList UnitDialog::losses() const
{
    const TriggerPort* port = m_before.trigger;
    if (!m_mayClear || !port || m_unit->trigger != port)
        return {};
    QStringList texts = clearedIn(*port, m_before.value0, m_unit->value0);
    if (isRangeFunction(m_before.matchFunc) && isRangeFunction(m_unit->matchFunc))
        texts += clearedIn(*port, m_before.value1, m_unit->value1);
    return texts;
}

void UnitDialog::done(int result)
{
    QStringList texts = result == Accepted ? losses() : QStringList();
    if (texts.size() > kMostLosses)
        texts = texts.mid(0, kMostLosses) << tr("and others");
    if (!texts.isEmpty()
        && QMessageBox::question(this, tr("Clear Values?"),
               tr("Another radix, type or function has cleared values:\n\n%1\n\nStore these?"
                  " No returns to the dialog, whose Cancel keeps the old values.")
                   .arg(texts.join('\n')),
               QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes) {
        *m_unit = m_before;
        return;
    }
    MatchUnitDialog::done(result);
}
