// SPDX-License-Identifier: Apache-2.0
// Whatever a synthesis engine prints. A line that begins with '%' and a letter comes many times.
#include "fuzz_support.h"

#include "engine/engine_output.h"

#include <QSet>

namespace {

constexpr int kLongestPiece = 1 << 16; // in which longer lines come
constexpr int kMostLines = 1 << 14;
constexpr int kMostMessages = 200; // what a person still looks at
constexpr int kLongestMessage = 20000; // characters

/// The lines of the input.
QByteArrayList linesOf(const QByteArray& input)
{
    QByteArrayList lines;
    for (const QByteArray& line : input.split('\n')) {
        const bool many = line.size() > 1 && line.at(0) == '%';
        const int times = many ? 1 << (line.at(1) & 7) : 1;
        for (int i = 0; i < times && lines.size() < kMostLines; ++i)
            lines += (many ? line.mid(2) : line)
                         .left(kLongestPiece)
                         .replace("$", QByteArray::number(i));
    }
    return lines;
}

bool steersTerminal(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
        [](QChar c) { return c.category() == QChar::Other_Control && c != '\t'; });
}

}

void fuzz(const QByteArray& input)
{
    using namespace OXA_ENGINE;
    static const QString log = QString("/dev/shm/fuzz_engine.%1").arg(getpid());
    const QByteArrayList lines = linesOf(input);
    EngineOutput output(log, [](const QString& stage, int percent) {
        require(percent >= 0 && percent <= 100, "a percentage");
        require(!steersTerminal(stage), "a stage that can be shown");
    });
    for (const QByteArray& line : lines)
        output.take(line);
    const QStringList messages = output.finish();
    require(messages.size() <= kMostMessages, "no flood of messages");
    require(QSet<QString>(messages.begin(), messages.end()).size() == messages.size(), "each once");
    for (const QString& message : messages) {
        require(!message.isEmpty() && message.size() <= kLongestMessage, "a readable message");
        require(!steersTerminal(message) && !message.contains('\n'), "one line that can be shown");
    }
    require(!output.hasError() || !messages.filter("error").isEmpty(), "an error is told");
    const QStringList tail = output.tail();
    for (const QString& line : tail)
        require(!line.trimmed().isEmpty() && !steersTerminal(line), "a line that can be shown");
    QFile file(log);
    require(file.open(QIODevice::ReadOnly), "there is a log");
    require(file.readAll() == lines.join('\n') + '\n', "the log has everything");
}
