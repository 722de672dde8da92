#ifndef ENGINE_ENGINE_OUTPUT_H
#define ENGINE_ENGINE_OUTPUT_H

#include <QByteArray>
#include <QFile>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace OXA_ENGINE {

/// Reads what the engine prints: keeps all of it in the log, and picks from it the stages, the
/// errors and the warnings.
class EngineOutput {
public:
    using Stage = std::function<void(const QString& text, int percent)>;

    /// `stage` is called for every stage that the flow announces.
    EngineOutput(const QString& logFile, Stage stage);

    void take(const QByteArray& line);

    /// Errors and warnings, each once, in their order: "FILE:LINE: error: TEXT", or without the
    /// place where the engine names none. Behind the first few a line says how many more there are,
    /// and that the log has them.
    /// To be called once, behind the last line.
    QStringList finish();
    bool hasError() const { return m_errors > 0; }

    /// The last few lines, for an engine that ended badly without a word that was understood.
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
    bool m_open = false; ///< indented lines that follow belong to the last message
};

}

#endif
