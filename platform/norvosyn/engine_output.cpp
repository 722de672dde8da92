#include "engine_output.h"

#include <QRegularExpression>

#include <utility>

namespace NorvoSyn {
namespace {

constexpr qint64 kLogBytes = 64 << 20; // an engine gone wild must not fill the disk
constexpr int kTextBytes = 4096; // of a line; messages are shorter
constexpr int kWarnings = 100; // errors are never left out
constexpr int kTailLines = 10;

const QRegularExpression& stageLine()
{
    static const QRegularExpression line("^@stage (\\d+) (.*)$");
    return line;
}

/// A place is there when the text concerns a line of a source.
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

/// What an engine prints must not steer the terminal that shows it.
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
    m_log.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

void EngineOutput::take(const QByteArray& line)
{
    log(line);
    const QString text = withoutControls(QString::fromUtf8(line.left(kTextBytes)));
    remember(text);
    if (m_open && text.startsWith("    ")) {
        m_messages.last() += ' ' + text.simplified();
        return;
    }
    m_open = false;
    if (const auto stage = stageLine().match(text); stage.hasMatch()) {
        m_source.clear();
        m_stage(stage.captured(2), stage.captured(1).toInt());
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
    m_hasError = m_hasError || error;
    QString place = message.captured("place");
    if (place.isEmpty() && error)
        place = m_source;
    const QString what = (error ? "error: " : "warning: ") + message.captured("text");
    addMessage(place.isEmpty() ? what : place + ": " + what, error);
}

void EngineOutput::log(const QByteArray& line)
{
    if (m_logged > kLogBytes)
        return;
    m_logged += line.size() + 1;
    m_log.write(m_logged > kLogBytes ? "(the rest is not kept)\n" : line + '\n');
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
    if (m_seen.contains(message) || (!error && m_warnings > kWarnings))
        return;
    m_seen.insert(message);
    m_warnings += error ? 0 : 1;
    m_open = error || m_warnings <= kWarnings;
    m_messages << (m_open ? message : "more warnings are in the log: " + m_log.fileName());
}

}
