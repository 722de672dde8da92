// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_DESIGN_SOURCES_H
#define OXAUTILS_DESIGN_DESIGN_SOURCES_H

#include "oxautils/oxautils_export.h"

#include <QString>
#include <QStringList>

namespace OXA {

/// The sources of a design.
struct OXAUTILS_EXPORT DesignSources {
    /// In order: Verilog, SystemVerilog (.sv: then all Verilog is read as SystemVerilog), VHDL
    /// (.vhd, .vhdl, through GHDL), and JSON netlists written by Yosys.
    QStringList files;
    QStringList includeDirs; ///< of `include
    QStringList defines; ///< "NAME" or "NAME=VALUE"
    QStringList parameters; ///< of the top module: "NAME=VALUE"
    QString top; ///< the top module; empty: the only module without instances

    bool isEmpty() const { return files.isEmpty(); } ///< no file
};

/// Adds the sources listed in the command file `path`, in the form of Icarus and Verilator: files,
/// +incdir+DIR, +define+NAME=VALUE, -I, -D, -f, -F, -v; also --top NAME and -P NAME=VALUE. Paths
/// are relative to the directory `from`; in a file given by -F, to that file. `//` and `#` begin
/// comments, quotes enclose spaces. False when it cannot be read or has another option: `error`
/// then is a line to show, with the place.
OXAUTILS_EXPORT bool readDesignList(
    const QString& path, const QString& from, DesignSources& sources, QString* error);

/// The file that lists the sources of a configuration's design: "FILE.design".
OXAUTILS_EXPORT QString designListOf(const QString& configuration);

/// Reads that list, whose paths are relative to its own directory. True, without sources, when the
/// file does not exist.
OXAUTILS_EXPORT bool readRememberedDesign(
    const QString& configuration, DesignSources& sources, QString* error);

/// Writes that list, unless its content is the same. The file is replaced in one step.
OXAUTILS_EXPORT bool rememberDesign(
    const QString& configuration, const DesignSources& sources, QString* error);

}

#endif
