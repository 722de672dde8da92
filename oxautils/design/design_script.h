#ifndef OXAUTILS_DESIGN_DESIGN_SCRIPT_H
#define OXAUTILS_DESIGN_DESIGN_SCRIPT_H

#include "oxautils/design/design_sources.h"
#include "oxautils/design/read_design.h"

#include <QTemporaryDir>

namespace OXA {

/// A run of Yosys on a design, with a directory for its files that goes away with the object.
class DesignScript {
public:
    explicit DesignScript(const DesignHooks& hooks);

    /// Whether the directory could be made; `error` says why not.
    bool isValid(QString* error) const;

    /// The path of the run's file `name`.
    QString path(const QString& name) const { return m_directory.filePath(name); }

    /// Commands that read `sources`, elaborate the top and turn its processes into cells. VHDL is
    /// translated at once, into a file of the run. False with the reason in `error`.
    bool addReading(const DesignSources& sources, QString* error)
    {
        if (!addSources(sources, error))
            return false;
        addHierarchy(sources);
        return true;
    }
    bool addSources(const DesignSources& sources, QString* error); ///< only reads them
    void addHierarchy(const DesignSources& sources); ///< elaborates what was read

    /// Commands after which flattening spares no module.
    void addUnkeeping();

    /// "COMMAND WORD...", each word standing for itself.
    void add(const char* command, const QStringList& words = {});
    void addStage(int percent, const char* text);

    /// Runs the commands; false with lines to show in `error`.
    bool run(QString* error);

    /// The engine's warnings of the last run, lines to show.
    const QStringList& warnings() const { return m_warnings; }

    /// Adds the commands to `text` as a script that is not Tcl. False for words that such a script
    /// cannot hold, with the reason in `error`.
    bool plainText(QByteArray& text, QString* error) const;

    /// Lines to show: what asked to be kept apart.
    QStringList keptModules() const;

    /// `path` as a word that names one file.
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
