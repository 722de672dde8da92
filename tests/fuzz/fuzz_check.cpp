// Any file through the checks. A file without an error must be one that readers and checkers
// accept.
#include "fuzz_support.h"

#include "oxautils/check/check.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"

#include <dev/device_db.h>

#include <QSet>

namespace {

bool hasError(const QList<OXA::Problem>& problems)
{
    for (const OXA::Problem& problem : problems) {
        if (problem.severity == OXA::Severity::Error)
            return true;
    }
    return false;
}

void requireWellFormed(const QList<OXA::Problem>& problems)
{
    static const QSet<QString> rules = [] {
        QSet<QString> names;
        for (const OXA::RuleInfo& rule : OXA::checkRules())
            names << rule.name;
        return names;
    }();
    int line = 0;
    for (const OXA::Problem& problem : problems) {
        require(rules.contains(problem.rule), "a problem names its rule");
        require(!problem.text.isEmpty() && !problem.hint.isEmpty(), "a problem says what and how");
        require(problem.place.line >= line, "problems come in document order");
        line = problem.place.line;
    }
}

void requireAccepted(const QString& path)
{
    bool ok = false;
    const bool lite = OXA::oxaModeFromOxaConfigFile(path) == OXA::Lite;
    if (lite)
        qDeleteAll(OXA::readOXAConfigFromXml_Lite(path, &ok));
    else
        qDeleteAll(OXA::readOXAConfigFromXml(path, &ok));
    require(ok, "a file without errors can be read");
    require(lite ? OXA::checkOXALiteFile(path) : OXA::checkOXAStandardFile(path),
        "a file without errors has all attributes");
    const QString stored = OXA::readOXACRCForXml(path);
    require(stored.isEmpty() || stored == OXA::computeOXACRCForXml(path),
        "a file without errors has the right checksum");
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const DEV::ChipInfo part = DEV::DeviceDb::instance().find("", "QX1NZ-1D");
    silenceLog();
    const MemoryFile file(data, size);
    const QList<OXA::Problem> problems = OXA::checkConfigFile(file.path());
    requireWellFormed(problems);
    if (!hasError(problems))
        requireAccepted(file.path());
    requireWellFormed(OXA::checkConfigFile(file.path(), &part));
    return 0;
}
