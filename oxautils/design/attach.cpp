#include "oxautils/design/attach.h"

#include "oxautils/design/design_index.h"
#include "oxautils/design/design_script.h"
#include "oxautils/design/fail.h"
#include "oxautils/design/source_scan.h"
#include "oxautils/model/shown_text.h"

#include "files/replace_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace OXA {

namespace {

constexpr char kInstance[] = "u_design"; // of the design in the wrapper
constexpr char kSuffix[] = "_without_analyzer"; // of the design's module
constexpr int kMostNamed = 20; // names in a message

const QStringList& padNames()
{
    static const QStringList names {"tms_pad_i", "tck_pad_i", "tdi_pad_i", "tdo_pad_o"};
    return names;
}

QString escaped(const QString& name) { return (name.startsWith('\\') ? name : '\\' + name) + ' '; }

QVector<DesignSignal> portsOf(const Design& design)
{
    QVector<DesignSignal> ports;
    for (const DesignSignal& signal : design.items) {
        if (signal.direction != DesignSignal::Inside)
            ports += signal;
    }
    std::sort(ports.begin(), ports.end(),
        [](const DesignSignal& a, const DesignSignal& b) { return a.port < b.port; });
    return ports;
}

QStringList portDeclarations(const Design& design)
{
    QStringList lines;
    for (const DesignSignal& port : portsOf(design)) {
        const QString range = port.isVector() ? port.rangeText() + ' ' : QString();
        lines += port.kindText() + ' ' + range + escaped(port.flatName);
    }
    return lines;
}

/// The design as a module in a module.
QString designInstance(const Design& design, const QString& module, const QString& parameters)
{
    QStringList connections;
    for (const DesignSignal& port : portsOf(design))
        connections += "    ." + escaped(port.flatName) + '(' + escaped(port.flatName) + ')';
    return escaped(module) + parameters + kInstance + " (\n" + connections.join(",\n") + "\n);\n";
}

/// The top around nothing but the design, so that nets have the names that they have beside an
/// analyzer.
QByteArray plainWrapper(const Design& design)
{
    return ("module " + escaped(design.top) + "(\n    " + portDeclarations(design).join(",\n    ")
        + "\n);\n" + designInstance(design, design.top + kSuffix, {}) + "endmodule\n")
        .toUtf8();
}

template <typename Core> void addNames(const Core& core, QStringList& names)
{
    names += core.dataSignals();
    names += core.sampleClock;
}

QString parametersText(const QStringList& parameters)
{
    QStringList texts;
    for (const QString& parameter : parameters)
        texts
            += '.' + escaped(parameter.section('=', 0, 0)) + '(' + parameter.section('=', 1) + ')';
    return texts.isEmpty() ? QString() : "#(" + texts.join(", ") + ") ";
}

QString firstNamed(const QStringList& names)
{
    const int more = names.size() - kMostNamed;
    const QString rest = more > 0 ? QString("\nand %1 more").arg(more) : QString();
    return names.mid(0, kMostNamed).join('\n') + rest;
}

/// "flip-flop or net=initial value" for each net with one.
QStringList initialValues(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression wire(R"(^\s*wire .*?(\\\S+)\s*$)");
    QStringList values;
    QString value;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith("attribute \\init "))
            value = line.section(' ', 2);
        const QRegularExpressionMatch match = wire.match(line);
        if (!match.hasMatch())
            continue;
        // What has none is unknown in each bit.
        if (value.contains('0') || value.contains('1'))
            values += match.captured(1).mid(1) + '=' + value;
        value.clear();
    }
    values.sort();
    return values;
}

