// SPDX-License-Identifier: Apache-2.0
#include "problem_location.h"

namespace {

// The pages for rules about a core as a whole; other rules: the first page.
struct RulePage {
    const char* rule;
    Page page;
};

constexpr RulePage kRulePages[] = {
    {"no-data",              Page::Signals    },
    {"signal-twice",         Page::Signals    },
    {"sampled-clock",        Page::Signals    },
    {"unusable-name",        Page::Signals    },
    {"hidden-characters",    Page::Signals    },
    {"wrapper-name",         Page::Signals    },
    {"shared-data",          Page::Signals    },
    {"not-in-design",        Page::Signals    },
    {"watched-memory",       Page::Signals    },
    {"declared-bits",        Page::Signals    },
    {"other-clock",          Page::Signals    },
    {"no-expression",        Page::Expressions},
    {"too-many-expressions", Page::Expressions},
    {"table-memory",         Page::Expressions},
};

Page pageOf(const OXA::Problem& problem)
{
    if (problem.place.expression >= 0)
        return Page::Expressions;
    if (problem.place.unit >= 0)
        return Page::Units;
    if (problem.place.port >= 0)
        return Page::Ports;
    for (const RulePage& known : kRulePages) {
        if (problem.rule == known.rule)
            return known.page;
    }
    return Page::Capture;
}

int itemOf(const OXA::Place& place)
{
    return place.expression >= 0 ? place.expression : place.unit >= 0 ? place.unit : place.port;
}

}

Location locationOf(const OXA::Problem& problem, const Cores& cores)
{
    return {cores.value(problem.place.core), pageOf(problem), itemOf(problem.place)};
}
