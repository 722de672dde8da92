// SPDX-License-Identifier: Apache-2.0
// The part of the dialog for values: one editor for each signal and for each bit of a bus.

#include "oxautils/editor/match_unit_dialog.h"

#include "oxautils/editor/digits.h"
#include "oxautils/editor/oxautils_common.h"
#include "oxautils/editor/tree_line_edit.h"
#include "oxautils/model/trigger_port.h"
#include "ui_match_unit_dialog.h"

#include <QEvent>
#include <QMenu>
#include <QRegularExpressionValidator>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kNameColumn = 0;
constexpr int kEditColumn = 1;
constexpr int kMaxNameWidth = 26; // average characters, in a narrow tree

struct DigitChoice {
    char digit;
    const char* text;
    void (MatchUnitDialog::*chosen)();
};

// In the order of the menu.
constexpr DigitChoice kDigits[] = {
    {'X', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "X   Don't Care"),   &MatchUnitDialog::onChangeX},
    {'0', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "0   Low"),          &MatchUnitDialog::onChange0},
    {'1', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "1   High"),         &MatchUnitDialog::onChange1},
    {'R', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "R   Rising Edge"),
     &MatchUnitDialog::onChangeR                                                                    },
    {'F', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "F   Falling Edge"),
     &MatchUnitDialog::onChangeF                                                                    },
    {'B', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "B   Either Edge"),
     &MatchUnitDialog::onChangeB                                                                    },
    {'N', QT_TRANSLATE_NOOP("OXA::MatchUnitDialog", "N   No Edge"),      &MatchUnitDialog::onChangeN},
};

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
void setPattern(ValueValidator& validator, const QString& pattern)
{
    validator.setRegExp(QRegExp(pattern));
}

bool matches(const ValueValidator& validator, const QString& text)
{
    return validator.regExp().exactMatch(text);
}
#else
void setPattern(ValueValidator& validator, const QString& pattern)
{
    validator.setRegularExpression(QRegularExpression(pattern));
}

bool matches(const ValueValidator& validator, const QString& text)
{
    const QString whole
        = QRegularExpression::anchoredPattern(validator.regularExpression().pattern());
    return QRegularExpression(whole).match(text).hasMatch();
}
#endif

bool isLetter(QChar digit) { return QString("XBFRN").contains(digit); }

/// The editors of the top-level rows. Read their displayText(): under a mask with the blank "0",
/// text() omits all zeros.
QList<TreeLineEdit*> rowEdits(const QTreeWidget* tree)
{
    QList<TreeLineEdit*> edits;
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        edits += static_cast<TreeLineEdit*>(tree->itemWidget(tree->topLevelItem(row), kEditColumn));
    edits.removeAll(nullptr);
    return edits;
}

QTreeWidget* treeOf(QWidget* edit)
{
    while (edit && !qobject_cast<QTreeWidget*>(edit))
        edit = edit->parentWidget();
    return static_cast<QTreeWidget*>(edit);
}

QString bitTexts(const TreeLineEdit& bus)
{
    QString bits;
    for (const TreeLineEdit* bit : bus.subEdits)
        bits += bit->displayText();
    return bits;
}

QString rowValue(const TreeLineEdit& edit, bool convert)
{
    const QString text = edit.displayText();
    if (convert && text.length() == edit.bitWidth) {
        const bool letters = std::any_of(text.begin(), text.end(), isLetter);
        return letters ? QString(text.length(), '0') : text;
    }
    return edit.bitWidth == 1 ? text : bitTexts(edit);
}

/// The width of the longest name, including collapsed bits.
int nameWidth(const QTreeWidget& tree)
{
    const auto textWidth = [&tree](const QTreeWidgetItem* row) {
        return tree.fontMetrics().horizontalAdvance(row->text(kNameColumn));
    };
    int width = 0;
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = tree.topLevelItem(i);
        width = qMax(width, textWidth(row));
        for (int bit = 0; bit < row->childCount(); ++bit)
            width = qMax(width, tree.indentation() + textWidth(row->child(bit)));
    }
    return width + tree.indentation() + 2 * tree.fontMetrics().averageCharWidth();
}

/// Limits long names to half of the tree, so that the editors are visible.
void boundNames(QTreeWidget& tree)
{
    const int least = kMaxNameWidth * tree.fontMetrics().averageCharWidth();
    tree.setColumnWidth(kNameColumn, qMin(nameWidth(tree), qMax(least, tree.width() / 2)));
}

/// Puts `edits` after `widget` in the Tab order.
QWidget* chainTabs(QWidget* widget, const QList<TreeLineEdit*>& edits)
{
    for (TreeLineEdit* edit : edits) {
        QWidget::setTabOrder(widget, edit);
        widget = chainTabs(edit, edit->subEdits);
    }
    return widget;
}

}

