// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CHECK_RULE_H
#define OXAUTILS_CHECK_RULE_H

#include "oxautils/check/config_file.h"
#include "oxautils/check/problem.h"
#include "oxautils/check/subjects.h"

#include <QList>

#include <variant>
#include <vector>

namespace OXA {

class Findings;

/// A rule checks subjects of one kind, one at a time, and adds what it finds.
using RuleFunction
    = std::variant<void (*)(const ConfigFile&, Findings&), void (*)(const AllCores&, Findings&),
        void (*)(const AnyCore&, Findings&), void (*)(const StandardCore&, Findings&),
        void (*)(const Unit&, Findings&), void (*)(const Expression&, Findings&)>;

struct Rule {
    const char* name;
    Severity severity;
    RuleFunction find;
    const char* meaning; // what violates it
    const char* hint;
};

/// Every rule, in the order in which problems of one place are shown.
const std::vector<Rule>& rules();

/// Receives what a rule finds.
class Findings {
public:
    Findings(const Rule& rule, QList<Problem>& problems)
        : m_rule(rule)
        , m_problems(problems)
    {
    }

    void add(const Place& place, const QString& text) { add(place, text, m_rule.hint); }

    /// With a hint that fits better than the rule's.
    void add(const Place& place, const QString& text, const QString& hint)
    {
        m_problems.append({m_rule.name, m_rule.severity, place, text, hint});
    }

private:
    const Rule& m_rule;
    QList<Problem>& m_problems;
};

/// In the order of the file; without one, in the order in which a file would hold the places.
QList<Problem> inDocumentOrder(QList<Problem> problems);

/// Applies every rule about this kind of subject to `subject`.
template <typename Subject> void applyRules(const Subject& subject, QList<Problem>& problems)
{
    for (const Rule& rule : rules()) {
        Findings findings(rule, problems);
        if (const auto* find = std::get_if<void (*)(const Subject&, Findings&)>(&rule.find))
            (*find)(subject, findings);
    }
}

}

#endif
