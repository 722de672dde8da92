// SPDX-License-Identifier: Apache-2.0
#include "design_options.h"

#include "options.h"
#include "state_options.h"

#include "oxacapture/waveform/waveform_design.h"

#include <QDir>

#include <optional>

void addDesignOptions(Command& command, DesignOptions& options)
{
    command
        .texts("--design", options.sources.files,
            "Sources of the design: Verilog, SystemVerilog, VHDL, JSON of Yosys")
        .typeName("FILE")
        .atLeast(1);
    command.text("--top", options.sources.top, "Top module of the design").typeName("NAME");
    command.texts("-f", options.lists, "Command file of Icarus or Verilator with the sources")
        .typeName("LIST");
    command.texts("-I", options.sources.includeDirs, "Directory of `include files").typeName("DIR");
    command.texts("-D", options.sources.defines, "Macro of the design").typeName("NAME[=VALUE]");
    command.texts("-P", options.sources.parameters, "Parameter of the top module")
        .typeName("NAME=VALUE");
}

void addWaveOption(Command& command, DesignOptions& options)
{
    const Option wave = command
                            .text("--wave", options.wave,
                                "A waveform of the design (VCD, FST), instead of its sources")
                            .typeName("WAVE");
    for (const char* other : {"--design", "--top", "-f", "-I", "-D", "-P"})
        wave.excludes(other);
}

// Adds "NAME=VALUE" texts, each in place of what the name had.
static void addValues(QStringList& values, const QStringList& more)
{
    for (const QString& text : more) {
        const auto isOld = [name = text.section('=', 0, 0)](
                               const QString& old) { return old.section('=', 0, 0) == name; };
        values.erase(std::remove_if(values.begin(), values.end(), isOld), values.end());
        values += text;
    }
}

bool findSources(const DesignOptions& options, const QString& configuration,
    OXA::DesignSources& sources, TextOut& err)
{
    sources = OXA::DesignSources();
    QString error;
    if (!options.given() && !configuration.isEmpty()
        && !OXA::readRememberedDesign(configuration, sources, &error)) {
        err.error(error, OXA::designListOf(configuration));
        return false;
    }
    for (const QString& list : options.lists) {
        if (!OXA::readDesignList(list, QDir::currentPath(), sources, &error)) {
            err.error(error, list);
            return false;
        }
    }
    sources.files += options.sources.files;
    sources.includeDirs += options.sources.includeDirs;
    addValues(sources.defines, options.sources.defines);
    addValues(sources.parameters, options.sources.parameters);
    if (!options.sources.top.isEmpty())
        sources.top = options.sources.top;
    if (!sources.isEmpty() || !options.changes())
        return true;
    err.error("--top, -I, -D and -P need a design: from --design or -f, or saved"
              " beside the configuration");
    return false;
}

DesignWork::DesignWork(TextOut& err)
    : m_err(err)
    , m_progress(err)
    , m_interrupt([] {})
{
}

OXA::DesignHooks DesignWork::hooks()
{
    OXA::DesignHooks hooks;
    hooks.stopAsked = [this] { return m_interrupt.happened(); };
    hooks.progress = [this](const QString& stage, int percent) { m_progress.show(stage, percent); };
    return hooks;
}

void DesignWork::sayError(const QString& error)
{
    m_err.error(m_interrupt.happened() ? "interrupted" : error);
}

bool readDesign(const OXA::DesignSources& sources, OXA::Design& design, TextOut& err)
{
    DesignWork work(err);
    QString error;
    const bool ok = OXA::readDesign(sources, design, &error, work.hooks());
    work.clear();
    if (!ok)
        work.sayError(error);
    for (const QString& warning : design.warnings)
        err.warning(warning);
    return ok;
}

bool readKnownSignals(const DesignOptions& options, const QString& configuration,
    OXA::Design& design, bool& known, TextOut& err)
{
    QString error;
    known = !options.wave.isEmpty();
    if (known) {
        const bool ok = OXA_CAPTURE::readWaveformSignals(options.wave, design, &error);
        if (!ok)
            err.error(error, options.wave);
        return ok;
    }
    OXA::DesignSources sources;
    if (!findSources(options, configuration, sources, err))
        return false;
    known = !sources.isEmpty();
    if (!known || readDesign(sources, design, err))
        return true;
    if (!options.given())
        err << "    the sources are listed in " << OXA::designListOf(configuration) << "\n";
    return false;
}

bool readSignals(const DesignOptions& options, const QString& configuration, OXA::Design& design,
    int& status, TextOut& err)
{
    bool known = false;
    status = kUnusable;
    if (!readKnownSignals(options, configuration, design, known, err))
        return false;
    if (!known)
        err.error("no design; name its sources by --design or -f, or a waveform by --wave");
    return known;
}

OXA::ValueNames namedValues(const DesignOptions& options, const QString& configuration,
    const OXA::StateNames& states, TextOut& err)
{
    struct Names {
        std::optional<OXA::StateNames> states;
        OXA::Design design;
        std::optional<OXA::DesignIndex> index;
        OXA::ValueNames values;
    };
    const auto names = std::make_shared<Names>();
    return [names, &options, configuration, states, &err](
               const OXA::TriggerPort& port, const QString& name, QStringList& knownNames) {
        if (name.at(0).isDigit())
            return QString(); // a number
        if (!names->states) {
            names->states = knownStates(configuration, err);
            for (auto signal = states.begin(); signal != states.end(); ++signal)
                names->states->insert(signal.key(), *signal);
        }
        QString known = OXA::valueNames(*names->states)(port, name, knownNames);
        if (!known.isEmpty())
            return known;
        if (!names->index) {
            bool hasDesign = false;
            readKnownSignals(options, configuration, names->design, hasDesign, err);
            names->index.emplace(names->design);
            names->values = OXA::valueNames(*names->index);
        }
        return names->values(port, name, knownNames);
    };
}