/// The characters that an editor allows, for a regular expression.
QString MatchUnitDialog::digits() const
{
    switch (base) {
    case 8:
        return "0-7";
    case 10:
        return "0-9";
    case 16:
        return "A-F0-9";
    default:
        if (func != MatchEqual && func != MatchNotEqual)
            return "01";
        return matchTypeHasEdges(MatchType(type)) ? "01XRFBN" : "01X";
    }
}

/// Whether the digit menu offers `digit`.
bool MatchUnitDialog::offers(QChar digit) const
{
    return digit == '0' || digit == '1' || (base == 2 && digits().contains(digit));
}

/// An editor with a forbidden text would not report edits, and accept any key.
QString MatchUnitDialog::withoutForbidden(QString value) const
{
    for (QChar& digit : value) {
        if (!offers(digit))
            digit = '0';
    }
    return value;
}

/// Clears `edit` before a new mask or pattern, which would otherwise apply to the old text.
void MatchUnitDialog::setEditorType(QLineEdit* edit, int width)
{
    edit->clear();
    setPattern(*validator, QString("[%1]*").arg(digits()));
    edit->setInputMask(QString(">%1;0").arg(QString(digitCount(width, base), 'N')));
    edit->setValidator(validator);
}

QString MatchUnitDialog::getEditor(QTreeWidget* tree, bool convert)
{
    QString value;
    for (const TreeLineEdit* edit : rowEdits(tree))
        value += rowValue(*edit, convert);
    return value;
}

/// Distributes the binary digits `value` over the rows. Like the hardware's registers, a short
/// value is padded on the left, and a long one cut on the right.
void MatchUnitDialog::setEditor(QString value, QTreeWidget* tree)
{
    const QList<TreeLineEdit*> edits = rowEdits(tree);
    int width = 0;
    for (const TreeLineEdit* edit : edits)
        width += edit->bitWidth;
    value = value.rightJustified(width, '0');
    int at = 0;
    for (TreeLineEdit* edit : edits) {
        showBits(edit, value.mid(at, edit->bitWidth));
        at += edit->bitWidth;
    }
}

/// Whether the rows of `tree` allow `value`.
bool MatchUnitDialog::fits(const QString& value, QTreeWidget* tree) const
{
    int at = 0;
    for (const TreeLineEdit* edit : rowEdits(tree)) {
        const QString shown = digitsFromBits(value.mid(at, edit->bitWidth), base).toUpper();
        if (!matches(*validator, shown))
            return false;
        at += edit->bitWidth;
    }
    return true;
}

void MatchUnitDialog::resetTree(QTreeWidget* tree)
{
    clearEditorFocus(tree);
    for (TreeLineEdit* edit : tree->findChildren<TreeLineEdit*>())
        edit->disconnect(this);
    tree->clear();
    currentEdit = nullptr;
}

/// Sets up the rows' editors; the caller then writes their bits.
void MatchUnitDialog::resetEditor()
{
    for (QTreeWidget* tree : {ui->treeSignals0, ui->treeSignals1}) {
        for (TreeLineEdit* edit : rowEdits(tree))
            setEditorType(edit, edit->bitWidth);
    }
}

/// Applies the text being typed in `tree`, and takes the focus from its editors.
void MatchUnitDialog::clearEditorFocus(QTreeWidget* tree)
{
    for (TreeLineEdit* edit : rowEdits(tree))
        finishBus(edit);
    QWidget* focus = focusWidget();
    if (focus && tree->isAncestorOf(focus))
        focus->clearFocus();
}

void MatchUnitDialog::finishEdits()
{
    for (QTreeWidget* tree : {ui->treeSignals0, ui->treeSignals1}) {
        for (TreeLineEdit* edit : rowEdits(tree))
            finishBus(edit);
    }
}

void MatchUnitDialog::Signal2treeItemAndEdit(QTreeWidget* tree, SignalItem item, int row)
{
    Signal2treeItem(tree, item);
    QTreeWidgetItem* busRow = tree->topLevelItem(row);
    TreeLineEdit* bus = makeEditor(tree, busRow->text(kNameColumn));
    bus->bitWidth = item.bitCount();
    setEditorType(bus, bus->bitWidth);
    connect(bus, &QLineEdit::editingFinished, this, &MatchUnitDialog::onBusEditChange);
    tree->setItemWidget(busRow, kEditColumn, bus);
    QPalette readOnly; // shows that bits cannot be typed
    readOnly.setBrush(QPalette::Base, palette().window());
    for (int i = 0; i < item.subItems.size(); ++i) {
        TreeLineEdit* bit = makeEditor(tree, busRow->child(i)->text(kNameColumn));
        bit->setReadOnly(true);
        bit->setPalette(readOnly);
        bit->setText("0");
        bit->row = row;
        connect(bit, &QLineEdit::editingFinished, this, &MatchUnitDialog::onSubEditChange);
        tree->setItemWidget(busRow->child(i), kEditColumn, bit);
        bus->subEdits += bit;
    }
}

