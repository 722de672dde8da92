// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/natural_order.h"

namespace OXA {

namespace {

bool isDigit(QChar c) { return c >= '0' && c <= '9'; }

/// The position after the digits at `at`; `first` is the first of them that is not 0.
int behindNumber(const QString& text, int at, int& first)
{
    while (at + 1 < text.size() && text.at(at) == '0' && isDigit(text.at(at + 1)))
        ++at;
    first = at;
    while (at < text.size() && isDigit(text.at(at)))
        ++at;
    return at;
}

}

bool naturallyLess(const QString& a, const QString& b)
{
    int i = 0;
    int k = 0;
    while (i < a.size() && k < b.size()) {
        if (!isDigit(a.at(i)) || !isDigit(b.at(k))) {
            if (a.at(i) != b.at(k))
                return a.at(i) < b.at(k);
            ++i;
            ++k;
            continue;
        }
        int firstA = 0;
        int firstB = 0;
        i = behindNumber(a, i, firstA);
        k = behindNumber(b, k, firstB);
        if (i - firstA != k - firstB)
            return i - firstA < k - firstB;
        for (int digit = 0; digit < i - firstA; ++digit) {
            if (a.at(firstA + digit) != b.at(firstB + digit))
                return a.at(firstA + digit) < b.at(firstB + digit);
        }
    }
    const int restA = a.size() - i;
    const int restB = b.size() - k;
    return restA != restB ? restA < restB : a < b;
}

}
