// SPDX-License-Identifier: Apache-2.0
#include "add_signals_dialog.h"

#include "design/design_tree.h"
#include "error_underline.h"
#include "signal_names.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr int kMostShown = 4; // faults

/// What is wrong with the first names.
QString unknownText(const QList<UnknownName>& unknown)
{
    QStringList lines;
    for (const UnknownName& name : unknown.mid(0, kMostShown))
        lines += name.text;
    if (unknown.size() > kMostShown)
        lines += AddSignalsDialog::tr("and %1 more").arg(unknown.size() - kMostShown);
    return lines.join('\n');
}

}

AddSignalsDialog::AddSignalsDialog(const std::shared_ptr<const DesignTree>& design, QWidget* parent)
    : QDialog(parent)
    , m_design(design)
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
    m_result->setTextFormat(Qt::PlainText);
    m_result->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_result->setMinimumHeight(fontMetrics().lineSpacing() * 2);

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
    QList<UnknownName> unknown;
    if (m_design)
        unknown = unknownNames(m_names->toPlainText(), m_design->index());
    mark(unknown);
    QStringList texts = errors;
    if (errors.isEmpty())
        texts += bitsText(bits);
    if (!unknown.isEmpty())
        texts += unknownText(unknown);
    m_result->setText(texts.join('\n'));
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    ok->setText(unknown.isEmpty() ? tr("&Add") : tr("&Add Anyway"));
    ok->setEnabled(errors.isEmpty() && !items.isEmpty());
}

/// Underlines the lines of unknown names.
void AddSignalsDialog::mark(const QList<UnknownName>& unknown)
{
    QList<QTextEdit::ExtraSelection> marks;
    for (const UnknownName& name : unknown) {
        QTextCursor line(m_names->document()->findBlockByNumber(name.line));
        line.select(QTextCursor::LineUnderCursor);
        marks += errorUnderline(line, palette());
    }
    m_names->setExtraSelections(marks);
}
