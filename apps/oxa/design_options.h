// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_DESIGN_OPTIONS_H
#define APPS_OXA_DESIGN_OPTIONS_H

#include "command.h"
#include "interrupt.h"
#include "progress_line.h"

#include "oxautils/design/design_sources.h"
#include "oxautils/design/read_design.h"
#include "oxautils/design/value_names.h"

/// The options that name a design or a waveform, for all commands that read one.
struct DesignOptions {
    OXA::DesignSources sources; ///< of the call
    QStringList lists; ///< command files
    QString wave;

    /// Whether they name a design or a waveform; else they can change the saved design.
    bool given() const { return !sources.isEmpty() || !lists.isEmpty() || !wave.isEmpty(); }
    bool changes() const
    {
        return !sources.top.isEmpty() || !sources.includeDirs.isEmpty()
            || !sources.defines.isEmpty() || !sources.parameters.isEmpty();
    }
};

/// Adds --design, --top, -f, -I, -D and -P.
void addDesignOptions(Command& command, DesignOptions& options);

/// Adds --wave, which excludes them.
void addWaveOption(Command& command, DesignOptions& options);

/// The sources from the options, or those listed beside `configuration`, which may be empty,
/// changed by the options. False with the reason on `err`.
bool findSources(const DesignOptions& options, const QString& configuration,
    OXA::DesignSources& sources, TextOut& err);

/// Shows the progress of Yosys on a terminal, and stops Yosys at Ctrl-C.
class DesignWork {
public:
    explicit DesignWork(TextOut& err);

    OXA::DesignHooks hooks();
    void clear() { m_progress.clear(); } ///< removes the line of progress
    void sayError(const QString& error); ///< or prints that it was interrupted

private:
    TextOut& m_err;
    ProgressLine m_progress;
    const Interrupt m_interrupt;
};

/// Reads the design of `sources` and prints its warnings. False with the reason on `err`.
bool readDesign(const OXA::DesignSources& sources, OXA::Design& design, TextOut& err);

/// Reads the waveform or the design of the options, or the design listed beside `configuration`;
/// `known` is false when there is none. False with the reason on `err`.
bool readKnownSignals(const DesignOptions& options, const QString& configuration,
    OXA::Design& design, bool& known, TextOut& err);

/// Values by the names of `states`, of those beside `configuration`, or of the enumerations of the
/// design, which is read when neither has a name.
OXA::ValueNames namedValues(const DesignOptions& options, const QString& configuration,
    const OXA::StateNames& states, TextOut& err);

/// Reads the waveform or the design. False with the reason on `err`; `status` then is the exit
/// status.
bool readSignals(const DesignOptions& options, const QString& configuration, OXA::Design& design,
    int& status, TextOut& err);

#endif
