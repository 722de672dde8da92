#ifndef APPS_OXA_PART_H
#define APPS_OXA_PART_H

#include "options.h"
#include "text_out.h"

#include <dev/device_db.h>

#include <optional>

/// The catalogue that the options or OXA_DEVICE_DB name; empty when it is the built-in one.
QString namedCatalogue(const PartOptions& options);

/// Loads the catalogue that the options name, when they name one. False, said on `err`, when it
/// cannot be used.
bool loadCatalogue(const PartOptions& options, TextOut& err);

/// The part that the options name. None, said on `err` with the nearest ones, when the catalogue
/// does not hold exactly one such part.
std::optional<DEV::ChipInfo> findPart(const PartOptions& options, TextOut& err);

/// The part with every field, for programs.
QJsonObject partJson(const DEV::ChipInfo& chip);

/// The part numbers nearest to `text` that could be meant by it, best first.
QStringList nearestParts(const QString& text);

#endif
