// SPDX-License-Identifier: Apache-2.0
#include "events_group.h"

#include "oxautils/model/limits.h"
#include "oxautils/model/shown_text.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>

using OXA::AoCore;
using OXA::CoreEvents;

namespace {

constexpr int kMostBoxes = 2 * OXA::kMostCores;
constexpr int kLongestClock = 24; // characters

/// An index that can force a core.
struct Forcing {
    int index;
    QString text;
};

/// A core by its place and its clock.
QString coreText(int place, const QString& clock)
{
    if (clock.isEmpty())
        return EventsGroup::tr("Core %1").arg(place);
    const QString text = OXA::shownText(clock);
    const QString shown = text.size() > kLongestClock ? "…" + text.right(kLongestClock - 1) : text;
    return EventsGroup::tr("Core %1, %2").arg(QString::number(place), shown);
}

/// The other cores, and indexes of the configuration that are none.
QList<Forcing> forcingOf(const Cores& cores, const AoCore& core)
{
    QList<Forcing> all;
    QList<int> left = core.events.forcedBy;
    for (int place = 0; place < cores.size(); ++place) {
        const AoCore* other = cores.at(place)->standard.get();
        if (!other || other == &core)
            continue;
        left.removeAll(other->index);
        all += {other->index, coreText(place, other->sampleClock)};
    }
    for (const int index : qAsConst(left))
        all += {index, EventsGroup::tr("Index %1, no other core").arg(index)};
    return all.mid(0, kMostBoxes);
}

void setForcedBy(CoreEvents& events, int index, bool forced)
{
    events.forcedBy.removeAll(index);
    if (!forced)
        return;
    events.forcedBy += index;
    std::sort(events.forcedBy.begin(), events.forcedBy.end());
}

}

EventsGroup::EventsGroup(Document& document, QWidget* parent)
    : QGroupBox(tr("Events"), parent)
    , m_document(document)
    , m_grid(new QGridLayout(this))
    , m_alone(new QLabel(tr("there is no other core")))
{
    m_grid->addWidget(new QLabel(tr("Forced by:")), 0, 0);
    m_grid->addWidget(m_alone, 0, 1);
    addForcing();
    m_grid->setColumnStretch(1, 1);
    m_triggerOut
        = addSwitch(tr("Trigger output"), tr("change the trigger output"), &CoreEvents::triggerOut);
    m_stamps = addSwitch(tr("Stamps"), tr("change the stamps"), &CoreEvents::stamps);
    m_triggerOut->setToolTip(tr("It is high for one sample at each trigger of the core"));
    m_stamps->setText(tr("Stamps of triggers"));
    m_stamps->setToolTip(tr("The number of each trigger sample in its run"));
}

void EventsGroup::addForcing()
{
    for (int i = 0; i < kMostBoxes; ++i) {
        auto* box = new QCheckBox;
        connect(box, &QCheckBox::clicked, this, [this, i](bool checked) {
            const int index = m_indexes.value(i);
            change([=](CoreEvents& events) { setForcedBy(events, index, checked); },
                tr("change which cores force this one"));
        });
        box->setToolTip(tr("Its triggers force this core"));
        m_grid->addWidget(box, i, 1);
        m_boxes += box;
    }
}

QCheckBox* EventsGroup::addSwitch(const QString& name, const QString& step, bool CoreEvents::*field)
{
    auto* box = new QCheckBox;
    box->setAccessibleName(name);
    m_grid->addWidget(box, m_grid->rowCount(), 0, 1, 2);
    connect(box, &QCheckBox::clicked, this,
        [=](bool checked) { change([=](CoreEvents& events) { events.*field = checked; }, step); });
    return box;
}

void EventsGroup::change(const Change& change, const QString& step)
{
    if (!m_core || !m_core->standard)
        return;
    CoreEvents& events = m_core->standard->events;
    CoreEvents changed = events;
    change(changed);
    m_document.set(Location {m_core, Page::Capture}, events, changed, step);
}

void EventsGroup::show(const CorePtr& core)
{
    m_core = core;
    if (!core || !core->standard)
        return;
    const CoreEvents& events = core->standard->events;
    showForcing(*core->standard);
    const int place = m_document.cores().indexOf(core);
    m_triggerOut->setText(tr("Trigger output, %1").arg(OXA::triggerOutput(place)));
    m_triggerOut->setChecked(events.triggerOut);
    m_stamps->setChecked(events.stamps);
}

void EventsGroup::showForcing(const AoCore& core)
{
    const QList<Forcing> all = forcingOf(m_document.cores(), core);
    for (int i = 0; i < m_boxes.size(); ++i) {
        QCheckBox& box = *m_boxes.at(i);
        const Forcing forcing = all.value(i);
        box.setVisible(i < all.size());
        box.setText(QString(forcing.text).replace('&', "&&"));
        box.setAccessibleName(tr("Forced by %1").arg(forcing.text));
        box.setChecked(core.events.forcedBy.contains(forcing.index));
    }
    m_indexes.clear();
    for (const Forcing& forcing : all)
        m_indexes += forcing.index;
    m_alone->setVisible(all.isEmpty());
}
