#ifndef OXAUTILS_DESIGN_FAIL_H
#define OXAUTILS_DESIGN_FAIL_H

#include <QString>

namespace OXA {

/// False, with the reason `text` in `error`, which may be null.
inline bool fail(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return false;
}

}

#endif
