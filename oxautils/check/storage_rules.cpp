// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/standard_rules.h"
#include "oxautils/model/edit_distance.h"

namespace OXA {

namespace {

constexpr int kMostNames = 3; // in a text
constexpr int kMostUnknown = 20; // names of a core that are reported

bool gapBitsAreGood(const CoreStorage& storage)
{
    const int least = storage.keep == CoreStorage::Changes ? 1 : 0;
    return storage.gapBits >= least && storage.gapBits <= CoreStorage::kMostGapBits;
}

}

void findGapBits(const StandardCore& core, Findings& findings)
{
    const CoreStorage& storage = core.core.storage;
    if (storage.isDefault() || gapBitsAreGood(storage))
        return;
    findings.add(core.storagePlace(),
        storage.gapBits == 0 ? QString("changes are stored without gaps")
                             : QString("a gap has %1 bits; 0 to %2 are possible")
                                   .arg(QString::number(storage.gapBits),
                                       QString::number(CoreStorage::kMostGapBits)));
}

void findFewGapBits(const StandardCore& core, Findings& findings)
{
    const CoreStorage& storage = core.core.storage;
    if (storage.isDefault() || storage.gapBits < 1 || !gapBitsAreGood(storage))
        return;
    // With all samples, a word is `whole` bits; now it spans at most 2^gapBits samples.
    const qint64 whole = core.core.dataSignals().size() + 1;
    const qint64 most = qint64(1) << storage.gapBits;
    if (most * whole > 2 * (whole + storage.extraBits()))
        return;
    const QString bits
        = storage.gapBits == 1 ? QString("1 bit") : QString("%1 bits").arg(storage.gapBits);
    findings.add(core.storagePlace(),
        QString("with gaps of %1, at least one of %2 samples is stored; all samples of half that "
                "span take no more memory")
            .arg(bits, QString::number(most)));
}

void findStorageLimit(const StandardCore& core, Findings& findings)
{
    const CoreStorage& storage = core.core.storage;
    if (!storage.isDefault() && (storage.limit < 0 || storage.limit > CoreStorage::kMostLimit))
        findings.add(core.storagePlace(),
            QString("a window ends %1 samples behind its trigger; 0 to %2 are possible")
                .arg(QString::number(storage.limit), QString::number(CoreStorage::kMostLimit)));
}

void findUnknownWatched(const StandardCore& core, Findings& findings)
{
    if (core.core.storage.keep != CoreStorage::Changes)
        return;
    const QStringList known = watchableNames(core.core);
    QStringList unknown = core.core.storage.watch;
    for (const QString& name : known)
        unknown.removeAll(name);
    unknown.removeDuplicates();
    for (const QString& name : unknown.mid(0, kMostUnknown)) {
        const QStringList nearest = nearestNames(name, known, kMostNames);
        findings.add(core.storagePlace(),
            nearest.isEmpty() ? QString("it captures no \"%1\"").arg(name)
                              : QString("it captures no \"%1\"; the nearest names are %2")
                                    .arg(name, nearest.join(", ")));
    }
}

}
