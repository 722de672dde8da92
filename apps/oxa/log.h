#ifndef APPS_OXA_LOG_H
#define APPS_OXA_LOG_H

/// Shows the library's warnings and errors on standard error from now on, as the program's own;
/// its progress lines only when OXA_DEBUG is set.
void installLog();

/// How many errors the library has logged.
int loggedErrors();

#endif
