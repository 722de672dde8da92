// SPDX-License-Identifier: Apache-2.0
#include "part_choice.h"

#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>

PartChoice::PartChoice(QWidget* parent)
    : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(16);
    addItem(QString());
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips)
        addItem(QString("%1 (%2)").arg(chip.partNumber, chip.name),
            QStringList {chip.partNumber, chip.name});
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setFilterMode(Qt::MatchContains);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    lineEdit()->setPlaceholderText(tr("Type a part number"));
    connect(lineEdit(), &QLineEdit::returnPressed, this, &PartChoice::takeText);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        lineEdit()->home(false);
        Q_EMIT partChanged();
    });
}

DEV::ChipInfo PartChoice::part() const
{
    const QStringList keys = currentData().toStringList();
    return keys.isEmpty() ? DEV::ChipInfo()
                          : DEV::DeviceDb::instance().find(keys.value(0), keys.value(1));
}

QString PartChoice::key() const { return currentData().toStringList().join('|'); }

void PartChoice::setKey(const QString& key)
{
    for (int row = count() - 1; row >= 0; --row) {
        if (row == 0 || itemData(row).toStringList().join('|') == key) {
            setCurrentIndex(row);
            return;
        }
    }
}

void PartChoice::focusOutEvent(QFocusEvent* event)
{
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        takeText();
}

/// Chooses the part with the typed number, or the only one that contains the text; else restores
/// the text.
void PartChoice::takeText()
{
    const QString text = currentText().trimmed();
    int row = findText(text, Qt::MatchFixedString);
    if (row < 0 && findText(text, Qt::MatchContains) >= 0) {
        const QModelIndexList found
            = model()->match(model()->index(0, 0), Qt::DisplayRole, text, 2, Qt::MatchContains);
        row = found.size() == 1 ? found.first().row() : -1;
    }
    if (row >= 0)
        setCurrentIndex(row);
    setEditText(itemText(currentIndex()));
}
