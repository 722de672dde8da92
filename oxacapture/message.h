// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_MESSAGE_H
#define OXACAPTURE_MESSAGE_H

#include <QString>
#include <QVector>

namespace OXA_CAPTURE {

/// What is wrong, and where: a file's line, a core's unit, a signal's name.
struct Message {
    QString place; ///< "wave.vcd:12", "core 2, M3"; may be empty
    QString text; ///< "counter 9 does not fit in 3 bits"

    /// As a line.
    QString message() const { return place.isEmpty() ? text : place + QLatin1String(": ") + text; }
};

/// Messages are collected, so that a user sees all of them at once.
using Messages = QVector<Message>;

}

#endif
