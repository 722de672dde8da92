// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/unique_names.h"

namespace OXA_CAPTURE {

QString UniqueNames::take(const QString& wanted, const QString& range)
{
    const QString base = wanted.isEmpty() ? QString("_") : wanted;
    QString name = base + range;
    while (m_taken.contains(name)) {
        int& last = m_last[base + range];
        last = std::max(last, 1) + 1;
        name = base + '_' + QString::number(last) + range;
    }
    m_taken += name;
    return name;
}

QString UniqueNames::takeOwn(QString wanted)
{
    while (m_taken.contains(wanted))
        wanted.prepend("oxa_");
    m_taken += wanted;
    return wanted;
}

}
