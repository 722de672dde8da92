// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/attach.h"

#include "oxautils/design/attach_wrapper.h"
#include "oxautils/design/design_index.h"
#include "oxautils/design/design_script.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/watched_bits.h"

#include "files/fail.h"
#include "files/replace_file.h"

#include <QFile>
#include <QRegularExpression>

namespace OXA {

namespace {

constexpr int kMostNamed = 20; // names in a message

// Files of a run of Yosys.
constexpr char kOutput[] = "out.v";
constexpr char kSimulation[] = "sim.v";
constexpr char kStatistics[] = "stat.txt";

template <typename Core> QStringList distinctNames(const QList<Core*>& cores)
{
    QStringList names;
    for (const Core* core : cores) {
        const WatchedBits bits = watchedBits(*core);
        names += bits.data + QStringList(bits.clock) + bits.triggers;
    }
    names.removeDuplicates();
    return names;
}

QString firstNamed(const QStringList& names)
{
    const int more = names.size() - kMostNamed;
    const QString rest = more > 0 ? QString("\nand %1 more").arg(more) : QString();
    return names.mid(0, kMostNamed).join('\n') + rest;
}

/// What goes before writing Verilog.
void addWriting(DesignScript& script)
{
    script.add("memory_collect");
    script.add("setattr", {"-unset", "src", "-unset", "hdlname", "-unset", "keep", "*"});
    script.addStage(80, "writing Verilog");
}

bool readFile(const QString& path, QByteArray& bytes, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(
            error, QString("%1: cannot be read: %2").arg(shownText(path), file.errorString()));
    bytes = file.readAll();
    return true;
}

/// Copies `from` to `to`, with the line `head` before it.
bool copyFile(const QByteArray& head, const QString& from, const QString& to, QString* error)
{
    QByteArray bytes;
    return readFile(from, bytes, error) && OXA_FILES::replaceFile(to, head + bytes, error);
}

/// The types of cells in the statistics of a flat design that are modules: "     IBUF     3".
QStringList modulesIn(const QByteArray& statistics)
{
    static const QRegularExpression row(
        R"(^ +([^\s$]\S*) +\d+$)", QRegularExpression::MultilineOption);
    const QByteArray cells = statistics.mid(statistics.indexOf("Number of cells:"));
    QStringList modules;
    for (auto it = row.globalMatch(QString::fromUtf8(cells)); it.hasNext();)
        modules += it.next().captured(1);
    return modules;
}

}

QStringList watchedNames(const Configuration& configuration)
{
    return distinctNames(configuration.cores) + distinctNames(configuration.liteCores);
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
    if (!findBits(error))
        return false;
    const QStringList added = addedPorts(m_request);
    QStringList inputs;
    for (const DesignSignal& port : portsOf(m_design)) {
        if (added.contains(port.flatName))
            return fail(error,
                QString("the top has a port %1 already; a port of the analyzer has this name")
                    .arg(port.flatName));
        if (port.direction == DesignSignal::Input && port.width == 1)
            inputs += port.flatName;
    }
    const QString clock = m_request.sharesClock ? m_request.pads.value(1) : QString();
    return clock.isEmpty() || inputs.contains(clock)
        || fail(error,
            QString("%1: the top has no such input of one bit; these may be clocks: %2")
                .arg(shownText(clock), firstNamed(inputs)));
}

bool Attachment::findBits(QString* error)
{
    const DesignIndex index(m_design);
    QStringList missing;
    m_watched.clear();
    for (const QString& name : m_request.names) {
        const DesignBit bit = index.bit(name);
        const int signal = bit.signal < 0 ? index.signal(name) : bit.signal;
        if (signal >= 0 && m_design.items.at(signal).isMemory())
            missing += shownText(name) + ": is a memory; the signals at its ports can be watched";
        else if (bit.signal < 0)
            missing += shownText(name) + ": " + index.whyMissing(name);
        else
            m_watched += {name, bit};
    }
    return missing.isEmpty() || fail(error, firstNamed(missing));
}

QString Attachment::wrapperName(AttachForm form) const
{
    return form == AttachForm::Hierarchical ? m_design.top + "_with_analyzer" : m_design.top;
}

// The design that is read is renamed, because the wrapper's module may have its name.
void Attachment::addDesign(DesignScript& script) const
{
    script.addHierarchy(m_request.sources);
    script.addUnkeeping();
    script.add("setattr", {"-mod", "-unset", "top", "*"});
    script.add("rename", {m_design.top, renamedTop(m_design)});
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
    // A wire that has found its net has lost this attribute.
    script.add("select", {"-assert-none", "a:hierconn"});
}

bool Attachment::write(AttachForm form, QString* error)
{
    static const QRegularExpression others(
        "\\.(vhdl?|json)$", QRegularExpression::CaseInsensitiveOption);
    const QStringList unreachable = m_request.sources.files.filter(others);
    if (form == AttachForm::Hierarchical && !unreachable.isEmpty())
        return fail(error,
            shownText(unreachable.first())
                + ": Verilog cannot refer by path to what is in it; the other two forms can");
    for (const QString& name : form == AttachForm::Hierarchical ? QStringList() : m_design.kept)
        m_warnings += QString("%1 has keep_hierarchy, but is flattened, so that "
                              "its signals can be watched")
                          .arg(shownText(name));
    for (int i = 0; form == AttachForm::Hierarchical && i < m_watched.size(); ++i) {
        const QString& name = m_watched.at(i).name;
        if (!name.contains("/genblk"))
            continue;
        m_warnings += shownText(name)
            + " is in a generate block without a name, which a simulator may number in another way "
              "than Yosys: give the block a name";
        break;
    }
    const QString path = pathTo(ATTACH_WRAPPER_FILE_NAME);
    const QByteArray wrapper = wrapperText(
        m_design, wrapperName(form), m_watched, m_request, form == AttachForm::Hierarchical);
    return OXA_FILES::replaceFile(path, wrapper, error)
        && (form != AttachForm::Yosys || writeScript(error));
}

bool Attachment::writeScript(QString* error) const
{
    const QString path = pathTo(ATTACH_SCRIPT_FILE_NAME);
    DesignScript script(m_hooks);
    addDesign(script);
    addWrapper(script, pathTo(ATTACH_WRAPPER_FILE_NAME));
    QByteArray text
        = "# Written by oxa attach. Run it after reading the design and before synthesis:\n"
          "#   script "
        + shownText(path).toUtf8() + "\n";
    return script.plainText(text, error) && OXA_FILES::replaceFile(path, text, error);
}

QByteArray Attachment::besideDesign(const QString& instance, bool isFlat) const
{
    return besideText(m_design, instance, m_watched, m_request.sources, isFlat);
}

bool Attachment::writeDesign(const QString& path, QString* error)
{
    DesignScript script(m_hooks);
    if (!script.isValid(error) || !script.addReading(m_request.sources, error))
        return false;
    script.addUnkeeping();
    script.add("flatten");
    addWriting(script);
    script.add("setundef", {"-init", "-zero"});
    script.add("write_verilog", {script.path(kSimulation)});
    return script.run(error) && copyFile({}, script.path(kSimulation), path, error);
}

bool Attachment::writeVerilog(const QString& output, const QString& simulation, QString* error)
{
    DesignScript script(m_hooks);
    if (!script.isValid(error) || !script.addSources(m_request.sources, error)
        || !DesignScript::isReadable(m_request.workDir, error))
        return false;
    addDesign(script);
    script.addStage(40, "attaching the analyzer");
    addWrapper(script, pathTo(ATTACH_WRAPPER_FILE_NAME));
    addWriting(script);
    script.add("tee", {"-q", "-o", script.path(kStatistics), "stat"});
    script.add("write_verilog", {script.path(kOutput)});
    if (!simulation.isEmpty()) {
        script.add("setundef", {"-init", "-zero"});
        script.add("write_verilog", {script.path(kSimulation)});
    }
    QByteArray statistics;
    if (!script.run(error) || !readFile(script.path(kStatistics), statistics, error))
        return false;
    m_missingModules = modulesIn(statistics);
    QByteArray head = "// Written by oxa attach: the design and its analyzer.\n";
    if (!m_missingModules.isEmpty())
        head += "// The content of these modules is not in this file: "
            + shownText(m_missingModules.join(", ")).toUtf8() + '\n';
    return copyFile(head, script.path(kOutput), output, error)
        && (simulation.isEmpty() || copyFile(head, script.path(kSimulation), simulation, error));
}

}
