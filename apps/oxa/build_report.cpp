// SPDX-License-Identifier: Apache-2.0
#include "build_report.h"

#include "oxautils/generate/installed.h"

#include <QJsonArray>

#include <algorithm>

namespace {

/// `path` for a list that tools read, never taken as an option ("-k"), a directive ("+define") or a
/// comment ("//k").
QString listedPath(QString path)
{
    while (path.startsWith("//"))
        path.remove(0, 1);
    const QChar first = path.isEmpty() ? QChar('/') : path.at(0);
    return first.isLetterOrNumber() || QString("/._").contains(first) ? path : "./" + path;
}

/// Whether tools that read the list would misread one of these paths or macros.
bool isMisread(const QStringList& paths, const QString& special)
{
    return std::any_of(paths.begin(), paths.end(), [&special](const QString& path) {
        return std::any_of(path.begin(), path.end(),
            [&special](QChar c) { return c.isSpace() || special.contains(c); });
    });
}

}

int statusOf(OXA::BuildEnd end)
{
    if (end == OXA::BuildEnd::Done)
        return kDone;
    return end == OXA::BuildEnd::Refused || end == OXA::BuildEnd::NoCores ? kUnusable : kJobFailed;
}

void sayErrors(const QStringList& messages, TextOut& err)
{
    for (const QString& message : messages)
        err.error(message);
}

int checkBuild(const OXA::BuildRun& build, const QString& file, const char* doWhat,
    OtherProblems others, TextOut& err)
{
    const OXA::BuildResult checked = build.check();
    if (checked.end == OXA::BuildEnd::NoCores) {
        err.error(file + " contains no core to " + doWhat, file);
        return kUnusable;
    }
    if (!passesCheck(file, checked.problems, others, err))
        return kJobFailed;
    sayErrors(checked.messages, err);
    return statusOf(checked.end);
}

QStringList simulationModels()
{
    QStringList files;
    const QDir directory(OXA::installed("share/oxautils/sim"));
    const QStringList names = directory.entryList({"*.v"}, QDir::Files, QDir::Name);
    for (const QString& name : names)
        files += directory.filePath(name);
    return files;
}

bool hasSimulationModels(TextOut& err)
{
    if (!simulationModels().isEmpty())
        return true;
    err.error("no simulation models in " + OXA::installed("share/oxautils/sim")
        + "; install them, or leave out --simulation");
    return false;
}

void sayBoardFiles(const QStringList& files, TextOut& err)
{
    for (const QString& file : files)
        err << file << ": for the board\n";
    if (!files.isEmpty())
        err << "The catalogue does not know the device: what the analyzer takes, and whether it "
               "fits,"
               " is known after synthesis and placement.\n";
}

void printSources(const SourceList& sources, bool json, Io& io)
{
    QStringList listed = sources.files;
    std::transform(listed.begin(), listed.end(), listed.begin(), listedPath);
    if (json) {
        io.out.setResult({
            {"files",        QJsonArray::fromStringList(listed)              },
            {"includePaths", QJsonArray::fromStringList(sources.includePaths)},
            {"defines",      QJsonArray::fromStringList(sources.defines)     },
            {"boardFiles",   QJsonArray::fromStringList(sources.boardFiles)  },
        });
        return;
    }
    for (const QString& file : listed)
        io.out.listed(file);
    for (const QString& path : sources.includePaths)
        io.out.listed("+incdir+" + path);
    for (const QString& define : sources.defines)
        io.out.listed("+define+" + define);
    sayBoardFiles(sources.boardFiles, io.err);
    if (isMisread(listed, "$\"") || isMisread(sources.includePaths, "$\"+")
        || isMisread(sources.defines, "$+"))
        io.err.warning(
            "Icarus and Verilator cannot read this list, because a path in it"
            " contains a space, a $, a quote or, in a directory, a +, or a macro a space, a $"
            " or a +; choose another work directory, or use the paths and macros in --json");
}
