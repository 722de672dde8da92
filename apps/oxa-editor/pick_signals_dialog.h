// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_PICK_SIGNALS_DIALOG_H
#define APPS_OXA_EDITOR_PICK_SIGNALS_DIALOG_H

#include "oxautils/model/signal_item.h"

#include <QDialog>

class QListWidget;

/// Lets a user choose some of a list of signals.
class PickSignalsDialog : public QDialog {
    Q_OBJECT

public:
    explicit PickSignalsDialog(const QList<OXA::SignalItem>& items, QWidget* parent = nullptr);

    /// The chosen ones, in the order of the list.
    QList<OXA::SignalItem> items() const;

private:
    void filter(const QString& text);

    const QList<OXA::SignalItem> m_items;
    QListWidget* m_list;
};

#endif
