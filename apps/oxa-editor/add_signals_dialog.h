// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_ADD_SIGNALS_DIALOG_H
#define APPS_OXA_EDITOR_ADD_SIGNALS_DIALOG_H

#include "name_check.h"

#include "oxautils/model/signal_item.h"

#include <QDialog>

#include <memory>

class DesignTree;
class QDialogButtonBox;
class QLabel;
class QPlainTextEdit;

/// Edits a list of signal names, and shows the signals that it stands for. Names that the design
/// does not have are marked, and can be added.
class AddSignalsDialog : public QDialog {
    Q_OBJECT

public:
    /// `design` may be null; then no name is checked.
    explicit AddSignalsDialog(
        const std::shared_ptr<const DesignTree>& design, QWidget* parent = nullptr);

    QList<OXA::SignalItem> items() const;

private:
    void showResult();
    void mark(const QList<UnknownName>& unknown);

    const std::shared_ptr<const DesignTree> m_design;
    QPlainTextEdit* m_names;
    QLabel* m_result;
    QDialogButtonBox* m_buttons;
};

#endif
