// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_SIGNAL_XML_H
#define OXAUTILS_CONFIG_SIGNAL_XML_H

#include "oxautils/model/signal_item.h"

class QXmlStreamWriter;

namespace OXA {

class XmlElement;

/// The owner of a list: cores and ports write a bus's names differently.
enum class SignalOwner { Core, Port };

/// Writes the "SignalList" element with `items`.
void writeSignalList(QXmlStreamWriter& xml, const QList<SignalItem>& items, SignalOwner owner);

/// The items of a "SignalList" element; none for a null element.
QList<SignalItem> readSignalList(const XmlElement& list);

}

#endif
