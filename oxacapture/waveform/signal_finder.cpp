// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/signal_finder.h"

#include "oxautils/model/edit_distance.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace OXA_CAPTURE {

namespace {

constexpr int kExplained = 20; // messages with the nearest names
constexpr int kShownNames = 3; // in a message

// '/' and '.' alike.
char normalized(char c) { return c == '/' ? '.' : c; }

// Without the backslash before an escaped component and the space after it. All other characters
// are part of the name.
std::string withoutMarks(const std::string& name)
{
    std::string result;
    bool escaped = false;
    for (size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool begins = i == 0 || result.empty() || result.back() == '.';
        const bool ends = i + 1 == name.size() || name[i + 1] == '/' || name[i + 1] == '.';
        if (begins && !escaped && c == '\\')
            escaped = true;
        else if (escaped && ends && c == ' ')
            escaped = false;
        else
            result += normalized(c);
    }
    return result;
}

std::string withDots(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return normalized(c); });
    return name;
}

std::string_view leafOf(std::string_view name) { return name.substr(name.find_last_of("./") + 1); }

// The hash of a name after others, whose hash is `before`.
size_t hashOf(std::string_view name, size_t before)
{
    for (const char c : name)
        before = 31 * before + static_cast<unsigned char>(normalized(c));
    return before;
}

// Whether one of the two ends with the other.
bool endAlike(std::string_view normal, std::string_view name)
{
    return std::equal(normal.rbegin(),
        normal.rbegin() + std::ptrdiff_t(std::min(normal.size(), name.size())), name.rbegin(),
        [](char a, char b) { return a == normalized(b); });
}

// "data[3]" into "data" and 3; false for other names.
bool splitIndex(const std::string& name, std::string& base, int& index)
{
    const size_t bracket = name.rfind('[');
    if (bracket == std::string::npos || bracket == 0 || name.back() != ']')
        return false;
    const char* end = name.data() + name.size() - 1;
    const auto result = std::from_chars(name.data() + bracket + 1, end, index);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    base = name.substr(0, bracket);
    return true;
}

bool contains(const VcdVariable& variable, int index)
{
    return index >= std::min(variable.msb, variable.lsb)
        && index <= std::max(variable.msb, variable.lsb);
}

}

struct SignalFinder::Request {
    explicit Request(std::string name)
        : whole(std::move(name))
    {
        hasIndex = splitIndex(whole, base, index);
        if (!hasIndex)
            base = whole;
    }

    std::string whole;
    std::string base; // without the index
    bool hasIndex = false;
    int index = 0;
};

SignalFinder::SignalFinder(const VcdReader& waveform)
    : m_waveform(waveform)
{
    std::vector<size_t> ofScopes; // of their full names, with a dot at the end
    for (const VcdScope& scope : waveform.scopes())
        ofScopes.push_back(
            hashOf(scope.name + '.', scope.parent < 0 ? 0 : ofScopes[size_t(scope.parent)]));
    const auto& variables = waveform.variables();
    m_byLeaf.reserve(variables.size());
    m_byHash.reserve(variables.size());
    for (size_t i = 0; i < variables.size(); ++i) {
        const VcdVariable& variable = variables[i];
        if (variable.width == 0)
            continue;
        m_byLeaf.emplace(leafOf(variable.name), int(i));
        m_byHash.emplace(
            hashOf(variable.name, variable.scope < 0 ? 0 : ofScopes[size_t(variable.scope)]),
            int(i));
    }
}

// Whether the variable's full name ends with the components `end`; `whole` when it has no others.
// Without building the full name: those of all variables may be long.
bool SignalFinder::endsWith(int variable, std::string_view end, bool& whole) const
{
    std::string_view part = m_waveform.variables()[size_t(variable)].name;
    int scope = m_waveform.variables()[size_t(variable)].scope;
    while (endAlike(end, part)) {
        if (end.size() <= part.size()) {
            const size_t rest = part.size() - end.size();
            whole = rest == 0 && scope < 0;
            return rest == 0 || normalized(part[rest - 1]) == '.';
        }
        end.remove_suffix(part.size());
        if (scope < 0 || end.back() != '.')
            return false;
        end.remove_suffix(1);
        part = m_waveform.scopes()[size_t(scope)].name;
        scope = m_waveform.scopes()[size_t(scope)].parent;
    }
    return false;
}

