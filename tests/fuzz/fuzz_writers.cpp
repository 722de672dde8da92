// SPDX-License-Identifier: Apache-2.0
// Captures with a line of the input as the name of each signal, as tables, dumps and sigrok
// sessions: each signal has a name of its own there, and no name becomes anything else.
#include "fuzz_support.h"

#include "oxacapture/files/capture_file.h"
#include "oxacapture/waveform/vcd_reader.h"
#include "support/files.h"
#include "support/signals.h"

#include <QRegularExpression>
#include <QSet>

#include <zip.h>

using namespace OXA_CAPTURE;

namespace {

constexpr int kMostSignals = 64; // of a core
constexpr int kSamples = 3;

/// Two cores with the same signals, some of them buses, and a window each.
Capture captureOf(const QByteArray& input)
{
    CapturedCore core;
    int width = 0;
    for (const QByteArray& line : input.split('\n').mid(0, kMostSignals)) {
        const QString name = QString::fromUtf8(line);
        core.items += core.items.size() % 3 == 2 ? busOf(name, 2) : signalOf(name);
        width += core.items.last().bitCount();
    }
    const SampleLayout layout({width});
    SampleTable table(layout);
    for (int sample = 0; sample < kSamples; ++sample)
        table.append(std::vector<quint64>(size_t(layout.rowWords()), quint64(sample)).data());
    core.windows.push_back({
        {0, kSamples, 1},
        table
    });
    Capture capture {core, core};
    capture[1].index = 7;
    return capture;
}

/// The bytes that the writer for the ending makes of a capture.
QByteArray written(
    const Capture& capture, const char* ending, const CaptureFileOptions& options = {})
{
    const QString path = QString("/dev/shm/fuzz_writers.%1.").arg(getpid()) + ending;
    QString error;
    require(writeCapture(path, capture, options, &error), "a capture can be written");
    return bytesOf(path);
}

QList<QStringList> rowsOf(const QString& csv)
{
    static const QRegularExpression cells(R"(("(?:[^"]|"")*"|[^",\n]*)([,\n]))");
    QList<QStringList> rows {{}};
    int end = 0;
    for (auto it = cells.globalMatch(csv); it.hasNext();) {
        const QRegularExpressionMatch cell = it.next();
        require(cell.capturedStart() == end, "a cell begins where the one before ends");
        end = cell.capturedEnd();
        const QString text = cell.captured(1);
        const bool quoted = text.startsWith('"');
        rows.last() += quoted ? text.mid(1, text.size() - 2).replace("\"\"", "\"") : text;
        if (cell.captured(2) == "\n")
            rows += QStringList();
    }
    require(end == csv.size() && rows.last().isEmpty(), "the table ends with a row");
    return rows;
}

/// The signals of a core, those of the same bits once.
int itemsOf(const CapturedCore& core)
{
    QSet<QStringList> items;
    for (const OXA::SignalItem& item : core.items)
        items += OXA::flattenedNames({item});
    return items.size();
}

void requireCsv(const Capture& capture)
{
    QStringList columns = OXA::flattenedNames(capture[0].items);
    columns.removeDuplicates();
    const QList<QStringList> rows = rowsOf(QString::fromUtf8(written(capture, "csv", {true})));
    require(rows.size() == 1 + 2 * kSamples + 1, "a row a sample");
    for (const QStringList& row : rows.mid(0, rows.size() - 1))
        require(row.size() == 4 + columns.size(), "a column a signal");
    for (int i = 0; i < columns.size(); ++i) {
        const QString shown = rows.first().at(4 + i);
        require(QString(shown).remove('\'') == QString(columns.at(i)).remove('\''), "its name");
        require(shown.isEmpty() || !QString("=+-@\t\r\n").contains(shown.at(0)), "no formula");
    }
    QStringList buses = rowsOf(QString::fromUtf8(written(capture, "csv"))).first();
    const int count = buses.size();
    require(buses.removeDuplicates() == 0 && count == 4 + itemsOf(capture[0]), "a column a bus");
}

void requireVcd(const Capture& capture)
{
    const MemoryFile file(written(capture, "vcd"));
    VcdReader reader(file.path());
    require(reader.readHeader(), "a dump can be read");
    QSet<QString> names;
    for (const VcdVariable& variable : reader.variables())
        names += QString("%1 %2 %3 %4")
                     .arg(QString::number(variable.scope), QString::fromStdString(variable.name),
                         QString::number(variable.msb), QString::number(variable.hasRange));
    require(names.size() == int(reader.variables().size()), "no two variables have one name");
    require(names.size() == 2 * (itemsOf(capture[0]) + 3),
        "a variable a signal, a sample, a trigger and a window");
    Capture back;
    require(readCapture(file.path(), back, nullptr) && back.size() == 2, "it is read back");
    for (const CapturedCore& core : back)
        require(core.windows.size() == 1 && core.windows[0].samples.size() == kSamples
                && core.windows[0].place.triggerSample == 1 && core.windows[0].times.empty(),
            "with its samples");
}

QByteArray member(zip_t* zip, const char* name)
{
    zip_stat_t stat;
    require(zip_stat(zip, name, 0, &stat) == 0, "the session is complete");
    QByteArray bytes(int(stat.size), '\0');
    zip_file_t* file = zip_fopen(zip, name, 0);
    require(file && zip_fread(file, bytes.data(), stat.size) == bytes.size(), "it can be read");
    zip_fclose(file);
    return bytes;
}

void requireSigrok(const Capture& capture)
{
    const QByteArray session = written(capture, "sr");
    zip_source_t* source
        = zip_source_buffer_create(session.constData(), zip_uint64_t(session.size()), 0, nullptr);
    zip_t* zip = zip_open_from_source(source, ZIP_RDONLY, nullptr);
    require(zip, "a session is an archive");
    const int samples = member(zip, "logic-1-1").size();
    QList<QByteArray> lines = member(zip, "metadata").split('\n');
    zip_close(zip);
    QStringList signalNames = OXA::flattenedNames(capture[0].items);
    signalNames.removeDuplicates();
    const int channels = 2 * (signalNames.size() + 2);
    require(samples == kSamples * ((channels + 7) / 8), "a unit a sample");
    QSet<QByteArray> names;
    int others = 0;
    for (const QByteArray& line : lines) {
        if (line.startsWith("probe"))
            names += line.mid(line.indexOf('=') + 1);
        else
            ++others;
    }
    require(names.size() == channels && !names.contains(""), "a name a channel");
    require(others == 9, "no line that a name made");
}

}

void fuzz(const QByteArray& input)
{
    const Capture capture = captureOf(input);
    requireCsv(capture);
    requireVcd(capture);
    requireSigrok(capture);
}
