// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/attach.h"
#include "oxautils/design/attach_wrapper.h"
#include "oxautils/design/design_script.h"
#include "oxautils/model/shown_text.h"

#include "files/fail.h"
#include "files/replace_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

namespace OXA {

namespace {

// Files of the run. The design without analyzer is "gold", the one with it "gate"; each also has a
// file NAME.check and NAME.init.
constexpr char kPlain[] = "plain.v";
constexpr char kStatus[] = "status.txt";

/// The content of `path`; empty when it cannot be read.
QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// "flip-flop or net=initial value" for each net with one.
QStringList initialValues(const QString& path)
{
    static const QRegularExpression wire(R"(^\s*wire .*?(\\\S+)\s*$)");
    QStringList values;
    QString value;
    const QStringList lines = textOf(path).split('\n');
    for (const QString& line : lines) {
        if (line.trimmed().startsWith("attribute \\init "))
            value = line.trimmed().section(' ', 2);
        const QRegularExpressionMatch match = wire.match(line);
        if (!match.hasMatch())
            continue;
        // Without initial value, all bits are unknown.
        if (value.contains('0') || value.contains('1'))
            values += match.captured(1).mid(1) + '=' + value;
        value.clear();
    }
    values.sort();
    return values;
}

/// The nets with several drivers in the check `path`.
QStringList netsOfSeveralDrivers(const QString& path)
{
    static const QRegularExpression conflict(
        R"(conflicting drivers for \S+?\.\\?(\S.*):$)", QRegularExpression::MultilineOption);
    QStringList nets;
    for (auto it = conflict.globalMatch(textOf(path)); it.hasNext();)
        nets += it.next().captured(1);
    return nets;
}

/// Those of `a` that are not in `b`.
QStringList without(const QStringList& a, const QStringList& b)
{
    const QSet<QString> known(b.begin(), b.end());
    QStringList more;
    for (const QString& text : a) {
        if (!known.contains(text))
            more += text;
    }
    return more;
}

/// Differences beside the pairs of nets. The comparison uses only one of several drivers.
QStringList otherDifferences(const DesignScript& script)
{
    QStringList texts;
    for (const QString& value :
        without(initialValues(script.path("gold.init")), initialValues(script.path("gate.init"))))
        texts += "the initial value of " + value.section('=', 0, 0);
    for (const QString& net : without(netsOfSeveralDrivers(script.path("gate.check")),
             netsOfSeveralDrivers(script.path("gold.check"))))
        texts += net + ", which has several drivers";
    return texts;
}

/// The unproven pairs in the status `text` of Yosys.
QStringList unprovenPairs(const QString& text)
{
    static const QRegularExpression unproven(R"(Unproven \$equiv \S+: \\?(\S+)( \[\d+\])?)");
    QStringList names;
    for (auto it = unproven.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        QString name = match.captured(1);
        if (name.endsWith("_gold"))
            name.chop(5);
        names += name + match.captured(2).trimmed();
    }
    return names;
}

/// Writes the design as Verilog and reads it back.
void addRewriting(DesignScript& script, const QString& top)
{
    script.add("setattr", {"-unset", "src", "-unset", "hdlname", "*"});
    script.add("write_verilog", {script.path("again.v")});
    script.add("design", {"-reset"});
    script.add("read_verilog", {DesignScript::fileWord(script.path("again.v"))});
    script.add("hierarchy", {"-top", top});
    script.add("proc");
    script.add("memory_collect");
}

/// Saves the flattened design as `name`. The comparison pairs memories with the same ports, which
/// writing Verilog splits: then both have to be `written`.
void addStash(DesignScript& script, const QString& top, const QString& name, bool written)
{
    script.add("tee", {"-q", "-o", script.path(name + ".check"), "check"});
    script.add("setattr", {"-unset", "keep", "*"});
    script.add("memory_collect");
    if (written)
        addRewriting(script, top);
    script.add("opt_clean");
    script.add("rename", {top, name});
    script.add("tee", {"-q", "-o", script.path(name + ".init"), "dump", "a:init"});
    script.add("design", {"-stash", name});
}

void addComparison(DesignScript& script)
{
    script.addStage(60, "proving that the design is the same");
    script.add("design", {"-reset"});
    for (const char* name : {"gold", "gate"})
        script.add("design", {"-copy-from", name, "-as", name, name});
    script.add("equiv_make", {"gold", "gate", "equiv"});
    script.add("hierarchy", {"-top", "equiv"});
    script.add("equiv_struct");
    script.add("equiv_simple", {"-seq", "1"});
    script.add("equiv_induct");
    script.add("tee", {"-q", "-o", script.path(kStatus), "equiv_status"});
}

}

void Attachment::addProof(DesignScript& script, const QString& wrapper, bool isFlat) const
{
    addDesign(script);
    script.add("design", {"-save", "alone"});
    script.add("read_verilog", {DesignScript::fileWord(script.path(kPlain))});
    script.add("hierarchy", {"-top", m_design.top});
    script.add("flatten");
    addStash(script, m_design.top, "gold", isFlat);
    script.addStage(40, "attaching the analyzer");
    script.add("design", {"-load", "alone"});
    addWrapper(script, wrapper);
    QStringList ports;
    for (const QString& port : addedPorts(m_request))
        ports += m_design.top + '/' + port;
    if (!ports.isEmpty())
        script.add("delete", QStringList("-port") + ports);
    addStash(script, m_design.top, "gate", false);
    addComparison(script);
}

bool Attachment::prove(const QString& wrapper, Proof& proof, QString* error)
{
    QElapsedTimer timer;
    timer.start();
    proof = Proof();
    const QString given = wrapper.isEmpty() ? pathTo(ATTACH_WRAPPER_FILE_NAME) : wrapper;
    QFile file(given);
    if (!file.open(QIODevice::ReadOnly))
        return fail(
            error, QString("%1: cannot be read: %2").arg(shownText(given), file.errorString()));
    const bool isFlat = !file.readAll().contains(renamedTop(m_design).toUtf8());
    DesignScript script(m_hooks);
    if (!script.isValid(error) || !script.addSources(m_request.sources, error)
        || !DesignScript::isReadable(given, error)
        || !DesignScript::isReadable(m_request.workDir, error))
        return false;
    if (!OXA_FILES::replaceFile(script.path(kPlain), plainWrapperText(m_design), error))
        return false;
    addProof(script, given, isFlat);
    QString failure;
    const bool ran = script.run(&failure);
    proof.seconds = double(timer.elapsed()) / 1000;
    // Yosys ends like this when two memories of the same name are not proven equal.
    if (!ran && failure.contains("packed_memids")) {
        proof.open += "the memories: their contents, widths or ports";
        return true;
    }
    if (!ran)
        return fail(error, failure);
    const QString status = textOf(script.path(kStatus));
    proof.open = otherDifferences(script) + unprovenPairs(status);
    proof.proven = proof.open.isEmpty() && status.contains("Equivalence successfully proven!");
    if (!proof.proven && proof.open.isEmpty())
        return fail(error, "Yosys did not report the result of the proof: " + shownText(status));
    return true;
}

}
