// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_XML_PARSER_H
#define OXAUTILS_CONFIG_XML_PARSER_H

#include "oxautils/config/xml_element.h"

namespace OXA {

struct XmlError;

/// Parses `text`; null, with the place in `error`, when it is malformed.
///
/// Accepts and rejects what the parser did that earlier versions used: duplicate attributes (the
/// last counts), references to unknown entities (without text), any version, and control characters
/// are accepted.
std::shared_ptr<const XmlTree> parseXmlText(const QString& text, XmlError& error);

}

#endif