/// The nets that have several drivers in the check of `gate`, but not in that of `gold`: the proof
/// would take one of the drivers for the net.
QStringList otherDrivers(const QString& gold, const QString& gate)
{
    const auto netsOf = [](const QString& path) {
        static const QRegularExpression conflict(R"(conflicting drivers for \S+?\.\\?(\S.*):$)");
        QFile file(path);
        QStringList nets;
        while (file.isOpen() || file.open(QIODevice::ReadOnly)) {
            if (file.atEnd())
                break;
            const auto match = conflict.match(QString::fromUtf8(file.readLine()).trimmed());
            if (match.hasMatch())
                nets += match.captured(1);
        }
        return nets;
    };
    const QStringList known = netsOf(gold);
    QStringList more;
    for (const QString& net : netsOf(gate)) {
        if (!known.contains(net))
            more += net + ", which has several drivers";
    }
    return more;
}

/// Those of `a` that `b` has not, by name.
QStringList otherValues(const QStringList& a, const QStringList& b)
{
    const QSet<QString> known(b.begin(), b.end());
    QStringList names;
    for (const QString& value : a) {
        if (!known.contains(value))
            names += "the initial value of " + value.section('=', 0, 0);
    }
    return names;
}

}

QStringList watchedNames(const QList<AoCore*>& cores)
{
    QStringList names;
    for (const AoCore* core : cores) {
        addNames(*core, names);
        for (const TriggerPort* port : core->availableTriggers())
            names += port->singleSignals();
    }
    names.removeDuplicates();
    return names;
}

QStringList watchedNames(const QList<AOCore_Lite*>& cores)
{
    QStringList names;
    for (const AOCore_Lite* core : cores)
        addNames(*core, names);
    names.removeDuplicates();
    return names;
}

Attachment::Attachment(const AttachRequest& request, const DesignHooks& hooks)
    : m_request(request)
    , m_hooks(hooks)
{
}

bool Attachment::read(QString* error)
{
    if (!readDesign(m_request.sources, m_design, error, m_hooks))
        return false;
    m_warnings = m_design.warnings;
    const DesignIndex index(m_design);
    QStringList missing;
    m_watched.clear();
    for (const QString& name : m_request.names) {
        const DesignBit bit = index.bit(name);
        const int signal = bit.signal < 0 ? index.signal(name) : bit.signal;
        if (signal < 0)
            missing += shownText(name) + ": " + index.whyMissing(name);
        else if (m_design.items.at(signal).isMemory())
            missing += shownText(name) + ": is a memory; the signals at its ports can be watched";
        else if (bit.signal < 0)
            missing += shownText(name) + ": " + index.whyMissing(name);
        else
            m_watched += {name, bit};
    }
    if (!missing.isEmpty())
        return fail(error, firstNamed(missing));
    for (const DesignSignal& port : portsOf(m_design)) {
        if (padNames().contains(port.flatName))
            return fail(error,
                QString("the top has a port %1 already; the analyzer's pads have this name")
                    .arg(port.flatName));
    }
    return true;
}

QString Attachment::wrapperName(AttachForm form) const
{
    return form == AttachForm::Hierarchical ? m_design.top + "_with_analyzer" : m_design.top;
}

QByteArray Attachment::wrapper(AttachForm form) const
{
    const bool byPath = form == AttachForm::Hierarchical;
    const SourceScan scan(byPath ? m_request.sources.files : QStringList());
    QStringList ports = portDeclarations(m_design);
    for (const QString& pad : padNames())
        ports += (pad.endsWith("_o") ? "output " : "input ") + pad;
    QString text = "// Written by oxa attach: the design and its analyzer.\nmodule "
        + escaped(wrapperName(form)) + "(\n    " + ports.join(",\n    ") + "\n);\n"
        + designInstance(m_design, byPath ? m_design.top : m_design.top + kSuffix,
            byPath ? parametersText(m_request.sources.parameters) : QString());
    QMap<int, QString> nets; // of watched signals
    for (const Watched& watched : m_watched) {
        const DesignSignal& signal = m_design.items.at(watched.bit.signal);
        const QString net = byPath ? QString(kInstance) + '.' + scan.reference(signal.flatName)
                                   : escaped(kInstance + ('.' + signal.flatName));
        if (!nets.contains(watched.bit.signal) && !byPath) {
            const QString range
                = signal.width > 1 ? QString("[%1:0] ").arg(signal.width - 1) : QString();
            text += "(* hierconn, keep *) wire " + range + net + ";\n";
        }
        nets.insert(watched.bit.signal, net);
    }
    QStringList connections;
    for (const Watched& watched : m_watched) {
        const DesignSignal& signal = m_design.items.at(watched.bit.signal);
        const int index = byPath && signal.ascending
            ? signal.offset + signal.width - 1 - watched.bit.position
            : watched.bit.position + (byPath ? signal.offset : 0);
        const QString bit = signal.isVector() && (byPath || signal.width > 1)
            ? '[' + QString::number(index) + ']'
            : QString();
        connections
            += "    ." + escaped(watched.name) + '(' + nets.value(watched.bit.signal) + bit + ')';
    }
    for (const QString& pad : padNames())
        connections += "    ." + pad + '(' + pad + ')';
    return (text + "qx_oxa u_oxa (\n" + connections.join(",\n") + "\n);\nendmodule\n").toUtf8();
}

