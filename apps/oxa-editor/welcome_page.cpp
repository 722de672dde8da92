// SPDX-License-Identifier: Apache-2.0
#include "welcome_page.h"

#include "oxautils/model/shown_text.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>

namespace {

constexpr int kWidth = 110; // characters, of both columns
constexpr int kPathRole = Qt::UserRole;

QLabel* heading(const QString& text, int percent)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    if (font.pixelSize() > 0)
        font.setPixelSize(font.pixelSize() * percent / 100);
    else
        font.setPointSizeF(font.pointSizeF() * percent / 100);
    label->setFont(font);
    return label;
}

}

WelcomePage::WelcomePage(QWidget* parent)
    : QWidget(parent)
    , m_files(new QListWidget)
    , m_none(new QLabel(tr("No file was opened yet.")))
{
    auto* begin = new QVBoxLayout;
    begin->addWidget(heading(tr("Begin"), 120));
    addChoice(*begin, tr("From a design…"),
        tr("Read the sources of a design and choose the signals to capture"), "view-list-tree",
        &WelcomePage::designWanted);
    addChoice(*begin, tr("The example…"),
        tr("Copy a small UART with its configuration, and open it"), "help-contents",
        &WelcomePage::exampleWanted);
    addChoice(*begin, tr("New Standard configuration"), tr("Cores that wait for a trigger"),
        "document-new", &WelcomePage::standardWanted);
    addChoice(*begin, tr("New Lite configuration"),
        tr("Cores that capture from the first sample on"), "document-new",
        &WelcomePage::liteWanted);
    addChoice(*begin, tr("Open…"), tr("Open a configuration, *.oxa"), "document-open",
        &WelcomePage::openWanted);
    begin->addStretch();
    auto* files = new QVBoxLayout;
    addRecent(*files);

    auto* inner = new QWidget;
    inner->setMaximumWidth(fontMetrics().averageCharWidth() * kWidth);
    auto* columns = new QHBoxLayout(inner);
    columns->addLayout(begin, 1);
    columns->addSpacing(fontMetrics().averageCharWidth() * 4);
    columns->addLayout(files, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addStretch(1);
    layout->addWidget(inner, 100);
    layout->addStretch(1);
}

void WelcomePage::addChoice(QVBoxLayout& layout, const QString& text, const QString& hint,
    const char* icon, void (WelcomePage::*wanted)())
{
    auto* button = new QCommandLinkButton(text, hint);
    button->setAccessibleName(text);
    button->setAccessibleDescription(hint);
    button->setIcon(QIcon::fromTheme(icon, button->icon()));
    connect(button, &QCommandLinkButton::clicked, this, wanted);
    layout.addWidget(button);
}

void WelcomePage::addRecent(QVBoxLayout& layout)
{
    auto* title = heading(tr("Recent files"), 120);
    title->setBuddy(m_files);
    m_files->setAccessibleName(tr("Recent files"));
    m_files->setTextElideMode(Qt::ElideMiddle);
    m_files->setSizeAdjustPolicy(QAbstractItemView::AdjustToContents);
    m_files->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    m_files->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout.addWidget(title);
    layout.addWidget(m_none);
    layout.addWidget(m_files);
    layout.addStretch();
    const auto choose
        = [this](const QListWidgetItem* item) { Q_EMIT chosen(item->data(kPathRole).toString()); };
    connect(m_files, &QListWidget::itemClicked, this, choose);
    connect(m_files, &QListWidget::itemActivated, this, choose);
}

void WelcomePage::setFiles(const QStringList& paths)
{
    m_files->clear();
    for (const QString& path : paths) {
        const QFileInfo file(path);
        const QString shown
            = tr("%1  in %2").arg(file.fileName(), QDir::toNativeSeparators(file.path()));
        auto* item = new QListWidgetItem(OXA::shownText(shown), m_files);
        item->setData(kPathRole, path);
    }
    m_files->setCurrentRow(0);
    m_files->setVisible(!paths.isEmpty());
    m_none->setVisible(paths.isEmpty());
}
