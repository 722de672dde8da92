// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_UNIQUE_NAMES_H
#define OXACAPTURE_WAVEFORM_UNIQUE_NAMES_H

#include <QHash>
#include <QSet>
#include <QString>

namespace OXA_CAPTURE {

/// Makes names unique, for file formats that do not allow all names of signals.
class UniqueNames {
public:
    /// `wanted`, or "_" without it, then `range`; with "_2", "_3" ... between the two when that is
    /// taken.
    QString take(const QString& wanted, const QString& range = {});

    /// `wanted`, with "oxa_" in front as long as that is taken.
    QString takeOwn(QString wanted);

private:
    QSet<QString> m_taken;
    QHash<QString, int> m_last; // number after a name
};

}

#endif
