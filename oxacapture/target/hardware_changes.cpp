// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/hardware_changes.h"

#include "oxacapture/target/settings_register.h"
#include "oxautils/model/limits.h"

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

// The first bit that differs in two lists of the same length.
QString firstOther(const QStringList& is, const QStringList& asked)
{
    const int place = int(std::mismatch(is.begin(), is.end(), asked.begin()).first - is.begin());
    return QString("%1 instead of %2").arg(is.value(place), asked.value(place));
}

// The connections of the chip's cores, built as `built`, that `wanted` would change.
QStringList otherWires(const CorePlan& built, const CorePlan& wanted)
{
    QStringList texts;
    if (built.request.clock != wanted.request.clock)
        texts += "the sample clock " + built.request.clock;
    const auto& is = built.request.fields;
    const auto& asked = wanted.request.fields;
    for (size_t field = 0; field < is.size() && field < asked.size(); ++field) {
        if (is[field].size() != asked[field].size() || is[field] == asked[field])
            continue;
        const QString place = field == 0 || !built.core // a Lite core has only data signals
            ? QString("other data signals: ")
            : QString("other signals at trigger port %1: ")
                  .arg(built.core->availableTriggers().at(int(field) - 1)->index);
        texts += place + firstOther(is[field], asked[field]);
    }
    return texts;
}

// The static expressions, which are logic, that `wanted` would change.
QStringList otherExpressions(const CorePlan& built, const CorePlan& wanted)
{
    QStringList texts;
    const bool isLogic = built.core->expressionType == wanted.core->expressionType
        && built.core->expressionType == OXA::StaticExpressions;
    const auto& is = built.setup.levels;
    const auto& asked = wanted.setup.levels;
    for (size_t i = 0; isLogic && i < is.size() && i < asked.size(); ++i) {
        if (!(is[i] == asked[i]))
            texts += QString("the static expression %1 \"%2\" instead of \"%3\"")
                         .arg(QString::number(i), built.core->expressions.at(int(i)),
                             wanted.core->expressions.at(int(i)));
    }
    return texts;
}

// What of the storage is logic that `wanted` would change, besides what its identity tells.
QStringList otherStorage(const OXA::AoCore& built, const OXA::AoCore& wanted)
{
    const OXA::CoreStorage& is = built.storage;
    const OXA::CoreStorage& asked = wanted.storage;
    QStringList texts;
    if (is.keep != asked.keep || is.isDefault())
        return texts;
    if (is.keep == OXA::CoreStorage::Changes
        && OXA::watchedForChanges(built) != OXA::watchedForChanges(wanted))
        texts += "other signals whose changes are stored";
    if (is.limit != asked.limit && is.limit > 0 && asked.limit > 0)
        texts += QString("a limit of %1 samples instead of %2")
                     .arg(QString::number(is.limit), QString::number(asked.limit));
    if (is.keep == OXA::CoreStorage::When && built.expressionType == OXA::StaticExpressions
        && is.when != asked.when)
        texts += QString("the static expression \"%1\" for what is stored instead of \"%2\"")
                     .arg(is.when, asked.when);
    return texts;
}

// Why the core, built as `built`, cannot run as `wanted`: "in the chip it has 512 words of memory
// instead of 256; M0 does not detect edges".
QString complaint(const CoreIdentity& identity, const CorePlan& built, const CorePlan& wanted)
{
    if ((built.core == nullptr) != (wanted.core == nullptr))
        return "in the chip it is of the other kind";
    QStringList others = otherWires(built, wanted);
    QStringList faults;
    others += differences(identity, identityOf(wanted, identity.position), Compared::Fixed);
    if (wanted.core) {
        others += otherExpressions(built, wanted);
        others += otherStorage(*built.core, *wanted.core);
        faults = settingsFaults(identity, wanted.setup);
    }
    if (!others.isEmpty())
        faults.prepend("in the chip it has " + others.join(", "));
    return faults.join("; ");
}

}

bool fitsHardware(const std::vector<CoreIdentity>& identities, const std::vector<CorePlan>& built,
    const std::vector<CorePlan>& wanted, Messages& messages)
{
    if (wanted.size() != built.size()) {
        messages.append(Message {{},
            QString("the chip has %1 cores, the configuration %2: generate and synthesize it")
                .arg(QString::number(built.size()), QString::number(wanted.size()))});
        return false;
    }
    for (size_t place = 0; place < wanted.size(); ++place) {
        const QString fault = complaint(identities[place], built[place], wanted[place]);
        if (!fault.isEmpty())
            messages.append(Message {{},
                QString("%1 cannot be changed so without synthesis: %2")
                    .arg(wanted[place].name(), fault)});
    }
    return messages.isEmpty();
}

}
