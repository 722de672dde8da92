#ifndef OXAUTILS_DESIGN_DESIGN_SOURCES_H
#define OXAUTILS_DESIGN_DESIGN_SOURCES_H

#include "oxautils/oxautils_export.h"

#include <QString>
#include <QStringList>

namespace OXA {

/// What a design is read from.
struct OXAUTILS_EXPORT DesignSources {
    /// In their order: Verilog, SystemVerilog (.sv: then all Verilog is read as such), VHDL (.vhd,
    /// .vhdl, through GHDL), and netlists that Yosys wrote as JSON.
    QStringList files;
    QStringList includeDirs; ///< of `include
    QStringList defines; ///< "NAME" or "NAME=VALUE"
    QStringList parameters; ///< of the top module: "NAME=VALUE"
    QString top; ///< the top module; empty when the design has one module that no other uses

    bool isEmpty() const { return files.isEmpty(); }
};

/// Adds what the command file `path` names, as Icarus and Verilator take it: files, +incdir+DIR,
/// +define+NAME=VALUE, -I, -D, -f, -F, -v; beside these --top NAME and -P NAME=VALUE. A path stands
/// from the directory `from`; those of a file that -F names, from that file. `//` and `#` begin
/// comments, quotes hold spaces. False when it cannot be read or has another option: `error` then
/// is a line to show, with the place.
OXAUTILS_EXPORT bool readDesignList(
    const QString& path, const QString& from, DesignSources& sources, QString* error);

/// Where the sources of a configuration's design are remembered: "FILE.design".
OXAUTILS_EXPORT QString designListOf(const QString& configuration);

/// Reads that list, whose paths stand from its own directory. True without any source when there is
/// no such file.
OXAUTILS_EXPORT bool readRememberedDesign(
    const QString& configuration, DesignSources& sources, QString* error);

/// Writes that list, unless it has the same content. The file is replaced in one step.
OXAUTILS_EXPORT bool rememberDesign(
    const QString& configuration, const DesignSources& sources, QString* error);

}

#endif
