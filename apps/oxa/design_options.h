#ifndef APPS_OXA_DESIGN_OPTIONS_H
#define APPS_OXA_DESIGN_OPTIONS_H

#include "command.h"
#include "interrupt.h"
#include "progress_line.h"

#include "oxautils/design/design_sources.h"
#include "oxautils/design/read_design.h"
#include "oxautils/design/value_names.h"

/// What names a design or a waveform, the same for every command that looks at one.
struct DesignOptions {
    OXA::DesignSources sources; ///< of the call
    QStringList lists; ///< command files
    QString wave;

    bool given() const { return !sources.isEmpty() || !lists.isEmpty() || !wave.isEmpty(); }
};

/// Adds --design, --top, -f, -I, -D and -P.
void addDesignOptions(CLI::App& command, DesignOptions& options);

/// Adds --wave, which goes with none of them.
void addWaveOption(CLI::App& command, DesignOptions& options);

/// The sources that the call names, or those remembered beside `configuration`, which may be empty.
/// False when a list cannot be read, with the reason on `err`.
bool findSources(const DesignOptions& options, const QString& configuration,
    OXA::DesignSources& sources, TextOut& err);

/// While Yosys works on a design: how far it is, on a terminal, and Ctrl-C, which ends it.
class DesignWork {
public:
    explicit DesignWork(TextOut& err);

    OXA::DesignHooks hooks();
    void clear() { m_progress.clear(); } ///< takes the line of progress away
    void sayError(const QString& error); ///< or that it was interrupted

private:
    TextOut& m_err;
    ProgressLine m_progress;
    const Interrupt m_interrupt;
};

/// Reads the design of `sources`, saying its warnings. False with the reason on `err`.
bool readDesign(const OXA::DesignSources& sources, OXA::Design& design, TextOut& err);

/// Reads the waveform, or the design that the call names or `configuration` remembers, if there is
/// one: `known` tells that. False with the reason on `err`.
bool readKnownSignals(const DesignOptions& options, const QString& configuration,
    OXA::Design& design, bool& known, TextOut& err);

/// Values of enumerated signals by name. The design is read when the first name is asked for.
OXA::ValueNames namedValues(
    const DesignOptions& options, const QString& configuration, TextOut& err);

/// Reads the waveform, or the design that the call or `configuration` names. False with the reason
/// on `err`; `status` then tells whether the call or the design is at fault.
bool readSignals(const DesignOptions& options, const QString& configuration, OXA::Design& design,
    int& status, TextOut& err);

#endif
