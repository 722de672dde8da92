// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_PART_CHOICE_H
#define APPS_OXA_EDITOR_PART_CHOICE_H

#include <QComboBox>

#include <dev/device_db.h>

/// Chooses a part of the catalogue, from a list or by typing a piece of its number.
class PartChoice : public QComboBox {
    Q_OBJECT

public:
    explicit PartChoice(QWidget* parent = nullptr);

    /// The chosen part; an empty record when there is none.
    DEV::ChipInfo part() const;

    /// Chooses the part with this `key()`; none when the catalogue no longer has it.
    void setKey(const QString& key);
    QString key() const;

Q_SIGNALS:
    void partChanged();

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    void takeText();
};

#endif
