// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DOCUMENT_H
#define APPS_OXA_EDITOR_DOCUMENT_H

#include "commands.h"
#include "document_file.h"

#include <QObject>
#include <QUndoStack>

class DesignTree;

/// The configuration that the window edits: its cores, its file and the undo steps.
///
/// Every change is made by `set` or `setCores` and can be undone; views read the cores and update
/// themselves at `changed`.
class Document : public QObject {
    Q_OBJECT

public:
    explicit Document(QObject* parent = nullptr);
    ~Document() override;

    OXA::OxaMode mode() const { return m_mode; }
    const Cores& cores() const { return m_cores; }
    QUndoStack& undoStack() { return m_undoStack; }
    QString path() const { return m_path; } ///< empty before the first save
    bool isModified() const { return !m_undoStack.isClean(); }

    /// Sets `value`, which belongs to the core of `location`, as the step `text`. Does nothing when
    /// the content is the same.
    template <typename T>
    void set(const Location& location, T& value, const T& content, const QString& text)
    {
        pushSwap(location, value, content, text, 0);
    }

    /// The same for content that comes in many small edits: consecutive edits of one value are one
    /// step until `endRun`.
    template <typename T>
    void type(const Location& location, T& value, const T& content, const QString& text)
    {
        pushSwap(location, value, content, text, m_run);
    }

    /// Sets the data signals of the core of `location` to `items`, as the step `text`. A signal
    /// whose changes are stored stays one when it gets another name.
    void setSignals(
        const Location& location, const QList<OXA::SignalItem>& items, const QString& text);

    /// Replaces the list of cores, as the step `text`.
    void setCores(const Cores& cores, const QString& text);

    /// The next edit begins a new step.
    void endRun() { ++m_run; }

    /// Replaces this configuration by a new one of `mode`, with one core.
    void create(OXA::OxaMode mode);

    /// Replaces this configuration by the file `path`. On failure nothing changes and `error` has
    /// the reason; `warnings` are about the file.
    bool load(const QString& path, QStringList& warnings, QString* error);

    /// Writes the file `path`, now the document's file, and beside it the names of values that the
    /// design tells. False when the file is not written; `error` has the reason, or why the names
    /// are not kept.
    bool save(const QString& path, QString* error);

    /// Whether the document's file differs from what was read or written last.
    bool isFileChanged() const;

    /// From now on the configuration counts as changed, even after undo.
    void forgetFile();

    /// Takes the file's content as what was read or written last.
    void acceptFile();

    /// The design that was read last; may be null.
    const std::shared_ptr<const DesignTree>& design() const { return m_design; }
    void setDesign(const std::shared_ptr<const DesignTree>& design);

    /// The content of the configuration's file; empty, with the reason in `error`, on failure.
    QByteArray bytes(QString* error) const;

Q_SIGNALS:
    void changed(const Location& location); ///< after an edit, its undo and its redo
    void replaced(); ///< by another configuration
    void pathChanged();
    void designChanged();

private:
    void keepValueNames(QString* error) const;
    template <typename T>
    void pushSwap(
        const Location& location, T& value, const T& content, const QString& text, int run)
    {
        if (same(value, content))
            return;
        auto* command = new SwapCommand<T>(location, value, content, run, notifier());
        command->setText(text);
        m_undoStack.push(command);
    }

    Notify notifier();
    void replace(OXA::OxaMode mode, const Cores& cores, const QString& path);

    OXA::OxaMode m_mode = OXA::Standard;
    Cores m_cores;
    QUndoStack m_undoStack; // after the cores: its steps refer to them
    QString m_path;
    QByteArray m_fileBytes;
    std::shared_ptr<const DesignTree> m_design;
    int m_run = 1;
};

#endif
