// SPDX-License-Identifier: Apache-2.0
#include "progress_line.h"

#include "oxautils/model/shown_text.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

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
{
}

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const QString& stage, int percent)
{
    show(QString::number(percent).rightJustified(3) + " %  " + stage);
}

void ProgressLine::show(const QString& text)
{
    if (!m_terminal)
        return;
    m_err << "\r\033[K" << fitting(OXA::shownText(text));
    m_err.flush();
    m_shown = true;
}

void ProgressLine::clear()
{
    if (m_shown) {
        m_err << "\r\033[K";
        m_err.flush();
    }
    m_shown = false;
}
