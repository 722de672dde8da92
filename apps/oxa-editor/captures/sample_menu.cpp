// SPDX-License-Identifier: Apache-2.0
#include "sample_menu.h"

#include "oxa-editor/unit_dialog.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_model.h"
#include "oxa-editor/wave/wave_view.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kNear = 5; // pixels from an edge

/// The signal's name, without the letter of a comparison and without the core in a group of it.
QString nameOf(const WaveRow& row)
{
    static const QRegularExpression letter(" \\([AB]\\)$");
    return row.nameIn(row.group).remove(letter);
}

/// The value of a row at a sample, a digit for each bit.
QString digitsAt(const WaveRow& row, qint64 sample)
{
    QString digits;
    for (int bit = 0; bit < row.width; ++bit)
        digits += "01X"[int(row.samples->bit(sample, row.field, row.firstBit + bit))];
    return digits;
}

/// The menu of the view.
QMenu* menuOf(const WaveView& view)
{
    for (const QToolButton* button : view.findChildren<QToolButton*>()) {
        if (button->menu() && !button->text().isEmpty())
            return button->menu();
    }
    return nullptr;
}

}

SampleMenu::SampleMenu(
    Document& document, WaveView& view, const std::function<CorePtr(const WaveRow& row)>& coreOf)
    : QObject(&view)
    , m_document(document)
    , m_view(view)
    , m_coreOf(coreOf)
{
    view.canvas()->installEventFilter(this);
}

bool SampleMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ContextMenu)
        return QObject::eventFilter(watched, event);
    const auto& request = *static_cast<QContextMenuEvent*>(event);
    if (!choose(request))
        return false; // the view has its own menu
    QMenu menu(&m_view);
    addActions(menu);
    menu.addSeparator();
    if (const QMenu* more = menuOf(m_view))
        menu.addActions(more->actions());
    menu.exec(request.globalPos());
    return true;
}

/// Finds the row and the sample, which become those of cursor A. False when there is no value.
bool SampleMenu::choose(const QContextMenuEvent& event)
{
    QTreeView& rows = *m_view.rows();
    WaveCanvas& canvas = *m_view.canvas();
    const WaveScale& scale = canvas.scale();
    const bool byKey = event.reason() == QContextMenuEvent::Keyboard;
    const int y = rows.viewport()->mapFromGlobal(event.globalPos()).y();
    const QModelIndex index = byKey ? rows.currentIndex() : rows.indexAt({0, y});
    const auto* model = qobject_cast<const WaveModel*>(rows.model());
    const WaveRow* row = model ? model->row(index) : nullptr;
    m_samples = m_view.waveform()->samples;
    m_sample = byKey ? canvas.cursor(0) : qint64(std::floor(scale.sampleAt(event.x())));
    if (!row || row->isEvent || m_sample < 0 || m_sample >= m_samples)
        return false;
    m_row = *row;
    m_isEdge = false;
    for (const qint64 begin : {m_sample, m_sample + 1}) {
        const bool isNear
            = byKey ? begin == m_sample : std::abs(scale.xOf(double(begin)) - event.x()) < kNear;
        if (m_isEdge || !isNear || m_row->isBus() || begin < 1 || begin >= m_samples
            || m_row->changes.next(begin) != begin)
            continue;
        m_sample = begin;
        m_isEdge = true;
    }
    rows.setCurrentIndex(index);
    canvas.setCursor(0, m_sample);
    return true;
}

TriggerValue SampleMenu::value() const
{
    TriggerValue value;
    for (const WaveRow& bit : m_row->bits)
        value.signalNames += bit.name;
    if (!m_row->isBus())
        value.signalNames += nameOf(*m_row);
    value.digits = digitsAt(*m_row, m_sample);
    const QString before = m_isEdge ? digitsAt(*m_row, m_sample - 1) : QString();
    if (before == "0" && value.digits == "1")
        value.digits = "R";
    if (before == "1" && value.digits == "0")
        value.digits = "F";
    return value;
}

void SampleMenu::addActions(QMenu& menu)
{
    const TriggerValue wanted = value();
    const CorePtr core = m_coreOf(*m_row);
    OXA::MatchUnit unit;
    QString reason = tr("there is no Standard core");
    const bool canTrigger
        = core && core->standard && unitOn(*core->standard, wanted, unit, &reason);
    const QString what = wanted.digits == "R" ? tr("rising edge")
        : wanted.digits == "F"                ? tr("falling edge")
                                              : wanted.digits;
    QAction* trigger = menu.addAction(canTrigger ? tr("&Trigger on this (%1)…").arg(what)
                                                 : tr("&Trigger on this (%1)").arg(reason),
        this, &SampleMenu::triggerOnThis);
    trigger->setEnabled(canTrigger);
    menu.addAction(tr("Find &next"), this, &SampleMenu::findNext);
    QAction* data = menu.addAction(
        tr("Add to &data signals"), this, [this, core] { Q_EMIT dataWanted(core, {item()}); });
    data->setEnabled(core && !isData());
}

/// Fills a unit, and shows it in its dialog.
void SampleMenu::triggerOnThis()
{
    const CorePtr core = m_coreOf(*m_row);
    OXA::MatchUnit draft;
    if (!core || !core->standard || !unitOn(*core->standard, value(), draft, nullptr))
        return;
    UnitDialog dialog(&draft, &m_view);
    if (dialog.exec() != QDialog::Accepted)
        return;
    for (OXA::MatchUnit* unit : core->standard->matchUnits) {
        if (unit->index != draft.index)
            continue;
        const Location location {core, Page::Units, draft.index};
        m_document.set(location, *unit, draft, tr("trigger on %1").arg(nameOf(*m_row)));
        Q_EMIT edited(location);
    }
}

/// Moves cursor A to where the signal gets the same value again, or has the same edge.
void SampleMenu::findNext()
{
    const QString wanted = value().digits;
    const QString digits = digitsAt(*m_row, m_sample);
    qint64 at = m_sample;
    do {
        at = m_row->changes.next(at + 1);
        const bool isEdge = at < m_samples && digitsAt(*m_row, at - 1) != "X";
        if (at < m_samples && digitsAt(*m_row, at) == digits && (wanted == digits || isEdge))
            break;
    } while (at < m_samples);
    if (at >= m_samples)
        return;
    m_view.canvas()->setCursor(0, at);
    m_view.canvas()->reveal(at);
}

OXA::SignalItem SampleMenu::item() const
{
    OXA::SignalItem item;
    item.name = nameOf(*m_row);
    for (const WaveRow& bit : m_row->bits) {
        item.subItems += OXA::SignalItem();
        item.subItems.last().name = bit.name;
    }
    return item;
}

bool SampleMenu::isData() const
{
    const CorePtr core = m_coreOf(*m_row);
    QStringList known;
    if (core)
        known = OXA::flattenedNames(core->signalList()) + OXA::flattenedTexts(core->signalList());
    const QStringList own = OXA::flattenedNames({item()});
    return std::all_of(
        own.begin(), own.end(), [&](const QString& name) { return known.contains(name); });
}
