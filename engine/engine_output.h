// SPDX-License-Identifier: Apache-2.0
#ifndef ENGINE_ENGINE_OUTPUT_H
#define ENGINE_ENGINE_OUTPUT_H

#include <QByteArray>
#include <QFile>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace OXA_ENGINE {

/// Reads the engine's output: writes all of it to the log, and extracts stages, errors and
/// warnings.
class EngineOutput {
public:
    using Stage = std::function<void(const QString& text, int percent)>;

    /// `stage` is called for every stage that the script reports.
    EngineOutput(const QString& logFile, Stage stage);

    void take(const QByteArray& line);

    /// Errors and warnings, each once, in order: "FILE:LINE: error: TEXT", without the place when
    /// the engine reports none. After the first few, a line has the number of further ones and
    /// refers to the log. Call it once, after the last line.
    QStringList finish();
    bool hasError() const { return m_errors > 0; }

    /// The last few lines, for an engine that failed without a recognised message.
    QStringList tail() const { return m_tail; }

private:
    void log(const QByteArray& line);
    void failLog();
    void remember(const QString& line);
    void takeMessage(const QString& text);
    void addMessage(const QString& message, bool error);

    QFile m_log;
    Stage m_stage;
    QString m_source; ///< being read by the engine
    QStringList m_messages;
    QSet<QString> m_seen;
    QStringList m_tail;
    QString m_logProblem;
    qint64 m_logged = 0;
    int m_errors = 0;
    int m_warnings = 0;
    bool m_open = false; ///< following indented lines belong to the last message
};

}

#endif
