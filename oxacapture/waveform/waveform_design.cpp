// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/waveform_design.h"

#include "files/fail.h"
#include "oxacapture/waveform/capture_scopes.h"
#include "oxautils/design/natural_order.h"

#include <QHash>

#include <algorithm>

namespace OXA_CAPTURE {

namespace {

constexpr char kTooLong[] = "the names of the waveform's scopes are too long";
constexpr qint64 kMostCharacters = qint64(1) << 28; // of all paths

OXA::DesignSignal signalOf(const VcdVariable& variable, const QString& path)
{
    OXA::DesignSignal item;
    item.path = path;
    item.width = variable.width;
    item.offset = std::min(variable.msb, variable.lsb);
    item.ascending = variable.msb < variable.lsb;
    return item;
}

/// Adds a bit that was declared separately to adjacent bits; false when it is not adjacent.
bool join(OXA::DesignSignal& signal, const OXA::DesignSignal& bit)
{
    const int behind = signal.offset + signal.width;
    if (bit.offset >= signal.offset && bit.offset + bit.width <= behind)
        return true;
    if (bit.offset != behind && bit.offset + bit.width != signal.offset)
        return false;
    signal.offset = std::min(signal.offset, bit.offset);
    signal.width += bit.width;
    return true;
}

}

bool readWaveformSignals(const QString& path, OXA::Design& design, QString* error)
{
    VcdReader reader(path);
    if (!reader.readHeader())
        return OXA::fail(error, reader.message().message());
    design = OXA::Design();
    design.isWaveform = true;
    std::vector<QString> scopes;
    qint64 characters = 0;
    for (const VcdScope& scope : reader.scopes()) {
        const QString name = QString::fromStdString(scope.name);
        scopes.push_back(scope.parent < 0 ? name : scopes[size_t(scope.parent)] + '/' + name);
        characters += scopes.back().size();
        if (characters > kMostCharacters)
            return OXA::fail(error, kTooLong);
    }
    QHash<QString, int> known;
    const std::vector<VcdVariable>& variables = reader.variables();
    const bool hasOwn = isCapture(reader);
    size_t end = 0; // of the scope
    size_t ownBegin = 0; // in it
    const auto isOwn = [&](size_t i) { // a variable that is no signal of a design
        if (hasOwn && i == end) {
            end = endOfScope(variables, i);
            ownBegin = end - ownVariables(reader, i, end).size();
        }
        return hasOwn && i >= ownBegin;
    };
    for (size_t i = 0; i < variables.size(); ++i) {
        const VcdVariable& variable = variables[i];
        if (isOwn(i) || variable.width == 0)
            continue;
        const QString name = QString::fromStdString(variable.name);
        const QString full
            = variable.scope < 0 ? name : scopes[size_t(variable.scope)] + '/' + name;
        characters += full.size();
        if (characters > kMostCharacters)
            return OXA::fail(error, kTooLong);
        const OXA::DesignSignal item = signalOf(variable, full);
        const auto found = known.constFind(full);
        if (found != known.constEnd() && join(design.items[*found], item))
            continue;
        known.insert(full, design.items.size());
        design.items += item;
    }
    std::sort(design.items.begin(), design.items.end(),
        [](const OXA::DesignSignal& a, const OXA::DesignSignal& b) {
            return OXA::naturallyLess(a.path, b.path);
        });
    return true;
}

}
