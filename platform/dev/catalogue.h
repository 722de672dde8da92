// SPDX-License-Identifier: Apache-2.0
#ifndef DEV_CATALOGUE_H
#define DEV_CATALOGUE_H

#include "dev/device_db.h"

#include <memory>

namespace DEV {

/// A catalogue as read from a file (docs: share/device/README.md); it never changes, so threads
/// may share one.
struct Catalogue {
    QList<ChipInfo> chips; ///< in file order

    ChipInfo find(const QString& partNumber, const QString& deviceName) const;
};

/// The catalogue in the file `path`. Null when the file cannot be read or breaks a rule; `error`
/// is then "path:line:column: why", or "path: why".
std::shared_ptr<const Catalogue> readCatalogue(const QString& path, QString* error);

}

#endif
