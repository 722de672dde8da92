#ifndef APPS_OXA_PROGRESS_LINE_H
#define APPS_OXA_PROGRESS_LINE_H

#include "text_out.h"

/// One line on a terminal that says what is being done; nothing elsewhere.
class ProgressLine {
public:
    explicit ProgressLine(TextOut& err);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(const QString& stage, int percent);
    void show(const QString& text);
    void clear();

private:
    TextOut& m_err;
    bool m_terminal;
    bool m_shown = false;
};

#endif
