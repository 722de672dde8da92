// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CORE_WORDS_H
#define APPS_OXA_CORE_WORDS_H

#include <cstddef>

/// Words for a setting that files store as a number, in the order of the numbers from 0.
struct Words {
    constexpr Words() = default;
    template <std::size_t N>
    constexpr Words(const char* const (&words)[N]) // NOLINT: an array is such a list
        : list(words)
        , count(int(N))
    {
    }

    bool has(int number) const { return number >= 0 && number < count; }

    const char* const* list = nullptr;
    int count = 0;
};

constexpr const char* kEdgeWords[] = {"rising", "falling"};
constexpr const char* kMemoryWords[] = {"block SRAM", "registers", "shadow SRAM"};
constexpr const char* kExpressionWords[] = {"static", "dynamic"};
constexpr const char* kSwitchWords[] = {"off", "on"};

#endif