// What is read gets the name that the wrapper's module has not.
void Attachment::addDesign(DesignScript& script) const
{
    script.addHierarchy(m_request.sources);
    script.addUnkeeping();
    script.add("setattr", {"-mod", "-unset", "top", "*"});
    script.add("rename", {m_design.top, m_design.top + kSuffix});
}

void Attachment::addWrapper(DesignScript& script, const QString& file) const
{
    for (const QString& primitive : m_request.primitives)
        script.add("read_verilog", {"-lib", DesignScript::fileWord(primitive)});
    QStringList words;
    for (const QString& directory : m_request.includePaths)
        words += "-I" + directory;
    for (const QString& source : m_request.analyzerFiles)
        words += DesignScript::fileWord(source);
    script.add("read_verilog", words + QStringList(DesignScript::fileWord(file)));
    script.add("hierarchy", {"-top", m_design.top});
    script.add("proc");
    script.add("flatten");
}

bool Attachment::write(AttachForm form, QString* error) const
{
    QString reason;
    const QString path = pathTo(ATTACH_WRAPPER_FILE_NAME);
    if (!OXA_FILES::replaceFile(path, wrapper(form), reason))
        return fail(error, reason);
    if (form != AttachForm::Yosys)
        return true;
    DesignScript script(m_hooks);
    addDesign(script);
    addWrapper(script, path);
    QByteArray text = "# Written by oxa attach. Behind reading the design and before synthesis:\n"
                      "#   script "
        + path.toUtf8() + "\n";
    if (!script.plainText(text, error))
        return false;
    return OXA_FILES::replaceFile(pathTo(ATTACH_SCRIPT_FILE_NAME), text, reason)
        || fail(error, reason);
}

bool Attachment::writeVerilog(const QString& output, const QString& simulation, QString* error)
{
    DesignScript script(m_hooks);
    if (!script.isValid(error) || !script.addSources(m_request.sources, error))
        return false;
    addDesign(script);
    script.addStage(40, "attaching the analyzer");
    addWrapper(script, pathTo(ATTACH_WRAPPER_FILE_NAME));
    script.add("memory_collect");
    script.add("setattr", {"-unset", "src", "-unset", "hdlname", "-unset", "keep", "*"});
    script.addStage(80, "writing Verilog");
    script.add("write_verilog", {script.path("out.v")});
    if (!simulation.isEmpty()) {
        script.add("setundef", {"-init", "-zero"});
        script.add("write_verilog", {script.path("sim.v")});
    }
    if (!script.run(error))
        return false;
    m_warnings += script.keptModules();
    const auto deliver = [&](const char* name, const QString& path) {
        QString reason;
        QFile file(script.path(name));
        return (file.open(QIODevice::ReadOnly)
                   && OXA_FILES::replaceFile(path, file.readAll(), reason))
            || fail(error, reason);
    };
    return deliver("out.v", output) && (simulation.isEmpty() || deliver("sim.v", simulation));
}

