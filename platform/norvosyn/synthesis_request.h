// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_SYNTHESIS_REQUEST_H
#define NORVOSYN_SYNTHESIS_REQUEST_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace NorvoSyn {

/// A checked request of the host (keys: request_keys.h). Paths are absolute.
struct SynthesisRequest {
    QString workDir; ///< exists
    QString projectName; ///< usable in file names
    QString partNumber; ///< may be empty, as may the device's name
    QString deviceName;
    QStringList sources; ///< existing files, in the order of compilation
    QStringList includePaths; ///< searched in this order; may not exist
    QString outputFile; ///< its directory exists, or is the work directory
    bool insertPads = true;
    bool checkResources = true; ///< compare the cells with the device
};

/// Fills `request` from `map`, and creates the work directory when it does not exist. False when
/// the request is invalid: `problems` then gets a text for every key that is missing or of the
/// wrong type, and for every invalid value.
bool readRequest(const QVariantMap& map, SynthesisRequest& request, QStringList& problems);

}

#endif
