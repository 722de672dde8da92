// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_REMEMBERED_BUILDS_H
#define OXAUTILS_GENERATE_REMEMBERED_BUILDS_H

#include "oxautils/generate/fingerprint.h"

#include <QDateTime>

namespace OXA {

/// A build on this computer. Builds are remembered, so that a client finds what a chip was built
/// from although the configuration has changed (docs/captures.md).
struct RememberedBuild {
    QString configuration; ///< path of a copy of the configuration, as it was built
    QString original; ///< path of the configuration then
    QString device; ///< part number, or family of devices
    QString workDir; ///< of the build; it may be gone
    QDateTime time; ///< when it was done

    /// "/home/me/uart.oxa on 2026-11-22 at 17:45, for ice40"
    OXAUTILS_EXPORT QString text() const;
};

/// The directory of the remembered builds; empty when OXA_REMEMBER is 0: nothing is remembered
/// then.
OXAUTILS_EXPORT QString rememberedBuildsDir();

/// Remembers a build, whose cores have `sums`, with the configuration's `content`. It replaces a
/// build with the same sums; over 100, the oldest are forgotten. Failure is at most a warning in
/// the log.
OXAUTILS_EXPORT void rememberBuild(
    const RememberedBuild& build, const QByteArray& content, const BuildSums& sums);

/// All remembered builds, the newest first.
OXAUTILS_EXPORT QList<RememberedBuild> rememberedBuilds();

/// Those whose cores have `sums`, or their fingerprints where the cores do not know their names.
OXAUTILS_EXPORT QList<RememberedBuild> rememberedBuilds(const BuildSums& sums);

}

#endif