// The variables for the request: those with its full name, else those that end with it.
std::vector<int> SignalFinder::candidates(Request& request) const
{
    std::vector<int> found;
    const auto collect = [&](const auto& range, bool onlyWhole) {
        for (auto it = range.first; it != range.second; ++it) {
            const VcdVariable& variable = m_waveform.variables()[size_t(it->second)];
            const bool fits = request.hasIndex ? contains(variable, request.index)
                                               : variable.width == 1 && variable.msb == 0;
            bool whole = false;
            if (fits && endsWith(it->second, request.base, whole) && (whole || !onlyWhole))
                found.push_back(it->second);
        }
    };
    collect(m_byHash.equal_range(hashOf(request.base, 0)), true);
    if (found.empty() && !request.base.empty() && request.base.front() == '.') {
        request.base.erase(0, 1);
        collect(m_byHash.equal_range(hashOf(request.base, 0)), true);
    }
    if (found.empty())
        collect(m_byLeaf.equal_range(leafOf(request.base)), false);
    std::sort(found.begin(), found.end());
    return found;
}

WaveformBit SignalFinder::find(const QString& name, Messages* messages) const
{
    Request request(withDots(name.toStdString()));
    std::vector<int> found = candidates(request);
    if (found.empty()) { // the waveform may contain names that look escaped
        request = Request(withoutMarks(name.toStdString()));
        found = candidates(request);
    }
    std::set<std::pair<int, int>> nets; // code and bit, each once
    QStringList places;
    for (const int candidate : found) {
        const VcdVariable& variable = m_waveform.variables()[size_t(candidate)];
        const int bit = request.hasIndex ? std::abs(variable.msb - request.index) : 0;
        if (nets.emplace(variable.code, bit).second && places.size() < kShownNames)
            places += shownName(candidate);
    }
    if (nets.size() == 1)
        return {nets.begin()->first, nets.begin()->second};
    if (messages && nets.empty())
        messages->append({name, whyMissing(request, messages->size() < kExplained)});
    else if (messages) {
        const int more = int(nets.size()) - kShownNames;
        const QString rest = more > 0 ? QString(" and %1 more").arg(more) : QString();
        messages->append(
            {name, "is ambiguous in the waveform: it may be " + places.join(", ") + rest});
    }
    return {};
}

QString SignalFinder::whyMissing(const Request& request, bool nearby) const
{
    const auto range = m_byLeaf.equal_range(leafOf(request.base));
    for (auto it = range.first; it != range.second; ++it) {
        bool full = false;
        if (!endsWith(it->second, request.base, full))
            continue;
        const QString shown = shownName(it->second);
        return request.hasIndex ? "is not a bit of " + shown
                                : QString("is not a single bit: the waveform has %1").arg(shown);
    }
    const QStringList nearest = nearby ? nearestNames(request.base) : QStringList();
    if (nearest.isEmpty())
        return "is not in the waveform";
    return "is not in the waveform; the nearest names are " + nearest.join(", ");
}

QStringList SignalFinder::nearestNames(const std::string& base) const
{
    const std::string_view wanted = leafOf(base);
    const int limit = std::max(1, (int(wanted.size()) + 1) / 3);
    std::set<std::pair<int, int>> nearest; // distance, variable
    for (auto it = m_byLeaf.begin(); it != m_byLeaf.end();) {
        const auto next = m_byLeaf.equal_range(it->first).second;
        const int distance = OXA::editDistance(wanted, it->first, limit);
        for (; distance <= limit && it != next; ++it) {
            nearest.emplace(distance, it->second);
            if (int(nearest.size()) > kShownNames)
                nearest.erase(std::prev(nearest.end()));
        }
        it = next;
    }
    QStringList names;
    for (const auto& entry : nearest)
        names += shownName(entry.second);
    return names;
}

QString SignalFinder::shownName(int variable) const
{
    const VcdVariable& shown = m_waveform.variables()[size_t(variable)];
    const QString name = QString::fromStdString(m_waveform.fullName(shown));
    if (shown.msb != shown.lsb)
        return name
            + QString("[%1:%2]").arg(QString::number(shown.msb), QString::number(shown.lsb));
    return shown.hasRange ? name + QString("[%1]").arg(shown.msb) : name;
}

}
