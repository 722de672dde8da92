// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/trigger_port.h"

#include <QDebug>

namespace OXA {

QList<QString> TriggerPort::singleSignals() const { return flattenedNames(signalList); }

QDebug operator<<(QDebug debug, const TriggerPort& port)
{
    const QDebugStateSaver saver(debug);
    const QStringList names = port.singleSignals();
    debug.noquote().nospace() << "Trigger Port: T" << port.index << '\n'
                              << "Width: " << names.size() << '\n'
                              << "Singals: (" << names.join(", ") << ")\n"; // the format's spelling
    return debug;
}

}
