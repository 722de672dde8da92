// SPDX-License-Identifier: Apache-2.0
#include "expression_edit.h"

#include "error_underline.h"

#include "oxautils/encoding/expression_tokens.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStandardItemModel>

using namespace OXA;

namespace {

QString unitText(const MatchUnit& unit)
{
    QString value = unit.value0;
    if (isRangeFunction(unit.matchFunc))
        value += " : " + unit.value1;
    return QString("M%1   T%2 %3 %4")
        .arg(QString::number(unit.index),
            unit.trigger ? QString::number(unit.trigger->index) : QString("?"),
            func2string(unit.matchFunc), value);
}

}

ExpressionEdit::ExpressionEdit(QWidget* parent)
    : QPlainTextEdit(parent)
    , m_completer(new QCompleter(this))
    , m_units(new QStandardItemModel(this))
{
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont font("Monospace");
    font.setStyleHint(QFont::Monospace);
    setFont(font);

    m_completer->setModel(m_units);
    m_completer->setWidget(this);
    m_completer->setCompletionRole(Qt::UserRole);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    connect(m_completer, QOverload<const QModelIndex&>::of(&QCompleter::activated), this,
        [this](const QModelIndex& index) { complete(index.data(Qt::UserRole).toString()); });
    connect(this, &QPlainTextEdit::textChanged, this, &ExpressionEdit::takeText);
}

QSize ExpressionEdit::sizeHint() const
{
    const int margins = int(2 * document()->documentMargin()) + 2 * frameWidth();
    return {fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() + margins};
}

QSize ExpressionEdit::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 12, sizeHint().height()};
}

void ExpressionEdit::setUnits(const AoCore& core)
{
    m_units->clear();
    for (const MatchUnit* unit : core.enabledMatchUnits()) {
        auto* row = new QStandardItem(unitText(*unit));
        row->setData(QString("M%1").arg(unit->index), Qt::UserRole);
        m_units->appendRow(row);
    }
}

void ExpressionEdit::setText(const QString& text)
{
    if (text == m_text)
        return;
    const QSignalBlocker blocker(this);
    m_text = text;
    setPlainText(text);
    moveCursor(QTextCursor::End);
}

void ExpressionEdit::setMarks(const QList<ExpressionMark>& marks)
{
    QList<QTextEdit::ExtraSelection> selections;
    for (const ExpressionMark& mark : marks) {
        QTextCursor place = textCursor();
        place.setPosition(mark.start);
        place.setPosition(mark.start + mark.length, QTextCursor::KeepAnchor);
        selections += errorUnderline(place, palette());
    }
    setExtraSelections(selections);
}

void ExpressionEdit::takeText()
{
    const QString raw = toPlainText();
    const QString text = normalizedExpression(raw);
    if (text != raw) {
        const int position = normalizedExpression(raw.left(textCursor().position())).size();
        const QSignalBlocker blocker(this);
        setPlainText(text);
        QTextCursor cursor = textCursor();
        cursor.setPosition(qMin(position, text.size()));
        setTextCursor(cursor);
    }
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT typed(text);
}

/// Leaves undo and redo to the window.
bool ExpressionEdit::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool control = key->modifiers() & Qt::ControlModifier;
        if (control && (key->key() == Qt::Key_Z || key->key() == Qt::Key_Y)) {
            event->ignore();
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

void ExpressionEdit::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool leaves = enter || event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab
        || event->key() == Qt::Key_Backtab;
    if (m_completer->popup()->isVisible() && leaves) {
        event->ignore(); // the completer handles them
        return;
    }
    if (enter) {
        Q_EMIT finished();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    const bool asked = event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier;
    if (asked || !event->text().trimmed().isEmpty())
        offerCompletion();
}

void ExpressionEdit::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        Q_EMIT finished();
}

/// The part of a unit's name before the cursor; may be empty.
QString ExpressionEdit::nameBeforeCursor() const
{
    const QList<Token> tokens = tokensOf(m_text.left(textCursor().position()));
    return !tokens.isEmpty() && tokens.last().kind == Token::Unit ? tokens.last().text : QString();
}

void ExpressionEdit::offerCompletion()
{
    const QString prefix = nameBeforeCursor();
    m_completer->setCompletionPrefix(prefix);
    const bool complete = m_completer->completionCount() == 1
        && m_completer->currentIndex().data(Qt::UserRole).toString() == prefix;
    if (prefix.isEmpty() || m_completer->completionCount() == 0 || complete) {
        m_completer->popup()->hide();
        return;
    }
    QRect place = cursorRect();
    const QAbstractItemView* popup = m_completer->popup();
    place.setWidth(
        popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width() + 8);
    m_completer->complete(place);
}

void ExpressionEdit::complete(const QString& name)
{
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, nameBeforeCursor().size());
    cursor.insertText(name);
    setTextCursor(cursor);
}
