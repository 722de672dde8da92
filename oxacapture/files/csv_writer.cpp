// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_writers.h"

#include <QHash>
#include <QIODevice>
#include <QRegularExpression>

namespace OXA_CAPTURE {

namespace {

constexpr int kFlushAt = 1 << 20; // bytes

// Spreadsheets evaluate such text, even in quotes, unless an apostrophe is before it. For some,
// semicolons and tabs separate cells.
QString withoutFormulas(QString text)
{
    static const QRegularExpression beginning("(^|[;\t\r\n])(?=[=+\\-@'\t\r\n])");
    return text.replace(beginning, "\\1'");
}

QByteArray cell(const QString& name)
{
    static const QRegularExpression special("[,;\"\t\r\n]");
    QString text = withoutFormulas(name);
    if (text != name || text.contains(special))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text.toUtf8();
}

// The data signals of all cores, each name once.
QStringList columnNames(const Capture& capture)
{
    QStringList names;
    for (const CapturedCore& core : capture)
        names += OXA::flattenedNames(core.items);
    names.removeDuplicates();
    return names;
}

// For each column, the core's bit in it; -1: none.
std::vector<int> bitsOf(const CapturedCore& core, const QStringList& columns)
{
    const QStringList names = OXA::flattenedNames(core.items);
    QHash<QString, int> bits;
    for (int bit = names.size() - 1; bit >= 0; --bit)
        bits.insert(names.at(bit), bit);
    std::vector<int> result;
    for (const QString& column : columns)
        result.push_back(bits.value(column, -1));
    return result;
}

bool writeRows(QIODevice& out, const CapturedCore& core, const std::vector<int>& bits,
    const std::function<bool(qint64 sample)>& goesOn)
{
    QByteArray text;
    qint64 done = 0;
    for (size_t w = 0; w < core.windows.size(); ++w) {
        const CapturedWindow& window = core.windows[w];
        const QByteArray head = QByteArray::number(core.index) + ',' + QByteArray::number(int(w));
        for (qint64 sample = 0; sample < window.samples.size(); ++sample) {
            text += head + ',' + QByteArray::number(sample)
                + (sample == window.triggerOffset() ? ",1" : ",0");
            for (const int bit : bits) {
                text += ',';
                if (bit >= 0)
                    text += "01x"[int(window.samples.bit(sample, 0, bit))];
            }
            text += '\n';
            if (++done % kSamplesAtOnce != 0 && text.size() < kFlushAt)
                continue;
            if (!goesOn(done) || out.write(text) != text.size())
                return false;
            text.clear();
        }
    }
    return out.write(text) == text.size();
}

}

bool writeCsv(QIODevice& out, const Capture& capture, const Progress& goesOn, QString*)
{
    const QStringList columns = columnNames(capture);
    QByteArray header = "core,window,sample,trigger";
    for (const QString& name : columns)
        header += ',' + cell(name);
    if (out.write(header += '\n') < 0)
        return false;
    qint64 samples = 0;
    for (const CapturedCore& core : capture)
        samples += capturedSamples(core);
    qint64 before = 0;
    for (const CapturedCore& core : capture) {
        const auto tell = [&](qint64 done) { return goesOn(int((before + done) * 100 / samples)); };
        if (!writeRows(out, core, bitsOf(core, columns), tell))
            return false;
        before += capturedSamples(core);
    }
    return true;
}

}
