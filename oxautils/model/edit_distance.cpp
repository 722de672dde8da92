// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/edit_distance.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace OXA {

int editDistance(std::string_view a, std::string_view b, int limit)
{
    const auto same = [&](size_t left, size_t right) {
        return std::tolower(static_cast<unsigned char>(a[left]))
            == std::tolower(static_cast<unsigned char>(b[right]));
    };
    const int rows = int(a.size());
    const int columns = int(b.size());
    if (std::abs(rows - columns) > limit)
        return limit + 1;
    std::vector<int> above(size_t(columns) + 1);
    for (int column = 0; column <= columns; ++column)
        above[size_t(column)] = column;
    std::vector<int> before(above.size()); // the line above that
    std::vector<int> line(above.size());
    int lastLeast = 0;
    for (size_t row = 1; row <= a.size(); ++row) {
        line[0] = int(row);
        int least = line[0];
        for (size_t column = 1; column < line.size(); ++column) {
            line[column] = std::min({above[column] + 1, line[column - 1] + 1,
                above[column - 1] + (same(row - 1, column - 1) ? 0 : 1)});
            if (row > 1 && column > 1 && same(row - 1, column - 2) && same(row - 2, column - 1))
                line[column] = std::min(line[column], before[column - 2] + 1);
            least = std::min(least, line[column]);
        }
        if (least > limit && lastLeast >= limit) // an exchange skips a line
            return limit + 1;
        lastLeast = least;
        before.swap(above);
        line.swap(above);
    }
    return std::min(above.back(), limit + 1);
}

QStringList nearestNames(const QString& word, const QStringList& known, int count)
{
    const std::string wanted = word.toStdString();
    std::vector<std::pair<int, int>> places; // distance, place
    for (int place = 0; place < known.size(); ++place) {
        const std::string name = known.at(place).toStdString();
        const int most = int(std::max(wanted.size(), name.size()));
        places.emplace_back(editDistance(wanted, name, most), place);
    }
    std::sort(places.begin(), places.end());
    QStringList names;
    for (int i = 0; i < std::min(count, int(places.size())); ++i)
        names += known.at(places[size_t(i)].second);
    return names;
}

}
