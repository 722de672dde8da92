// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_EXPRESSION_EDIT_H
#define APPS_OXA_EDITOR_EXPRESSION_EDIT_H

#include "expression_marks.h"

#include <QPlainTextEdit>

class QCompleter;
class QStandardItemModel;

/// A line for one trigger expression. It completes the names of units and underlines errors. The
/// line has no undo of its own; the document has.
class ExpressionEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ExpressionEdit(QWidget* parent = nullptr);

    /// Completes the units of `core`, with their comparisons as descriptions.
    void setUnits(const OXA::AoCore& core);

    /// Shows `text`, unless it is shown already.
    void setText(const QString& text);
    void setMarks(const QList<ExpressionMark>& marks);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void typed(const QString& text); ///< normalized
    void finished(); ///< Enter, or the focus leaves the line

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void takeText();
    void offerCompletion();
    void complete(const QString& name);
    QString nameBeforeCursor() const;

    QCompleter* m_completer;
    QStandardItemModel* m_units;
    QString m_text;
};

#endif
