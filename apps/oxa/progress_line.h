// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_PROGRESS_LINE_H
#define APPS_OXA_PROGRESS_LINE_H

#include "text_out.h"

/// Shows progress in one line of a terminal; prints nothing elsewhere.
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
