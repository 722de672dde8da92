// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_VERSION_H
#define OXAUTILS_CONFIG_VERSION_H

#include "oxautils/oxautils_export.h"

#include <QByteArray>
#include <QString>

#include <exception>

namespace OXA {

/// Thrown for a text that is not a version.
class OXAUTILS_EXPORT CompareException : public std::exception {
public:
    explicit CompareException(const QString& message); ///< a line to show
    ~CompareException() override;

    QString message() const { return m_message; } ///< the line to show
    const char* what() const noexcept override { return m_what.constData(); } ///< in UTF-8

private:
    QString m_message;
    QByteArray m_what;
};

/// Compares dotted versions part by part as numbers; empty parts are ignored and missing parts are
/// 0, so 3 equals "3.0" and 2.10 is above 2.9.
///
/// The result is a bit: 1 when `a` is below `b`, 2 when they are equal, 4 when `a` is above. Throws
/// CompareException ("Invalid Oxa config file.") at a part that is not a decimal integer, unless an
/// earlier part decides.
OXAUTILS_EXPORT int compareVersion(const QString& a, const QString& b);

}

#endif
