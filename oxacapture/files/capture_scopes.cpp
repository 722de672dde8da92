// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/files/capture_scopes.h"

#include <QRegularExpression>

namespace OXA_CAPTURE {

constexpr int kIndexBits = 32; // of the variable that counts the windows

int coreOf(const VcdScope& scope)
{
    static const QRegularExpression own("^core(\\d+)$");
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
    if (to - from < kOwnVariables || variables[from].scope < 0
        || coreOf(waveform.scopes()[size_t(variables[from].scope)]) < 0)
        return false;
    const char* const names[] = {"sample", "trigger", "window"};
    for (size_t i = 0; i < kOwnVariables; ++i) {
        const VcdVariable& variable = variables[to - kOwnVariables + i];
        if (!QString::fromStdString(variable.name).endsWith(names[i])
            || variable.width != (i == kOwnVariables - 1 ? kIndexBits : 1))
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

}
