// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_SIGNAL_CLIPBOARD_H
#define APPS_OXA_EDITOR_SIGNAL_CLIPBOARD_H

#include "oxautils/model/signal_item.h"

class QMimeData;

/// The MIME type of copied and dragged signals.
constexpr char kSignalsType[] = "application/x-oxa-signals";

/// Signals as clipboard data: complete for this program, as a list of names for others.
QMimeData* toMimeData(const QList<OXA::SignalItem>& items);

/// The signals in `data`, in either form; lines that are not names are reported in `errors`.
QList<OXA::SignalItem> fromMimeData(const QMimeData* data, QStringList& errors);

#endif
