// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/edit_distance.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace OXA {

int editDistance(std::string_view a, std::string_view b, int limit)
{
    const int rows = int(a.size());
    const int columns = int(b.size());
    if (std::abs(rows - columns) > limit)
        return limit + 1;
    std::vector<int> above(size_t(columns) + 1);
    for (int column = 0; column <= columns; ++column)
        above[size_t(column)] = column;
    std::vector<int> line(above.size());
    for (int row = 1; row <= rows; ++row) {
        line[0] = row;
        int least = row;
        for (size_t column = 1; column < line.size(); ++column) {
            const bool same = std::tolower(static_cast<unsigned char>(a[size_t(row) - 1]))
                == std::tolower(static_cast<unsigned char>(b[column - 1]));
            line[column] = std::min(
                {above[column] + 1, line[column - 1] + 1, above[column - 1] + (same ? 0 : 1)});
            least = std::min(least, line[column]);
        }
        if (least > limit)
            return limit + 1;
        line.swap(above);
    }
    return std::min(above.back(), limit + 1);
}

}
