// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_DESIGN_DESIGN_SCRIPT_H
#define OXAUTILS_DESIGN_DESIGN_SCRIPT_H

#include "oxautils/design/design_sources.h"
#include "oxautils/design/read_design.h"

#include <QTemporaryDir>

namespace OXA {

/// A run of Yosys on a design, with a temporary directory that is removed with the object.
class DesignScript {
public:
    explicit DesignScript(const DesignHooks& hooks);

    /// Whether the directory could be made; else `error` has the reason.
    bool isValid(QString* error) const;

    /// The path of the run's file `name`.
    QString path(const QString& name) const { return m_directory.filePath(name); }

    /// Adds commands that read `sources`, elaborate the top and turn processes into cells. VHDL is
    /// translated now, into a file of the run. False with the reason in `error`.
    bool addReading(const DesignSources& sources, QString* error)
    {
        if (!addSources(sources, error))
            return false;
        addHierarchy(sources);
        return true;
    }
    bool addSources(const DesignSources& sources, QString* error); ///< only reads them
    void addHierarchy(const DesignSources& sources); ///< elaborates the design

    /// Adds commands that allow flattening all modules.
    void addUnkeeping();

    /// "COMMAND WORD...", each word quoted.
    void add(const char* command, const QStringList& words = {});
    void addStage(int percent, const char* text);

    /// Runs the commands; false with lines to show in `error`.
    bool run(QString* error);

    /// The engine's warnings of the last run, lines to show.
    const QStringList& warnings() const { return m_warnings; }

    /// Adds the commands to `text` as a Yosys script without Tcl. False, with the reason in
    /// `error`, for words that cannot be in such a script.
    bool plainText(QByteArray& text, QString* error) const;

    /// Whether Yosys can read files at or below `path`; else `error` has the reason.
    static bool isReadable(const QString& path, QString* error);

    /// `path` as a word for one file.
    static QString fileWord(const QString& path);

private:
    bool translate(const QStringList& vhdl, const QString& top, QString* error);

    const DesignHooks m_hooks;
    QTemporaryDir m_directory;
    QVector<QStringList> m_commands; // each with its words
    QStringList m_warnings;
};

}

#endif
