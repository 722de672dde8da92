// SPDX-License-Identifier: Apache-2.0
#include "file_viewer.h"

#include "screen_size.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr qint64 kMostBytes = 8 << 20;

}

FilePlace placeIn(const QString& message, const QString& directory)
{
    static const QRegularExpression place(R"(([^\s:"'`<>|()]+)(?::(\d+))?)");
    auto matches = place.globalMatch(message);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString path = QDir(directory).absoluteFilePath(match.captured(1));
        if (match.captured(1).contains('.') && QFileInfo(path).isFile())
            return {QDir::cleanPath(path), match.captured(2).toInt()};
    }
    return {};
}

FileViewer::FileViewer(const FilePlace& place, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(QFileInfo(place.path).fileName());
    setAttribute(Qt::WA_DeleteOnClose);
    auto* view = new QPlainTextEdit;
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setAccessibleName(place.path);
    QFont font("Monospace");
    font.setStyleHint(QFont::Monospace);
    view->setFont(font);
    QFile file(place.path);
    if (file.open(QIODevice::ReadOnly | QIODevice::Text))
        view->setPlainText(QString::fromUtf8(file.read(kMostBytes)));

    const QTextBlock block = view->document()->findBlockByNumber(place.line - 1);
    if (block.isValid()) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(block);
        mark.format.setBackground(palette().highlight());
        mark.format.setForeground(palette().highlightedText());
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        view->setExtraSelections({mark});
        view->setTextCursor(QTextCursor(block));
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(view, 1);
    layout->addWidget(buttons);
    resizeOnScreen(*this, {fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 36});
    view->centerCursor();
}
