// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/gtkw_writer.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxacapture/files/capture_writers.h"
#include "oxacapture/files/time_axis.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>

namespace OXA_CAPTURE {

namespace {

// Flags of GTKWave for a trace.
constexpr char kBinary[] = "@28\n";
constexpr char kHexadecimal[] = "@22\n";
constexpr char kTranslated[] = "@2022\n";
constexpr char kComment[] = "@200\n-";

// GTKWave looks hexadecimal digits up.
QByteArray translation(const QHash<QString, QString>& states)
{
    QStringList lines;
    for (auto state = states.begin(); state != states.end(); ++state) {
        QByteArray digits;
        addHexadecimal(state.key().toLatin1(), digits);
        lines += digits + ' ' + *state + '\n';
    }
    lines.sort();
    return lines.join("").toUtf8();
}

// The first window, in 500 pixels: at zoom 0, GTKWave shows a unit of time in 200.
QString shownTime(const Capture& capture)
{
    constexpr double kUnits = 500.0 / 200;
    const TimeAxis axis(capture);
    for (size_t core = 0; core < capture.size(); ++core) {
        const std::vector<CapturedWindow>& windows = capture[core].windows;
        if (windows.empty())
            continue;
        const quint64 first = axis.at(core, 0, 0);
        const double length = double(axis.at(core, 0, windows.front().samples.size()) - first);
        return QString("[timestart] %1\n*%2 %1\n")
            .arg(QString::number(first), QString::number(-std::log2(length / kUnits), 'f', 3));
    }
    return {};
}

QString translationPath(const QString& path, const QString& signal)
{
    static const QRegularExpression unusual("[^A-Za-z0-9_]+");
    return gtkwPath(path).chopped(5) + '.' + QString(signal).replace(unusual, "_") + ".names";
}

}

QString gtkwPath(const QString& path) { return path.left(path.lastIndexOf('.')) + ".gtkw"; }

bool writeGtkw(
    const QString& path, const Capture& capture, const OXA::StateNames& states, QString* error)
{
    QString text = QString("[dumpfile] \"%1\"\n").arg(QFileInfo(path).absoluteFilePath())
        + shownTime(capture);
    QString problem;
    for (const CapturedCore& core : capture) {
        const QString scope = QString("core%1").arg(core.index);
        text += kComment + scope + '\n';
        for (const DumpName& signal : dumpNames(core)) {
            const QHash<QString, QString> names = OXA::statesOf(states, signal.bits);
            const QString file
                = translationPath(path, scope + '_' + signal.name.section(' ', 0, 0));
            if (!names.isEmpty() && !OXA_FILES::replaceFile(file, translation(names), &problem))
                return OXA::fail(error, file + ": " + problem);
            text += signal.bits.size() == 1 ? kBinary
                : names.isEmpty()           ? kHexadecimal
                                            : kTranslated;
            if (!names.isEmpty())
                text += "^1 " + QFileInfo(file).absoluteFilePath() + '\n';
            text += scope + '.' + QString(signal.name).remove(' ') + '\n';
        }
    }
    const QString file = gtkwPath(path);
    return OXA_FILES::replaceFile(file, text.toUtf8(), &problem)
        || OXA::fail(error, file + ": " + problem);
}

}
