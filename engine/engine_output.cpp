// SPDX-License-Identifier: Apache-2.0
#include "engine/engine_output.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace OXA_ENGINE {
namespace {

constexpr qint64 kLogBytes = 64 << 20; // so that an engine cannot fill the disk
constexpr int kTextBytes = 4096; // of a line; messages are shorter
constexpr int kMessageChars = 8192; // with its continuation lines
constexpr int kErrors = 20; // that are reported; the log has all
constexpr int kWarnings = 100;
constexpr int kTailLines = 10;

const QRegularExpression& stageLine()
{
    static const QRegularExpression line("^@stage (\\d+) (.*)$");
    return line;
}

/// Matches a message, with its place when it is about a line of a source.
const QRegularExpression& messageLine()
{
    static const QRegularExpression line(
        "^(?:(?<place>.+:\\d+)(?:\\.\\d+[-.\\d]*)?: )?(?<kind>Warning|ERROR): (?<text>.*)$");
    return line;
}

const QRegularExpression& sourceLine()
{
    static const QRegularExpression line("^[\\d.]+ Executing Verilog-2005 frontend: (.*)$");
    return line;
}

/// Removes control characters, which would control the terminal.
QString withoutControls(QString text)
{
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control && c != '\t')
            c = QChar::ReplacementCharacter;
    }
    return text;
}

}

EngineOutput::EngineOutput(const QString& logFile, Stage stage)
    : m_log(logFile)
    , m_stage(std::move(stage))
{
    if (!m_log.open(QIODevice::WriteOnly | QIODevice::Truncate))
        failLog();
}

void EngineOutput::take(const QByteArray& line)
{
    log(line);
    const QString text = withoutControls(QString::fromUtf8(line.left(kTextBytes)));
    remember(text);
    if (m_open && text.startsWith("    ")) {
        if (m_messages.last().size() < kMessageChars)
            m_messages.last() += ' ' + text.simplified();
        return;
    }
    m_open = false;
    if (const auto stage = stageLine().match(text); stage.hasMatch()) {
        m_source.clear();
        m_stage(stage.captured(2), std::min(stage.captured(1).toInt(), 100));
    } else if (const auto source = sourceLine().match(text); source.hasMatch()) {
        m_source = source.captured(1);
    } else if (text.contains("Warning: ") || text.contains("ERROR: ")) {
        takeMessage(text);
    }
}

void EngineOutput::takeMessage(const QString& text)
{
    const auto message = messageLine().match(text);
    if (!message.hasMatch())
        return;
    const bool error = message.captured("kind") == "ERROR";
    QString place = message.captured("place");
    if (place.isEmpty() && error)
        place = m_source;
    const QString what = (error ? "error: " : "warning: ") + message.captured("text");
    addMessage(place.isEmpty() ? what : place + ": " + what, error);
}

void EngineOutput::log(const QByteArray& line)
{
    if (m_logged > kLogBytes || !m_logProblem.isEmpty())
        return;
    m_logged += line.size() + 1;
    const QByteArray text
        = m_logged > kLogBytes ? QByteArray("(the rest is not kept)\n") : line + '\n';
    if (m_log.write(text) != text.size())
        failLog();
}

void EngineOutput::failLog()
{
    m_logProblem
        = QString("warning: %1 cannot be written: %2").arg(m_log.fileName(), m_log.errorString());
}

void EngineOutput::remember(const QString& line)
{
    if (line.trimmed().isEmpty())
        return;
    m_tail << line.left(500);
    if (m_tail.size() > kTailLines)
        m_tail.removeFirst();
}

void EngineOutput::addMessage(const QString& message, bool error)
{
    int& count = error ? m_errors : m_warnings;
    if (m_seen.contains(message))
        return;
    m_open = ++count <= (error ? kErrors : kWarnings);
    if (!m_open)
        return; // beyond the limit, repeated messages are counted
    m_seen.insert(message);
    m_messages << message;
}

QStringList EngineOutput::finish()
{
    if (m_logProblem.isEmpty() && !m_log.flush())
        failLog();
    const auto say = [this](int more, const char* what) {
        if (more > 0)
            m_messages << QString("... %1 more %2 in %3")
                              .arg(QString::number(more), what, m_log.fileName());
    };
    say(m_errors - kErrors, "errors");
    say(m_warnings - kWarnings, "warnings");
    if (!m_logProblem.isEmpty())
        m_messages << m_logProblem;
    return m_messages;
}

}
