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

// Whether the last variables before `to` are `own`.
static bool endsWith(const VcdReader& waveform, size_t to, const std::vector<OwnVariable>& own)
{
    const auto& variables = waveform.variables();
    const char* const names[] = {"sample", "trigger", "window", "forced", "stamp"};
    for (size_t i = 0; i < own.size(); ++i) {
        const VcdVariable& variable = variables[to - own.size() + i];
        const bool isNumber = own[i] == OwnVariable::Window || own[i] == OwnVariable::Stamp;
        if (!QString::fromStdString(variable.name).endsWith(names[int(own[i])])
            || variable.width != (isNumber ? kDumpNumberBits : 1))
            return false;
    }
    return true;
}

std::vector<OwnVariable> ownVariables(const VcdReader& waveform, size_t from, size_t to)
{
    using V = OwnVariable;
    static const std::vector<V> kKinds[] = {
        {V::Sample,   V::Trigger, V::Window,  V::Forced, V::Stamp},
        {V::Sample,   V::Trigger,             V::Window,               V::Forced},
        {V::Sample,  V::Trigger,V::Window,V::Stamp},
        {V::Sample,V::Trigger,           V::Window                          },
    };
    if (coreOf(waveform, waveform.variables()[from]) < 0)
        return {};
    for (const std::vector<V>& own : kKinds) {
        if (to - from >= own.size() && endsWith(waveform, to, own))
            return own;
    }
    return {};
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
