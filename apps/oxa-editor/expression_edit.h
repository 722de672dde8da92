#ifndef APPS_OXA_EDITOR_EXPRESSION_EDIT_H
#define APPS_OXA_EDITOR_EXPRESSION_EDIT_H

#include "expression_marks.h"

#include <QPlainTextEdit>

class QCompleter;
class QStandardItemModel;

/// A line for one trigger expression. It completes the names of units and underlines what is wrong.
/// Undo is the document's: the line has no memory of its own.
class ExpressionEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ExpressionEdit(QWidget* parent = nullptr);

    /// Offers the units of `core`, each with what it compares.
    void setUnits(const OXA::AoCore& core);

    /// Shows `text`, unless it is there already.
    void setText(const QString& text);
    void setMarks(const QList<ExpressionMark>& marks);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void typed(const QString& text); ///< normalized
    void finished(); ///< by Enter or by leaving the line

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
