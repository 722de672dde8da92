// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/design_index.h"

#include "oxautils/design/natural_order.h"
#include "oxautils/model/edit_distance.h"
#include "oxautils/model/shown_text.h"

#include <algorithm>

namespace OXA {

namespace {

constexpr int kShownNames = 3;

QString keyOf(const QString& path)
{
    QString key = path;
    return key.replace('.', '/');
}

QString leafOf(const QString& key) { return key.mid(key.lastIndexOf('/') + 1); }

bool endsWithComponents(const QString& key, const QString& end)
{
    return key.endsWith(end)
        && (key.size() == end.size() || key.at(key.size() - end.size() - 1) == '/');
}

/// Whether all of `text` matches. It backtracks only to the last '*', so the time is at most the
/// product of both lengths.
bool matches(const QString& text, int begin, const QString& pattern)
{
    int i = begin;
    int k = 0;
    int star = -1;
    int from = 0;
    while (i < text.size()) {
        if (k < pattern.size() && pattern.at(k) == '*') {
            star = k++;
            from = i;
        } else if (k < pattern.size() && (pattern.at(k) == '?' || pattern.at(k) == text.at(i))) {
            ++i;
            ++k;
        } else if (star >= 0) {
            k = star + 1;
            i = ++from;
        } else {
            return false;
        }
    }
    while (k < pattern.size() && pattern.at(k) == '*')
        ++k;
    return k == pattern.size();
}

bool matchesEnd(const QString& key, const QString& pattern)
{
    if (matches(key, 0, pattern))
        return true;
    for (int slash = key.indexOf('/'); slash >= 0; slash = key.indexOf('/', slash + 1)) {
        if (matches(key, slash + 1, pattern))
            return true;
    }
    return false;
}

/// Removes "[3]" from the end of `name`; false when there is none.
bool splitIndex(QString& name, int& index)
{
    const int bracket = name.lastIndexOf('[');
    if (bracket < 1 || !name.endsWith(']'))
        return false;
    bool isNumber = false;
    index = name.mid(bracket + 1, name.size() - bracket - 2).toInt(&isNumber);
    if (isNumber)
        name.truncate(bracket);
    return isNumber;
}

}

DesignIndex::DesignIndex(const Design& design)
    : m_design(design)
{
    const int count = design.items.size();
    m_byPath.reserve(count);
    m_byKey.reserve(count);
    m_byLeaf.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString& path = design.items.at(i).path;
        const QString key = keyOf(path);
        m_byPath.insert(path, i);
        m_byKey.insert(key, i);
        m_byLeaf.insert(leafOf(key), i);
    }
}

int DesignIndex::signal(const QString& name) const
{
    const auto exact = m_byPath.constFind(name);
    if (exact != m_byPath.constEnd())
        return *exact;
    const QVector<int> found = named(keyOf(name));
    return found.size() == 1 ? found.first() : -1;
}

DesignBit DesignIndex::bit(const QString& name) const
{
    const int whole = signal(name);
    if (whole >= 0 && !m_design.items.at(whole).isVector())
        return {whole, 0};
    QString base = name;
    int index = 0;
    if (!splitIndex(base, index))
        return {};
    const int found = signal(base);
    if (found < 0)
        return {};
    const DesignSignal& vector = m_design.items.at(found);
    const int position = vector.positionOf(index);
    return position >= 0 && position < vector.width ? DesignBit {found, position} : DesignBit();
}

QVector<int> DesignIndex::matching(const QString& pattern) const
{
    const QString key = keyOf(pattern);
    if (!key.contains('*') && !key.contains('?'))
        return named(key);
    QVector<int> found;
    for (int i = 0; i < m_design.items.size(); ++i) {
        if (matchesEnd(keyOf(m_design.items.at(i).path), key))
            found += i;
    }
    return found;
}

/// The signals whose path is `key` or ends with its components.
QVector<int> DesignIndex::named(const QString& key) const
{
    QVector<int> found;
    const auto collect = [&](const QMultiHash<QString, int>& table, const QString& wanted) {
        for (auto it = table.constFind(wanted); it != table.constEnd() && it.key() == wanted;
             ++it) {
            if (endsWithComponents(keyOf(m_design.items.at(*it).path), key))
                found += *it;
        }
    };
    collect(m_byKey, key);
    if (found.isEmpty())
        collect(m_byLeaf, leafOf(key));
    std::sort(found.begin(), found.end());
    return found;
}

QStringList DesignIndex::nearest(const QString& name, int count) const
{
    const QByteArray wanted = leafOf(keyOf(name)).toUtf8();
    const int limit = std::max(1, int(wanted.size() + 1) / 3);
    QVector<QPair<int, int>> found; // distance, signal
    for (auto it = m_byLeaf.constBegin(); it != m_byLeaf.constEnd(); ++it) {
        const QByteArray leaf = it.key().toUtf8();
        const int distance = editDistance({wanted.constData(), size_t(wanted.size())},
            {leaf.constData(), size_t(leaf.size())}, limit);
        if (distance <= limit)
            found.append({distance, *it});
    }
    const auto before = [this](const QPair<int, int>& a, const QPair<int, int>& b) {
        return a.first != b.first
            ? a.first < b.first
            : naturallyLess(m_design.items.at(a.second).path, m_design.items.at(b.second).path);
    };
    std::partial_sort(
        found.begin(), found.begin() + std::min(count, int(found.size())), found.end(), before);
    QStringList names;
    for (const auto& entry : found.mid(0, count))
        names += m_design.items.at(entry.second).path + m_design.items.at(entry.second).rangeText();
    return names;
}

QString DesignIndex::whyMissing(const QString& name, bool withNearest) const
{
    const QString where = m_design.isWaveform ? "the waveform" : "the design";
    QString base = name;
    int index = 0;
    const bool hasIndex = splitIndex(base, index);
    QVector<int> several = matching(name);
    if (several.isEmpty())
        several = matching(base);
    if (several.size() > 1) {
        QStringList paths;
        for (const int i : several.mid(0, kShownNames))
            paths += shownText(m_design.items.at(i).path);
        const int more = several.size() - kShownNames;
        return QString("may be %1%2")
            .arg(
                paths.join(" or "), more > 0 ? QString(" or one of %1 more").arg(more) : QString());
    }
    if (hasIndex && signal(base) >= 0) {
        const DesignSignal& vector = m_design.items.at(signal(base));
        return vector.isVector()
            ? QString("is not in the range %1 of %2")
                  .arg(vector.rangeText(), shownText(vector.path))
            : QString("has an index, but %1 has only one bit").arg(shownText(vector.path));
    }
    const QStringList names = withNearest ? nearest(base) : QStringList();
    return names.isEmpty()
        ? QString("is not in %1").arg(where)
        : QString("is not in %1; the nearest names are %2").arg(where, shownText(names.join(", ")));
}

}