TreeLineEdit* MatchUnitDialog::makeEditor(QTreeWidget* tree, const QString& name)
{
    auto* edit = new TreeLineEdit(tree);
    QFont font("Monospace");
    font.setStyleHint(QFont::Monospace);
    edit->setFont(font);
    edit->setAccessibleName(name);
    edit->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(edit, &QWidget::customContextMenuRequested, this, &MatchUnitDialog::onEditMenu);
    return edit;
}

/// Sets the Tab order of the editors from top to bottom, after their tree.
void MatchUnitDialog::layOutEditors(QTreeWidget* tree)
{
    boundNames(*tree);
    chainTabs(tree, rowEdits(tree));
}

bool MatchUnitDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        boundNames(*static_cast<QTreeWidget*>(watched));
    return QDialog::eventFilter(watched, event);
}

/// Shows `bits` in a row's editor, in the current radix, and in its bits' editors.
void MatchUnitDialog::showBits(TreeLineEdit* edit, const QString& bits)
{
    const QString text = digitsFromBits(bits, base).toUpper();
    if (edit->displayText() != text) {
        edit->setText(text);
        edit->home(false);
    }
    for (int i = 0; i < edit->subEdits.size(); ++i) {
        if (edit->subEdits.at(i)->displayText() != bits.mid(i, 1))
            edit->subEdits.at(i)->setText(bits.mid(i, 1));
    }
}

void MatchUnitDialog::finishBus(TreeLineEdit* edit)
{
    showBits(edit, bitsFromDigits(edit->displayText(), base, edit->bitWidth));
}

void MatchUnitDialog::finishBit(TreeLineEdit* edit)
{
    TreeLineEdit* bus = rowEdits(treeOf(edit)).value(edit->row);
    if (bus)
        showBits(bus, bitTexts(*bus));
}

void MatchUnitDialog::onBusEditChange()
{
    auto* edit = qobject_cast<TreeLineEdit*>(sender());
    if (!edit)
        return;
    currentEdit = edit;
    finishBus(edit);
}

void MatchUnitDialog::onSubEditChange()
{
    if (auto* edit = qobject_cast<TreeLineEdit*>(sender()))
        finishBit(edit);
}

int MatchUnitDialog::calculatedBitwidth(int width)
{
    return triggerPort ? digitCount(width, base) : 0;
}

void MatchUnitDialog::toolTipValueChanged(QTreeWidget* widget)
{
    if (!triggerPort || !widget)
        return;
    for (TreeLineEdit* edit : rowEdits(widget)) {
        const QString minimum(calculatedBitwidth(edit->bitWidth), '0');
        const QString maximum = digitsFromBits(QString(edit->bitWidth, '1'), base);
        edit->setToolTip(minimum + '~' + maximum);
    }
}

void MatchUnitDialog::onEditMenu(QPoint)
{
    auto* edit = qobject_cast<TreeLineEdit*>(sender());
    if (!edit)
        return;
    currentEdit = edit;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const DigitChoice& choice : kDigits) {
        QAction* action = menu->addAction(tr(choice.text));
        action->setEnabled(offers(choice.digit));
        connect(action, &QAction::triggered, this, choice.chosen);
    }
    menu->popup(QCursor::pos());
}

/// Sets every bit of the menu's editor to `digit`.
void MatchUnitDialog::changeTo(QChar digit)
{
    if (!currentEdit || !offers(digit))
        return;
    const QString bits(currentEdit->bitWidth, digit);
    if (currentEdit->row < 0) {
        showBits(currentEdit, bits);
    } else {
        currentEdit->setText(bits);
        finishBit(currentEdit);
    }
}

void MatchUnitDialog::onChangeX() { changeTo('X'); }

void MatchUnitDialog::onChange0() { changeTo('0'); }

void MatchUnitDialog::onChange1() { changeTo('1'); }

void MatchUnitDialog::onChangeR() { changeTo('R'); }

void MatchUnitDialog::onChangeF() { changeTo('F'); }

void MatchUnitDialog::onChangeB() { changeTo('B'); }

void MatchUnitDialog::onChangeN() { changeTo('N'); }

}
