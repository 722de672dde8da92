// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_LOG_H
#define APPS_OXA_LOG_H

/// Prints the library's warnings and errors on standard error from now on; its progress messages
/// only when OXA_DEBUG is set.
void installLog();

/// The number of errors that the library has logged.
int loggedErrors();

#endif
