// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_PROGRESS_LINE_H
#define APPS_OXA_PROGRESS_LINE_H

#include "text_out.h"

#include <QDeadlineTimer>

/// Shows progress on standard error: on a terminal in one line that changes, elsewhere in lines:
/// one when a stage has lasted for a second, and another one every ten seconds. The environment
/// variable OXA_PROGRESS switches these lines off with 0.
class ProgressLine {
public:
    explicit ProgressLine(TextOut& err);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Called often during a stage.
    void show(const QString& stage, int percent);
    void show(const QString& text); ///< of a job without stages
    void clear(); ///< before anything else is printed

private:
    void showOnTerminal(const QString& text);
    void showLine(const QString& stage, const QString& text);

    TextOut& m_err;
    bool m_terminal;
    bool m_hasLines;
    bool m_shown = false; // on the terminal
    QString m_stage;
    QString m_text; // of the last line
    QDeadlineTimer m_nextLine;
};

#endif
