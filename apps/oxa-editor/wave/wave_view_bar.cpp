// SPDX-License-Identifier: Apache-2.0
// The bar, the menu and the keys of a WaveView.
#include "wave_view.h"

#include "wave_canvas.h"
#include "wave_row_menu.h"
#include "wave_settings.h"

#include "oxa-editor/flow_layout.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace {

constexpr double kKeyZoom = 2;

/// Adds what stays together when the bar gets a second row.
QLayout& addGroup(QLayout& bar)
{
    auto* group = new QWidget;
    auto* layout = new QHBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    bar.addWidget(group);
    return *layout;
}

/// Adds a button for `action`, with `sign` in place of its text.
void addButton(QLayout& group, QAction* action, const QString& sign = {})
{
    auto* button = new QToolButton;
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus); // the action has keys
    if (!sign.isEmpty()) {
        button->setAccessibleName(action->text());
        action->setIconText(sign);
    }
    button->setDefaultAction(action);
    group.addWidget(button);
}

void addField(QLayout& group, const QString& text, QLineEdit* field)
{
    auto* label = new QLabel(text);
    label->setBuddy(field);
    group.addWidget(label);
    group.addWidget(field);
}

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

QWidget* WaveView::makeBar()
{
    auto* bar = new QWidget;
    auto* layout = new FlowLayout(bar);
    layout->setSpacing(fontMetrics().averageCharWidth());
    addZooms(addGroup(*layout));
    addSearch(addGroup(*layout));

    QLayout& filter = addGroup(*layout);
    m_filter->setPlaceholderText(tr("all names"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMinimumWidth(fontMetrics().averageCharWidth() * 10);
    m_filter->setToolTip(tr("Part of the names to show, or a pattern with * and ?"));
    addField(filter, tr("Filter:"), m_filter);

    QLayout& clock = addGroup(*layout);
    m_clock->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
    addField(clock, tr("Cloc&k:"), m_clock);

    auto* more = new QToolButton;
    more->setText(tr("More"));
    more->setPopupMode(QToolButton::InstantPopup);
    more->setFocusPolicy(Qt::StrongFocus);
    more->setMenu(makeMenu());
    clock.addWidget(more);
    return bar;
}

void WaveView::addZooms(QLayout& group)
{
    const auto zoom = [this](double factor) {
        const qint64 cursor = m_canvas->cursor(0);
        const double x = m_canvas->scale().xOf(double(cursor));
        const bool atCursor = cursor >= 0 && x >= 0 && x < m_canvas->width();
        m_canvas->zoom(factor, atCursor ? x : m_canvas->width() / 2.0);
    };
    // A sign takes less of a narrow bar than the name, which a screen reader gets.
    addButton(group,
        addAction(tr("Zoom in"), tr("Zoom in at cursor A"), {QKeySequence("+"), QKeySequence("=")},
            [=] { zoom(kKeyZoom); }),
        "+");
    addButton(group,
        addAction(tr("Zoom out"), tr("Zoom out at cursor A"), {QKeySequence("-")},
            [=] { zoom(1 / kKeyZoom); }),
        QString(QChar(0x2212)));
    addButton(group, addAction(tr("Fit"), tr("Show all samples"), {QKeySequence("F")}, [this] {
        m_canvas->fit();
    }));
    addButton(group,
        addAction(tr("Trigger"), tr("Cursor A to the next trigger"), {QKeySequence("T")},
            [this] { showTrigger(); }));
}

void WaveView::addSearch(QLayout& group)
{
    m_wanted->setPlaceholderText(tr("any change"));
    m_wanted->setClearButtonEnabled(true);
    m_wanted->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    m_wanted->setToolTip(tr("A value in the radix of the current signal; x is any digit (Ctrl+F)"));
    addAction(tr("Find value"), {}, {QKeySequence("Ctrl+F")},
        [this] { m_wanted->setFocus(Qt::ShortcutFocusReason); });
    addField(group, tr("Find value:"), m_wanted);
    addButton(group,
        addAction(tr("Previous"), tr("Cursor A to the previous change to the value"),
            {QKeySequence("P"), QKeySequence("Shift+F3")}, [this] { find(-1); }));
    addButton(group,
        addAction(tr("Next"), tr("Cursor A to the next change to the value"),
            {QKeySequence("N"), QKeySequence("F3")}, [this] { find(1); }));
}

QMenu* WaveView::makeMenu()
{
    auto* menu = new QMenu(this);
    menu->addMenu(m_rowMenu);
    // The view takes their keys itself, before the shortcuts of the window.
    const auto addStep
        = [&](const QString& text, QKeySequence::StandardKey key, void (WaveView::*act)()) {
              const QString name = QKeySequence(key).toString(QKeySequence::NativeText);
              menu->addAction(text + '\t' + name, this, act);
          };
    addStep(tr("&Undo change of rows"), QKeySequence::Undo, &WaveView::undoLayout);
    addStep(tr("Re&do change of rows"), QKeySequence::Redo, &WaveView::redoLayout);
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
    menu->addAction(
        addAction(tr("Zoom to the &window"), {}, {QKeySequence("W")}, [this] { zoomToWindow(); }));
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

/// Here, the keys of undo and redo are those of the layout, elsewhere those of the configuration.
bool WaveView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo))
            event->accept();
    }
    return QWidget::event(event);
}

void WaveView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo))
        undoLayout();
    else if (event->matches(QKeySequence::Redo))
        redoLayout();
    else
        QWidget::keyPressEvent(event);
}

void WaveView::undoLayout()
{
    if (!m_settings->undoRows(core()))
        say(tr("There is no change of the rows to undo."));
}

void WaveView::redoLayout()
{
    if (!m_settings->redoRows(core()))
        say(tr("There is no change of the rows to redo."));
}
