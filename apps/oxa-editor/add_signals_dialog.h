// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_ADD_SIGNALS_DIALOG_H
#define APPS_OXA_EDITOR_ADD_SIGNALS_DIALOG_H

#include "oxautils/model/signal_item.h"

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;

/// Edits a list of signal names, and shows the signals that it stands for.
class AddSignalsDialog : public QDialog {
    Q_OBJECT

public:
    explicit AddSignalsDialog(QWidget* parent = nullptr);

    QList<OXA::SignalItem> items() const;

private:
    void showResult();

    QPlainTextEdit* m_names;
    QLabel* m_result;
    QDialogButtonBox* m_buttons;
};

#endif
