#include "capture/signal_finder.h"

#include "capture/edit_distance.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace OXA_CAPTURE {

namespace {

constexpr int kShownNames = 3; // of the nearest, and of those that a name may mean

// '/' and '.' alike, the marks of escaped identifiers removed.
std::string normalized(const std::string& name)
{
    std::string result;
    for (const char c : name) {
        if (c == '/' || c == '.')
            result += '.';
        else if (c != '\\' && c != ' ')
            result += c;
    }
    return result;
}

std::string_view leafOf(std::string_view name)
{
    const size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

bool endsWithComponents(std::string_view whole, std::string_view end)
{
    if (whole.size() < end.size() || whole.substr(whole.size() - end.size()) != end)
        return false;
    return whole.size() == end.size() || whole[whole.size() - end.size() - 1] == '.';
}

// "data[3]" into "data" and 3; false when `name` does not end so.
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
    explicit Request(const QString& name)
        : whole(normalized(name.toStdString()))
    {
        if (!whole.empty() && whole.front() == '.')
            whole.erase(0, 1);
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
    const auto& variables = waveform.variables();
    m_names.reserve(variables.size());
    for (const VcdVariable& variable : variables)
        m_names.push_back(normalized(waveform.fullName(variable)));
    m_byLeaf.reserve(variables.size());
    for (size_t i = 0; i < variables.size(); ++i) {
        if (variables[i].width > 0)
            m_byLeaf.emplace(leafOf(m_names[i]), int(i));
    }
}

// The variables that the request may mean: those of its full name, or else those that end in it.
std::vector<int> SignalFinder::candidates(const Request& request) const
{
    std::vector<int> found;
    bool foundFull = false;
    const auto range = m_byLeaf.equal_range(leafOf(request.base));
    for (auto it = range.first; it != range.second; ++it) {
        const VcdVariable& variable = m_waveform.variables()[size_t(it->second)];
        const std::string& name = m_names[size_t(it->second)];
        const bool fits = request.hasIndex ? contains(variable, request.index)
                                           : variable.width == 1 && variable.msb == 0;
        if (!fits || !endsWithComponents(name, request.base))
            continue;
        const bool full = name.size() == request.base.size();
        if (full && !foundFull)
            found.clear();
        foundFull = foundFull || full;
        if (full == foundFull)
            found.push_back(it->second);
    }
    std::sort(found.begin(), found.end());
    return found;
}

WaveformBit SignalFinder::find(const QString& name, Problems* problems) const
{
    const Request request(name);
    std::vector<std::pair<int, int>> nets; // code and bit, each once
    QStringList places;
    for (const int candidate : candidates(request)) {
        const VcdVariable& variable = m_waveform.variables()[size_t(candidate)];
        const int bit = request.hasIndex ? std::abs(variable.msb - request.index) : 0;
        const std::pair<int, int> net(variable.code, bit);
        if (std::find(nets.begin(), nets.end(), net) != nets.end())
            continue;
        nets.push_back(net);
        places += shownName(candidate);
    }
    if (nets.size() == 1)
        return {nets.front().first, nets.front().second};
    if (problems && nets.empty())
        problems->append({name, whyMissing(request)});
    else if (problems) {
        const int more = places.size() - kShownNames;
        const QString rest = more > 0 ? QString(" and %1 more").arg(more) : QString();
        problems->append({name,
            "is ambiguous in the waveform: it may be " + places.mid(0, kShownNames).join(", ")
                + rest});
    }
    return {};
}

QString SignalFinder::whyMissing(const Request& request) const
{
    const auto range = m_byLeaf.equal_range(leafOf(request.base));
    for (auto it = range.first; it != range.second; ++it) {
        if (!endsWithComponents(m_names[size_t(it->second)], request.base))
            continue;
        const QString shown = shownName(it->second);
        return request.hasIndex ? "is not a bit of " + shown
                                : QString("names no single bit: the waveform has %1").arg(shown);
    }
    const QStringList nearest = nearestNames(request.base);
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
        const int distance = editDistance(wanted, it->first, limit);
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
        return name + QString("[%1:%2]").arg(shown.msb).arg(shown.lsb);
    return shown.hasRange ? name + QString("[%1]").arg(shown.msb) : name;
}

}
