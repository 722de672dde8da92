#include "progress_line.h"

#include <unistd.h>

ProgressLine::ProgressLine(QTextStream& err)
    : m_err(err)
    , m_terminal(isatty(STDERR_FILENO))
{
}

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const QString& stage, int percent)
{
    if (!m_terminal)
        return;
    m_err << "\r\033[K" << QString::number(percent).rightJustified(3) << " %  " << stage
          << Qt::flush;
    m_shown = true;
}

void ProgressLine::clear()
{
    if (m_shown)
        m_err << "\r\033[K" << Qt::flush;
    m_shown = false;
}
