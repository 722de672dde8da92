// SPDX-License-Identifier: Apache-2.0
#include "help_window.h"

#include "file_viewer.h"
#include "screen_size.h"

#include "oxautils/generate/installed.h"
#include "oxautils/model/shown_text.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>

namespace {

constexpr char kAnchor[] = "helpAnchor";
constexpr char kFirstPage[] = "README.md";
constexpr char kEditorPage[] = "editor.md";

/// The name by which links call a heading: "Match units" is "match-units".
QString anchorOf(const QString& heading)
{
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == '-' || c == '_')
            anchor += c;
        else if (c.isSpace())
            anchor += '-';
    }
    return anchor;
}

}

/// A page, with its pictures no wider than the window.
class HelpBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        QImage image = QImage::fromData(resource.toByteArray());
        const int most = viewport()->width() - 2 * int(document()->documentMargin());
        if (image.width() <= most)
            return image;
        // On a screen with more pixels, the picture keeps more of its own.
        const double ratio = qMin(devicePixelRatioF(), double(image.width()) / most);
        image = image.scaledToWidth(int(most * ratio), Qt::SmoothTransformation);
        image.setDevicePixelRatio(ratio);
        return image;
    }
};

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent)
    , m_pages(new HelpBrowser)
    , m_wanted(new QLineEdit)
    , m_state(new QLabel)
{
    setWindowTitle(tr("Help"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    layOut();
    connect(m_pages, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
    connect(m_wanted, &QLineEdit::returnPressed, this, &HelpWindow::find);
    resizeOnScreen(*this, {fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 44});
}

void HelpWindow::layOut()
{
    m_pages->setOpenLinks(false);
    m_pages->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the width of pictures stays
    m_pages->setAccessibleName(tr("Page"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->hide();
    auto* bar = new QHBoxLayout;
    const auto addButton = [&](const QString& text, const char* icon, auto done) {
        auto* button = new QPushButton(QIcon::fromTheme(icon), text);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, done);
        bar->addWidget(button);
        return button;
    };
    QPushButton* back = addButton(tr("&Back"), "go-previous", [this] { m_pages->backward(); });
    QPushButton* forward = addButton(tr("&Forward"), "go-next", [this] { m_pages->forward(); });
    addButton(tr("&All Pages"), "go-home", [this] { showPage(kFirstPage, {}); });
    for (QPushButton* button : {back, forward})
        button->setEnabled(false);
    connect(m_pages, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(m_pages, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    auto* label = new QLabel(tr("Fi&nd:"));
    label->setBuddy(m_wanted);
    m_wanted->setClearButtonEnabled(true);
    bar->addWidget(label);
    bar->addWidget(m_wanted, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_state);
    m_pages->setFocus();
}

QString HelpWindow::directory() { return OXA::installed("share/doc/oxautils/docs"); }

void HelpWindow::showFor(QWidget& owner, const QString& name)
{
    auto* help = owner.findChild<HelpWindow*>({}, Qt::FindDirectChildrenOnly);
    if (!help)
        help = new HelpWindow(&owner); // a modal owner would block that of another window
    const QWidget* focus = owner.focusWidget() ? owner.focusWidget() : &owner;
    const QString anchor = name == kEditorPage ? helpAnchorOf(focus) : QString();
    if (!help->showPage(name, anchor))
        QMessageBox::information(&owner, tr("Help"),
            tr("The pages of the documentation are not installed in %1. In Debian they are in the "
               "package oxautils-doc; \"man oxa-editor\" lists the keys.")
                .arg(QDir::toNativeSeparators(directory())));
}

bool HelpWindow::showPage(const QString& name, const QString& anchor)
{
    const QString path = directory() + '/' + name;
    if (!QFileInfo(path).isFile())
        return false;
    show();
    raise();
    activateWindow();
    QUrl url = QUrl::fromLocalFile(path);
    url.setFragment(anchor);
    follow(url);
    return true;
}

/// Shows another page, or a file that pages name; nothing is read from a network.
void HelpWindow::follow(const QUrl& link)
{
    const QUrl url = m_pages->source().resolved(link);
    const QFileInfo file(url.toLocalFile());
    say({});
    if (!url.isLocalFile() || !file.isFile())
        say(tr("Not installed: %1").arg(OXA::shownText(url.toString(QUrl::PreferLocalFile))));
    else if (file.suffix() != "md")
        (new FileViewer({file.absoluteFilePath(), 0}, this))->show();
    else {
        m_pages->setSource(url);
        scrollTo(url.fragment());
        m_pages->setFocus();
    }
}

void HelpWindow::say(const QString& text)
{
    m_state->setText(text);
    m_state->setVisible(!text.isEmpty());
}

void HelpWindow::scrollTo(const QString& anchor)
{
    const QTextDocument* page = m_pages->document();
    m_pages->moveCursor(QTextCursor::Start);
    for (QTextBlock block = page->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || anchorOf(block.text()) != anchor)
            continue;
        m_pages->setTextCursor(QTextCursor(block));
        m_pages->verticalScrollBar()->setValue(
            int(page->documentLayout()->blockBoundingRect(block).top()));
        return;
    }
}

/// Goes to the next place of the text; after the last one, to the first.
void HelpWindow::find()
{
    say({});
    if (m_wanted->text().isEmpty() || m_pages->find(m_wanted->text()))
        return;
    const QTextCursor before = m_pages->textCursor();
    m_pages->moveCursor(QTextCursor::Start);
    if (m_pages->find(m_wanted->text())) {
        say(tr("Searched on from the beginning of the page."));
        return;
    }
    m_pages->setTextCursor(before);
    say(tr("Not on this page."));
}

DialogHelp::DialogHelp(QObject* parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool DialogHelp::eventFilter(QObject* watched, QEvent* event)
{
    QWidget* const dialog = QApplication::activeModalWidget();
    if (!dialog || !watched->isWidgetType() || event->type() != QEvent::KeyPress
        || static_cast<const QKeyEvent*>(event)->key() != Qt::Key_F1)
        return QObject::eventFilter(watched, event);
    HelpWindow::showFor(*dialog, kEditorPage);
    return true;
}

void setHelpAnchor(QWidget* widget, const char* anchor) { widget->setProperty(kAnchor, anchor); }

QString helpAnchorOf(const QWidget* focus)
{
    for (const QWidget* at = focus; at; at = at->parentWidget()) {
        if (at->property(kAnchor).isValid())
            return at->property(kAnchor).toString();
    }
    return {};
}
