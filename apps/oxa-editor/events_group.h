// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_EDITOR_EVENTS_GROUP_H
#define APPS_OXA_EDITOR_EVENTS_GROUP_H

#include "document.h"

#include <QGroupBox>

class QCheckBox;
class QGridLayout;
class QLabel;

/// Which cores force a Standard core, and what it tells of its triggers.
class EventsGroup : public QGroupBox {
    Q_OBJECT

public:
    explicit EventsGroup(Document& document, QWidget* parent = nullptr);

    /// Shows the events of `core`; nothing for one without.
    void show(const CorePtr& core);

private:
    using Change = std::function<void(OXA::CoreEvents& events)>;

    void addForcing();
    QCheckBox* addSwitch(const QString& name, const QString& step, bool OXA::CoreEvents::*field);
    void change(const Change& change, const QString& step);
    void showForcing(const OXA::AoCore& core);

    Document& m_document;
    QGridLayout* m_grid; // unlike a form it has no space for invisible rows
    QList<QCheckBox*> m_boxes; // in front those of the indexes, then invisible ones
    QList<int> m_indexes;
    QLabel* m_alone; // in the place of the first one
    QCheckBox* m_triggerOut;
    QCheckBox* m_stamps;
    CorePtr m_core;
};

#endif