bool Attachment::prove(const QString& wrapper, Proof& proof, QString* error)
{
    QElapsedTimer timer;
    timer.start();
    proof = Proof();
    DesignScript script(m_hooks);
    if (!script.isValid(error) || !script.addSources(m_request.sources, error))
        return false;
    QString reason;
    if (!OXA_FILES::replaceFile(script.path("plain.v"), plainWrapper(m_design), reason))
        return fail(error, reason);
    const QString given = wrapper.isEmpty() ? pathTo(ATTACH_WRAPPER_FILE_NAME) : wrapper;
    QFile file(given);
    if (!file.open(QIODevice::ReadOnly))
        return fail(
            error, QString("%1: cannot be read: %2").arg(shownText(given), file.errorString()));
    // The proof pairs memories whose ports are the same, and writing Verilog splits them.
    const bool isFlat = !file.readAll().contains((m_design.top + kSuffix).toUtf8());
    const auto finish = [&](const char* name, bool written) {
        script.add("tee", {"-q", "-o", script.path(QString(name) + ".check"), "check"});
        script.add("setattr", {"-unset", "keep", "*"});
        script.add("memory_collect");
        if (written) {
            script.add("setattr", {"-unset", "src", "-unset", "hdlname", "*"});
            script.add("write_verilog", {script.path("again.v")});
            script.add("design", {"-reset"});
            script.add("read_verilog", {DesignScript::fileWord(script.path("again.v"))});
            script.add("hierarchy", {"-top", m_design.top});
            script.add("proc");
            script.add("memory_collect");
        }
        script.add("opt_clean");
        script.add("rename", {m_design.top, name});
        script.add("tee", {"-q", "-o", script.path(QString(name) + ".init"), "dump", "a:init"});
        script.add("design", {"-stash", name});
    };
    addDesign(script);
    script.add("design", {"-save", "alone"});
    script.add("read_verilog", {DesignScript::fileWord(script.path("plain.v"))});
    script.add("hierarchy", {"-top", m_design.top});
    script.add("flatten");
    finish("gold", isFlat);
    script.addStage(40, "attaching the analyzer");
    script.add("design", {"-load", "alone"});
    addWrapper(script, given);
    QStringList pads;
    for (const QString& pad : padNames())
        pads += m_design.top + '/' + pad;
    script.add("delete", QStringList("-port") + pads);
    finish("gate", false);
    script.addStage(60, "proving that the design is the same");
    script.add("design", {"-reset"});
    for (const char* name : {"gold", "gate"})
        script.add("design", {"-copy-from", name, "-as", name, name});
    script.add("equiv_make", {"gold", "gate", "equiv"});
    script.add("hierarchy", {"-top", "equiv"});
    script.add("equiv_struct");
    script.add("equiv_simple", {"-seq", "1"});
    script.add("equiv_induct");
    script.add("tee", {"-q", "-o", script.path("status.txt"), "equiv_status"});
    QString failure;
    const bool ran = script.run(&failure);
    proof.seconds = double(timer.elapsed()) / 1000;
    // This is how Yosys ends when two memories of one name were not found to be the same.
    if (!ran && failure.contains("packed_memids")) {
        proof.open += "the memories: their contents, widths or ports";
        return true;
    }
    if (!ran)
        return fail(error, failure);
    const QStringList gold = initialValues(script.path("gold.init"));
    const QStringList gate = initialValues(script.path("gate.init"));
    proof.open = otherValues(gold, gate)
        + otherDrivers(script.path("gold.check"), script.path("gate.check"));
    QFile status(script.path("status.txt"));
    status.open(QIODevice::ReadOnly);
    const QString text = QString::fromUtf8(status.readAll());
    static const QRegularExpression unproven(R"(Unproven \$equiv \S+: \\?(\S+)( \[\d+\])?)");
    for (auto it = unproven.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        QString name = match.captured(1);
        if (name.endsWith("_gold"))
            name.chop(5);
        proof.open += name + match.captured(2).trimmed();
    }
    proof.proven = proof.open.isEmpty() && text.contains("Equivalence successfully proven!");
    if (!proof.proven && proof.open.isEmpty())
        return fail(error, "Yosys did not say how the proof ended: " + shownText(text));
    return true;
}

}
