// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/ao_core_lite.h"

#include <QDebug>

namespace OXA {

QList<QString> AOCore_Lite::dataSignals() const { return flattenedNames(signalList); }

QList<QString> AOCore_Lite::dataSignalsText() const { return flattenedTexts(signalList); }

QDebug operator<<(QDebug debug, const AOCore_Lite& core)
{
    const QDebugStateSaver saver(debug);
    const QString frame = QString(40, '=') + '\n';
    debug.noquote().nospace() << frame << "AO Core\n"
                              << "Sample Clock: " << core.sampleClock << '\n'
                              << "Trigger Clk Type: " << core.trigType << '\n'
                              << "Capture Amount: " << core.captureAmount << '\n'
                              << "Data Signals: " << QStringList(core.dataSignals()).join(", ")
                              << '\n'
                              << frame;
    return debug;
}

}
