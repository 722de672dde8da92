// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/capture_scopes.h"

#include "oxacapture/waveform/dump_text.h"

#include <QRegularExpression>

namespace OXA_CAPTURE {

int coreOf(const VcdReader& waveform, const VcdVariable& variable)
{
    if (variable.scope < 0)
        return 0;
    static const QRegularExpression own("^core(\\d+)$");
    const VcdScope& scope = waveform.scopes()[size_t(variable.scope)];
    const auto match = own.match(QString::fromStdString(scope.name));
    return scope.parent < 0 && match.hasMatch() ? match.captured(1).toInt() : -1;
}

size_t endOfScope(const std::vector<VcdVariable>& variables, size_t from)
{
    size_t to = from;
    while (to < variables.size() && variables[to].scope == variables[from].scope)
        ++to;
    return to;
}

// Whether `variable` may be of this kind: a capture may have made its name unique.
static bool isOwn(const VcdVariable& variable, OwnVariable kind)
{
    const char* const names[] = {"sample", "trigger", "window", "forced", "stamp"};
    const bool isNumber = kind == OwnVariable::Window || kind == OwnVariable::Stamp;
    return QString::fromStdString(variable.name).endsWith(names[int(kind)])
        && variable.width == (isNumber ? kDumpNumberBits : 1);
}

std::vector<OwnVariable> ownVariables(const VcdReader& waveform, size_t from, size_t to)
{
    const auto& variables = waveform.variables();
    if (coreOf(waveform, variables[from]) < 0)
        return {};
    std::vector<OwnVariable> own;
    for (const OwnVariable kind : {OwnVariable::Stamp, OwnVariable::Forced, OwnVariable::Window,
             OwnVariable::Trigger, OwnVariable::Sample}) {
        const bool isThere = to > from && isOwn(variables[to - 1], kind);
        const bool mayBeMissing = kind == OwnVariable::Stamp || kind == OwnVariable::Forced;
        if (!isThere && !mayBeMissing)
            return {};
        if (!isThere)
            continue;
        own.insert(own.begin(), kind);
        --to;
    }
    return own;
}

bool isCapture(const VcdReader& waveform)
{
    const auto& variables = waveform.variables();
    size_t from = 0;
    while (from < variables.size()) {
        const size_t to = endOfScope(variables, from);
        if (ownVariables(waveform, from, to).empty())
            return false;
        from = to;
    }
    return from > 0;
}

bool isSession(const VcdReader& waveform)
{
    return isCapture(waveform) && waveform.variables().front().scope < 0;
}

}
