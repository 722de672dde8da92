// SPDX-License-Identifier: Apache-2.0
// Any file as a configuration. What a reader accepts must come back from the file that the writer
// makes of it, and has registers; what has no error for the checks is accepted by everything else.
#include "fuzz_support.h"

#include "oxautils/check/check.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "oxautils/encoding/match_registers.h"
#include "support/files.h"

#include <dev/device_db.h>

#include <QSet>
#include <QTemporaryDir>

namespace {

template <typename Core, typename Write, typename Read>
void roundTrip(const QList<Core*>& cores, const Write& write, const Read& read)
{
    static const QTemporaryDir directory("/dev/shm/fuzzXXXXXX");
    const QString first = directory.filePath("first");
    const QString second = directory.filePath("second");
    QFile::remove(first);
    write(cores, first);
    if (!QFile::exists(first))
        return; // a text got a character by reference that XML cannot hold
    bool ok = false;
    const QList<Core*> again = read(first, &ok, nullptr);
    require(ok, "what was written can be read");
    require(again.size() == cores.size(), "no core is lost");
    require(OXA::readOXACRCForXml(first) == OXA::computeOXACRCForXml(first)
            || OXA::computeOXACRCForXml(first).isEmpty(),
        "the checksum is that of the content");
    write(again, second);
    QList<Core*> third = read(second, &ok, nullptr);
    write(third, first);
    require(bytesOf(first) == bytesOf(second), "reading and writing settles");
    qDeleteAll(again);
    qDeleteAll(third);
}

void requireRegisters(OXA::AoCore* core)
{
    QString text;
    QTextStream out(&text);
    OXA::generateRegister(core, out, {}, 0);
    require(text.isEmpty() || text.count('\n') == 4 + 16 * 5, "all the lines, or none");
    for (OXA::MatchUnit* unit : core->matchUnits) {
        QBitArray m0;
        QBitArray m1;
        QBitArray m2;
        OXA::bitForM(unit, m0, m1, m2);
        const int width = unit->trigger ? unit->trigger->singleSignals().size() : 0;
        require(m0.size() == width && m1.size() == width && m2.size() == width, "port width");
    }
}

/// Whether there is no error.
bool requireWellFormed(const QList<OXA::Problem>& problems)
{
    static const QSet<QString> rules = [] {
        QSet<QString> names;
        for (const OXA::RuleInfo& rule : OXA::checkRules())
            names << rule.name;
        return names;
    }();
    int line = 0;
    bool hasError = false;
    for (const OXA::Problem& problem : problems) {
        require(rules.contains(problem.rule), "a problem names its rule");
        require(!problem.text.isEmpty() && !problem.hint.isEmpty(), "a problem says what and how");
        require(problem.place.line >= line, "problems come in document order");
        line = problem.place.line;
        hasError = hasError || problem.severity == OXA::Severity::Error;
    }
    return !hasError;
}

}

void fuzz(const QByteArray& input)
{
    static const DEV::ChipInfo part = DEV::DeviceDb::instance().find("", "QX1NZ-1D");
    const MemoryFile file(input);
    const QString path = file.path();
    const bool isLite = OXA::oxaModeFromOxaConfigFile(path) == OXA::Lite;
    OXA::versionFromOxaConfigFile(path);
    const QString stored = OXA::readOXACRCForXml(path);
    const QString computed = OXA::computeOXACRCForXml(path);
    const bool hasAll = isLite ? OXA::checkOXALiteFile(path) : OXA::checkOXAStandardFile(path);

    bool ok = false;
    QString error;
    const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(path, &ok, &error);
    require(ok || (cores.isEmpty() && !error.isEmpty()), "a failure says why");
    bool accepted = ok;
    std::for_each(cores.begin(), cores.end(), requireRegisters);
    if (!cores.isEmpty())
        roundTrip(cores, OXA::writeOXAConfigToXml, OXA::readOXAConfigFromXml);
    qDeleteAll(cores);
    try {
        const QList<OXA::AOCore_Lite*> lite = OXA::readOXAConfigFromXml_Lite(path, &ok, &error);
        require(ok || (lite.isEmpty() && !error.isEmpty()), "a failure says why");
        accepted = isLite ? ok : accepted;
        if (!lite.isEmpty())
            roundTrip(lite, OXA::writeOXAConfigToXml_Lite, OXA::readOXAConfigFromXml_Lite);
        qDeleteAll(lite);
    } catch (const OXA::CompareException&) {
        accepted = accepted && !isLite;
    }

    requireWellFormed(OXA::checkConfigFile(path, &part));
    if (requireWellFormed(OXA::checkConfigFile(path)))
        require(accepted && hasAll && (stored.isEmpty() || stored == computed),
            "a file without errors can be read, is complete and has the right checksum");
}
