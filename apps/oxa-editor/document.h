#ifndef APPS_OXA_EDITOR_DOCUMENT_H
#define APPS_OXA_EDITOR_DOCUMENT_H

#include "commands.h"
#include "document_file.h"

#include <QObject>
#include <QUndoStack>

class DesignTree;

/// The configuration that the window edits: its cores, its file and the steps that led here.
///
/// Every change goes through `set` or `setCores` and can be undone; views look at the cores and
/// refresh themselves when `changed` says so.
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

    /// Gives `value`, which belongs to the core of `location`, a new content, as the step `text`.
    /// Nothing happens when it has that content already.
    template <typename T>
    void set(const Location& location, T& value, const T& content, const QString& text)
    {
        pushSwap(location, value, content, text, 0);
    }

    /// The same for content that comes in many small edits: those of one value that follow each
    /// other are one step, as long as `endRun` is not called.
    template <typename T>
    void type(const Location& location, T& value, const T& content, const QString& text)
    {
        pushSwap(location, value, content, text, m_run);
    }

    /// Replaces the list of cores, as the step `text`.
    void setCores(const Cores& cores, const QString& text);

    /// What is typed next begins a new step.
    void endRun() { ++m_run; }

    /// Puts a new configuration of `mode`, with one core, in the place of this one.
    void create(OXA::OxaMode mode);

    /// Puts the file `path` in the place of this configuration. On failure nothing changes and
    /// `error` says why; `warnings` is what the user should know about the file.
    bool load(const QString& path, QStringList& warnings, QString* error);

    /// Writes the file `path`, which becomes the document's own. On failure `error` says why.
    bool save(const QString& path, QString* error);

    /// Whether the document's file no longer is what was read or written last.
    bool isFileChanged() const;

    /// From now on the configuration differs from its file, whatever is undone.
    void forgetFile();

    /// Takes the file for what was read or written last.
    void acceptFile();

    /// The design that the cores watch, as it was read last; null before.
    const std::shared_ptr<const DesignTree>& design() const { return m_design; }
    void setDesign(const std::shared_ptr<const DesignTree>& design);

    /// The configuration as bytes of a file; empty, with the reason in `error`, on failure.
    QByteArray bytes(QString* error) const;

Q_SIGNALS:
    void changed(const Location& location); ///< after an edit, its undo and its redo
    void replaced(); ///< by another configuration
    void pathChanged();
    void designChanged();

private:
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
