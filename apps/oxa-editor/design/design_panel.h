// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_DESIGN_DESIGN_PANEL_H
#define APPS_OXA_EDITOR_DESIGN_DESIGN_PANEL_H

#include "design_job.h"

#include "oxa-editor/document.h"

#include <QSet>
#include <QWidget>

class DesignModel;
class DesignSourcesForm;
class QAction;
class QHBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeView;

/// Reads the signals of the user's design, and offers them for the current core.
class DesignPanel : public QWidget {
    Q_OBJECT

public:
    explicit DesignPanel(Document& document, QWidget* parent = nullptr);

    /// The core that signals are chosen for; may be null.
    void setCore(const CorePtr& core);

    /// Call it when the panel is opened: reads the design listed in FILE.design, unless one is read
    /// already.
    void begin();

    /// Lets the user add sources, and reads the design when there are any.
    void addSources();

    DesignSourcesForm* sources() const { return m_sources; }

Q_SIGNALS:
    void dataWanted(const QList<OXA::SignalItem>& items); ///< as data signals of the core
    void portWanted(const QList<OXA::SignalItem>& items); ///< in its current trigger port
    void clockWanted(const QString& name); ///< as its sample clock

private:
    QLayout* layOutReading();
    QLayout* layOutSignals();
    void setUpView();
    QAction* addAction(
        QHBoxLayout* buttons, const QString& text, const QKeySequence& keys, const QString& hint);
    void makeActions(QHBoxLayout* buttons);

    void read();
    void readWaveform();
    void take(const DesignJob::Tree& tree, const QString& error);
    void drop();
    void showDesign();
    void showMessages(const QStringList& lines);
    void showCount();
    void showRunning();
    void filter();
    void expand();
    void updateActions();
    void enter();
    QList<OXA::SignalItem> chosen() const;

    Document& m_document;
    CorePtr m_core;
    DesignJob* m_job;
    bool m_wanted = false; // the design being read
    DesignModel* m_model;
    QSet<int> m_expanded; // nodes, without a filter

    DesignSourcesForm* m_sources;
    QPushButton* m_read;
    QPushButton* m_readWaveform;
    QPushButton* m_cancel;
    QLabel* m_state;
    QListWidget* m_messages;
    QLineEdit* m_filter;
    QTreeView* m_view;
    QLabel* m_count;
    QAction* m_toData = nullptr;
    QAction* m_toPort = nullptr;
    QAction* m_asClock = nullptr;
};

#endif
