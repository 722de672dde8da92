#ifndef APPS_OXA_EDITOR_SIGNAL_CLIPBOARD_H
#define APPS_OXA_EDITOR_SIGNAL_CLIPBOARD_H

#include "oxautils/model/signal_item.h"

class QMimeData;

/// The type of signals in clipboard data, and in what is dragged.
constexpr char kSignalsType[] = "application/x-oxa-signals";

/// Signals as clipboard data: whole for this program, as a list of names for others.
QMimeData* toMimeData(const QList<OXA::SignalItem>& items);

/// The signals in `data`, of either form; lines that are no names are said in `errors`.
QList<OXA::SignalItem> fromMimeData(const QMimeData* data, QStringList& errors);

#endif
