// SPDX-License-Identifier: Apache-2.0
#include "recent_files.h"

#include <QDir>
#include <QSettings>

namespace {

constexpr int kMostFiles = 10;

}

RecentFiles::RecentFiles(const QString& title, const QString& setting, QWidget* parent)
    : QMenu(title, parent)
    , m_setting(setting)
{
    fill();
}

QStringList RecentFiles::paths() const { return QSettings().value(m_setting).toStringList(); }

void RecentFiles::add(const QString& path)
{
    QStringList paths = this->paths();
    paths.removeAll(path);
    paths.prepend(path);
    QSettings().setValue(m_setting, QStringList(paths.mid(0, kMostFiles)));
    fill();
}

void RecentFiles::fill()
{
    clear();
    const QStringList paths = this->paths();
    for (int i = 0; i < paths.size(); ++i) {
        QString name = QDir::toNativeSeparators(paths.at(i));
        name.replace('&', "&&");
        connect(addAction(QString("&%1  %2").arg(QString::number((i + 1) % 10), name)),
            &QAction::triggered, this, [this, path = paths.at(i)] { Q_EMIT chosen(path); });
    }
    setEnabled(!paths.isEmpty());
}
