// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_SOURCES_FORM_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_SOURCES_FORM_H

#include "oxa-editor/document.h"

#include "oxautils/design/design_sources.h"

#include <QDir>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;

/// The sources of the document's design. They are saved beside the document's file as soon as it
/// exists (docs/designs.md).
class DesignSourcesForm : public QWidget {
    Q_OBJECT

public:
    explicit DesignSourcesForm(Document& document, QWidget* parent = nullptr);

    const OXA::DesignSources& sources() const { return m_sources; }

    /// Adds files that the user chooses.
    void browse();

    /// Adds `files`; for a file that ends in ".f", the sources that it lists.
    void add(const QStringList& files);

Q_SIGNALS:
    void changed();
    void failed(const QString& error); ///< a list could not be read or written

private:
    void layOut();
    void remove();
    void takeTop();
    void load();
    void follow();
    void change(const OXA::DesignSources& sources);
    void remember();
    void show();
    QDir directory() const;

    Document& m_document;
    OXA::DesignSources m_sources;
    QString m_rememberedFor; // the document's path
    bool m_unreadable = false; // the saved list; it is not replaced then
    QListWidget* m_files;
    QLabel* m_options;
    QLineEdit* m_top;
};

#endif
