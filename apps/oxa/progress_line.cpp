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
    show(QString::number(percent).rightJustified(3) + " %  " + stage);
}

void ProgressLine::show(const QString& text)
{
    if (!m_terminal)
        return;
    m_err << "\r\033[K" << text << Qt::flush;
    m_shown = true;
}

void ProgressLine::clear()
{
    if (m_shown)
        m_err << "\r\033[K" << Qt::flush;
    m_shown = false;
}
