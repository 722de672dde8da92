// SPDX-License-Identifier: Apache-2.0
// The tool bar and the menu of a WaveView.
#include "wave_view.h"

#include "wave_canvas.h"
#include "wave_row_menu.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

namespace {

constexpr double kKeyZoom = 2;

}

QAction* WaveView::addAction(const QString& text, const QString& tip,
    const QList<QKeySequence>& keys, const std::function<void()>& act)
{
    auto* action = new QAction(text, this);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    const QString key
        = keys.isEmpty() ? QString() : keys.first().toString(QKeySequence::NativeText);
    action->setToolTip(key.isEmpty() ? tip : QString("%1 (%2)").arg(tip, key));
    connect(action, &QAction::triggered, this, act);
    QWidget::addAction(action);
    return action;
}

void WaveView::makeActions(QToolBar* bar)
{
    const auto zoom = [this](double factor) {
        const qint64 cursor = m_canvas->cursor(0);
        const double x = m_canvas->scale().xOf(double(cursor));
        const bool atCursor = cursor >= 0 && x >= 0 && x < m_canvas->width();
        m_canvas->zoom(factor, atCursor ? x : m_canvas->width() / 2.0);
    };
    bar->addAction(addAction(tr("Zoom in"), tr("Zoom in at cursor A"),
        {QKeySequence("+"), QKeySequence("=")}, [=] { zoom(kKeyZoom); }));
    bar->addAction(addAction(tr("Zoom out"), tr("Zoom out at cursor A"), {QKeySequence("-")},
        [=] { zoom(1 / kKeyZoom); }));
    // A sign takes less of a narrow bar than the name, which a screen reader gets.
    const QList<QAction*> zooms = bar->actions();
    for (QAction* action : zooms) {
        bar->widgetForAction(action)->setAccessibleName(action->text());
        action->setIconText(action == zooms.first() ? "+" : QString(QChar(0x2212)));
    }
    bar->addAction(addAction(
        tr("Fit"), tr("Show all samples"), {QKeySequence("F")}, [this] { m_canvas->fit(); }));
    bar->addAction(addAction(tr("Trigger"), tr("Cursor A to the next trigger"), {QKeySequence("T")},
        [this] { showTrigger(); }));
    bar->addSeparator();

    m_wanted->setPlaceholderText(tr("any change"));
    m_wanted->setClearButtonEnabled(true);
    m_wanted->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    m_wanted->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    m_wanted->setToolTip(tr("A value in the radix of the current signal; x is any digit (Ctrl+F)"));
    auto* find = new QLabel(tr("Find value:"));
    find->setBuddy(m_wanted);
    addAction(tr("Find value"), {}, {QKeySequence("Ctrl+F")},
        [this] { m_wanted->setFocus(Qt::ShortcutFocusReason); });
    bar->addWidget(find);
    bar->addWidget(m_wanted);
    bar->addAction(addAction(tr("Previous"), tr("Cursor A to the previous change to the value"),
        {QKeySequence("P"), QKeySequence("Shift+F3")}, [this] { this->find(-1); }));
    bar->addAction(addAction(tr("Next"), tr("Cursor A to the next change to the value"),
        {QKeySequence("N"), QKeySequence("F3")}, [this] { this->find(1); }));
    bar->addSeparator();

    m_filter->setPlaceholderText(tr("all names"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    m_filter->setMinimumWidth(fontMetrics().averageCharWidth() * 10);
    m_filter->setToolTip(tr("Part of the names to show, or a pattern with * and ?"));
    auto* filter = new QLabel(tr("Filter:"));
    filter->setBuddy(m_filter);
    bar->addWidget(filter);
    bar->addWidget(m_filter);
    bar->addSeparator();

    m_clock->setPlaceholderText(tr("unknown"));
    m_clock->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
    auto* clock = new QLabel(tr("Cloc&k:"));
    clock->setBuddy(m_clock);
    bar->addWidget(clock);
    bar->addWidget(m_clock);

    auto* more = new QToolButton;
    more->setText(tr("More"));
    more->setPopupMode(QToolButton::InstantPopup);
    more->setFocusPolicy(Qt::StrongFocus);
    more->setMenu(makeMenu());
    bar->addWidget(more);
}

QMenu* WaveView::makeMenu()
{
    auto* menu = new QMenu(this);
    menu->addMenu(m_rowMenu);
    menu->addSeparator();
    m_timeRuler = menu->addAction(tr("Ruler in &time"), this, [this] { showRuler(); });
    m_timeRuler->setCheckable(true);
    QAction* snaps = menu->addAction(tr("&Snap to edges"));
    snaps->setCheckable(true);
    snaps->setChecked(true);
    connect(snaps, &QAction::toggled, m_canvas, &WaveCanvas::setSnaps);
    menu->addAction(addAction(tr("Add &marker"), tr("Add a marker at cursor A"),
        {QKeySequence("M")}, [this] { m_canvas->addMarker(); }));
    menu->addAction(tr("R&emove markers"), m_canvas, &WaveCanvas::removeMarkers);
    menu->addAction(addAction(tr("&Zoom from A to B"), {}, {QKeySequence("Z")}, [this] {
        const auto spans = m_canvas->markers().spans();
        const bool hasSpan = m_canvas->cursor(0) >= 0 && m_canvas->cursor(1) >= 0;
        if (hasSpan)
            m_canvas->show(double(spans.front().first), double(spans.front().second) + 1);
    }));
    menu->addSeparator();
    menu->addAction(addAction(
        tr("&Copy as picture"), {}, {QKeySequence("Ctrl+Shift+C")}, [this] { copyPicture(); }));
    menu->addAction(tr("Export &picture…"), this, &WaveView::askForPicture);
    menu->addAction(tr("Export samples from &A to B…"), this, &WaveView::askForSpans);
    menu->addAction(tr("Open in &GTKWave"), this, &WaveView::openInGtkWave);
    m_canvas->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_canvas, &QWidget::customContextMenuRequested, menu,
        [=](const QPoint& at) { menu->popup(m_canvas->mapToGlobal(at)); });
    return menu;
}
