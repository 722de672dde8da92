// SPDX-License-Identifier: Apache-2.0
#include "progress_line.h"

#include "oxautils/model/shown_text.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int kFirstLine = 1000; // ms after the beginning of a stage
constexpr int kNextLine = 10000; // ms after a line

// The part that fits into one line of the terminal: a longer text would scroll at every change.
QString fitting(const QString& text)
{
    winsize size {};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    const int most = size.ws_col - 1;
    return known && text.size() > most ? text.left(most - 1) + QStringLiteral("…") : text;
}

}

ProgressLine::ProgressLine(TextOut& err)
    : m_err(err)
    , m_terminal(isatty(STDERR_FILENO))
    , m_hasLines(!m_terminal && qEnvironmentVariable("OXA_PROGRESS") != "0")
    , m_nextLine(kFirstLine)
{
}

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const QString& stage, int percent)
{
    if (m_terminal)
        showOnTerminal(QString::number(percent).rightJustified(3) + " %  " + stage);
    else
        showLine(stage, stage + ": " + QString::number(percent) + " %");
}

void ProgressLine::show(const QString& text)
{
    if (m_terminal)
        showOnTerminal(text);
    else
        showLine({}, text);
}

void ProgressLine::showOnTerminal(const QString& text)
{
    m_err << "\r\033[K" << fitting(OXA::shownText(text));
    m_err.flush();
    m_shown = true;
}

void ProgressLine::showLine(const QString& stage, const QString& text)
{
    if (stage != m_stage)
        m_nextLine.setRemainingTime(kFirstLine);
    m_stage = stage;
    if (!m_hasLines || !m_nextLine.hasExpired() || text == m_text)
        return;
    m_err << text << '\n';
    m_err.flush();
    m_text = text;
    m_nextLine.setRemainingTime(kNextLine);
}

void ProgressLine::clear()
{
    if (m_shown) {
        m_err << "\r\033[K";
        m_err.flush();
    }
    m_shown = false;
}
