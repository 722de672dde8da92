// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_LOG_H
#define APPS_OXA_LOG_H

#include "text_out.h"

/// While it exists, the library's warnings and errors are messages on `err`; its progress messages
/// only when OXA_DEBUG is set.
class LogTo {
public:
    explicit LogTo(TextOut& err);
    ~LogTo();
    Q_DISABLE_COPY_MOVE(LogTo)
};

/// The number of errors that the library has logged.
int loggedErrors();

#endif
