#ifndef NORVOSYN_SYNTHESIS_REQUEST_H
#define NORVOSYN_SYNTHESIS_REQUEST_H

#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace NorvoSyn {

/// A request of the host (keys: request_keys.h), checked. Paths are absolute.
struct SynthesisRequest {
    QString workDir; ///< exists
    QString projectName; ///< fit to name files
    QString partNumber; ///< may be empty, as may the device's name
    QString deviceName;
    QStringList sources; ///< existing files, in the order of compilation
    QStringList includePaths; ///< searched in this order; they need not exist
    QString outputFile; ///< its directory exists, or is the work directory
    bool insertPads = true;
    bool checkResources = true; ///< compare the cells with what the device has
};

/// Fills `request` from `map`, making the work directory when there is none. False when `map`
/// cannot be run: then `problems` gets a text for every key that is missing or of the wrong type
/// and for every value that cannot be used.
bool readRequest(const QVariantMap& map, SynthesisRequest& request, QStringList& problems);

}

#endif
