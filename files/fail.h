// SPDX-License-Identifier: Apache-2.0
#ifndef FILES_FAIL_H
#define FILES_FAIL_H

#include <QString>

namespace OXA {

/// What a function returns that cannot do its work: false, with the reason `text` in `error`, which
/// may be null.
inline bool fail(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return false;
}

}

#endif
