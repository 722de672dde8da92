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

// Whether the variables are what a capture's core has; see docs/captures.md.
static bool isCaptureScope(const VcdReader& waveform, size_t from, size_t to)
{
    const auto& variables = waveform.variables();
    if (to - from < kOwnVariables || coreOf(waveform, variables[from]) < 0)
        return false;
    const char* const names[] = {"sample", "trigger", "window"};
    for (size_t i = 0; i < kOwnVariables; ++i) {
        const VcdVariable& variable = variables[to - kOwnVariables + i];
        if (!QString::fromStdString(variable.name).endsWith(names[i])
            || variable.width != (i == kOwnVariables - 1 ? kDumpWindowBits : 1))
            return false;
    }
    return true;
}

bool isCapture(const VcdReader& waveform)
{
    const auto& variables = waveform.variables();
    size_t from = 0;
    while (from < variables.size()) {
        const size_t to = endOfScope(variables, from);
        if (!isCaptureScope(waveform, from, to))
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
