// SPDX-License-Identifier: Apache-2.0
#include "add_signals_dialog.h"

#include "signal_names.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

AddSignalsDialog::AddSignalsDialog(QWidget* parent)
    : QDialog(parent)
    , m_names(new QPlainTextEdit(this))
    , m_result(new QLabel(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Add Signals"));
    auto* label = new QLabel(
        tr("&Names of signals in the design, one in each line. data[7:0] is a bus."), this);
    label->setWordWrap(true);
    label->setBuddy(m_names);
    m_names->setTabChangesFocus(true);
    m_names->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_result->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_names, 1);
    layout->addWidget(m_result);
    layout->addWidget(m_buttons);
    connect(m_names, &QPlainTextEdit::textChanged, this, &AddSignalsDialog::showResult);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    for (const char* keys : {"Ctrl+Return", "Ctrl+Enter"}) // Enter begins another line
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, ok,
            &QPushButton::click);
    showResult();
    resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 18);
}

QList<OXA::SignalItem> AddSignalsDialog::items() const
{
    QStringList errors;
    return parseSignals(m_names->toPlainText(), errors);
}

void AddSignalsDialog::showResult()
{
    QStringList errors;
    const QList<OXA::SignalItem> items = parseSignals(m_names->toPlainText(), errors);
    const int bits = OXA::flattenedNames(items).size();
    m_result->setText(errors.isEmpty() ? bitsText(bits) : errors.join('\n'));
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(errors.isEmpty() && !items.isEmpty());
}
