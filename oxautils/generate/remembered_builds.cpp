// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/remembered_builds.h"

#include "files/replace_file.h"
#include "oxautils/encoding/crc32.h"
#include "oxautils/model/log_categories.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace OXA {

namespace {

constexpr int kMostBuilds = 100;
constexpr char kAbout[] = "/build.json";
constexpr char kTimeFormat[] = "yyyy-MM-dd 'at' HH:mm";

/// The fingerprints as a chip's messages show them, then a checksum of the names' sums.
QString nameOf(const BuildSums& sums)
{
    QStringList fingerprints;
    for (const quint32 fingerprint : sums.fingerprints)
        fingerprints += hexText(fingerprint);
    Crc32 names;
    for (const NameSums& core : sums.names) {
        for (const quint32 sum : core)
            names.add(sum, 32);
    }
    return fingerprints.join('-') + '_' + hexText(names.sum());
}

/// The path of the copy. Only the end "oxa" of a configuration's name has a meaning.
QString copyOf(const QString& original, const QString& directory)
{
    return directory + (original.endsWith("oxa") ? "/configuration.oxa" : "/configuration.xml");
}

/// The build in `directory`; without an original when it is incomplete or damaged.
RememberedBuild buildIn(const QFileInfo& directory)
{
    RememberedBuild build;
    QFile file(directory.filePath() + kAbout);
    QJsonObject about;
    if (file.open(QIODevice::ReadOnly))
        about = QJsonDocument::fromJson(file.readAll()).object();
    build.original = about["original"].toString();
    build.device = about["device"].toString();
    build.workDir = about["workDir"].toString();
    build.time = QDateTime::fromString(about["time"].toString(), Qt::ISODateWithMs);
    build.configuration = copyOf(build.original, directory.filePath());
    if (!build.time.isValid() || !QFileInfo(build.configuration).isFile()) {
        build.original.clear();
        build.time = directory.lastModified();
    }
    return build;
}

/// The builds in directories of our own whose names match `pattern`, the newest first.
QList<RememberedBuild> buildsNamed(const QString& pattern)
{
    static const QRegularExpression own("^[0-9a-f]{8}(-[0-9a-f]{8})*_[0-9a-f]{8}$");
    QList<RememberedBuild> builds;
    const QString all = rememberedBuildsDir();
    if (all.isEmpty())
        return builds;
    const QFileInfoList directories
        = QDir(all).entryInfoList({pattern}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo& directory : directories) {
        if (!own.match(directory.fileName()).hasMatch())
            continue;
        const RememberedBuild build = buildIn(directory);
        const bool isWhole = !build.original.isEmpty();
        if (isWhole || QFileInfo::exists(directory.filePath())) // or another program has removed it
            builds += build;
    }
    std::stable_sort(builds.begin(), builds.end(),
        [](const RememberedBuild& a, const RememberedBuild& b) { return a.time > b.time; });
    return builds;
}

QList<RememberedBuild> whole(QList<RememberedBuild> builds)
{
    builds.erase(std::remove_if(builds.begin(), builds.end(),
                     [](const RememberedBuild& build) { return build.original.isEmpty(); }),
        builds.end());
    return builds;
}

void forgetOldest()
{
    const QList<RememberedBuild> builds = buildsNamed("*");
    for (const RememberedBuild& build : builds.mid(kMostBuilds)) {
        // Renamed first: for another program, a build that is half removed would be a new one.
        const QString directory = QFileInfo(build.configuration).path();
        const QString removed = directory + ".removed";
        QDir().rename(directory, removed);
        QDir(removed).removeRecursively();
    }
}

}

QString RememberedBuild::text() const
{
    return original + " on " + time.toLocalTime().toString(kTimeFormat)
        + (device.isEmpty() ? QString() : ", for " + device);
}

QString rememberedBuildsDir()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return data.isEmpty() || qEnvironmentVariable("OXA_REMEMBER") == "0"
        ? QString()
        : data + "/oxautils/builds";
}

void rememberBuild(const RememberedBuild& build, const QByteArray& content, const BuildSums& sums)
{
    const QString all = rememberedBuildsDir();
    const QString directory = all + '/' + nameOf(sums);
    if (all.isEmpty() || !QDir().mkpath(directory) || !QFileInfo(directory).isWritable())
        return; // switched off, or there is no home to write to
    const QJsonObject about {
        {"original", build.original                                },
        {"device",   build.device                                  },
        {"workDir",  build.workDir                                 },
        {"time",     build.time.toUTC().toString(Qt::ISODateWithMs)}
    };
    QString error;
    if (!OXA_FILES::replaceFile(copyOf(build.original, directory), content, &error)
        || !OXA_FILES::replaceFile(directory + kAbout, QJsonDocument(about).toJson(), &error))
        qCWarning(logGenerate).noquote() << "the build is not remembered:" << error;
    forgetOldest();
}

QList<RememberedBuild> rememberedBuilds() { return whole(buildsNamed("*")); }

QList<RememberedBuild> rememberedBuilds(const BuildSums& sums)
{
    const QString name = nameOf(sums);
    return whole(
        buildsNamed(sums.names.contains(NameSums()) ? name.section('_', 0, 0) + "_*" : name));
}

}
