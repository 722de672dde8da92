// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_PART_H
#define APPS_OXA_PART_H

#include "options.h"
#include "text_out.h"

#include <dev/device_db.h>

#include <optional>

/// The catalogue that the options or OXA_DEVICE_DB name; empty for the built-in one.
QString namedCatalogue(const PartOptions& options);

/// Loads the catalogue that the options name, if any. False, with the error on `err`, when it
/// cannot be used.
bool loadCatalogue(const PartOptions& options, TextOut& err);

/// The part that the options name. None, with the error and the nearest names on `err`, when the
/// catalogue does not contain exactly one such part.
std::optional<DEV::ChipInfo> findPart(const PartOptions& options, TextOut& err);

/// The part with every field, for programs.
QJsonObject partJson(const DEV::ChipInfo& chip);

/// The part numbers most similar to `text`, best first.
QStringList nearestParts(const QString& text);

#endif
