// SPDX-License-Identifier: Apache-2.0
#include "wave_view.h"

#include "gtkwave.h"
#include "quantity.h"
#include "wave_canvas.h"
#include "wave_model.h"

#include "oxautils/config/names_file.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

using OXA_CAPTURE::kNoSample;

namespace {

constexpr double kKeyZoom = 2;
constexpr int kRowsWidth = 36; // characters, names and values
constexpr int kFewSamples = 1000000000; // limit of a scroll bar

/// Shows the end of a long name: names in a hierarchy have the same beginning.
class NameDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideLeft;
    }
};

}

WaveView::WaveView(QWidget* parent)
    : QWidget(parent)
    , m_model(new WaveModel(this))
    , m_rows(new QTreeView)
    , m_splitter(new QSplitter)
    , m_gtkWave(new GtkWave(this))
    , m_scroll(new QScrollBar(Qt::Horizontal))
    , m_wanted(new QLineEdit)
    , m_clock(new QLineEdit)
    , m_state(new QLabel)
{
    m_rows->setModel(m_model);
    m_canvas = new WaveCanvas(*m_rows, *m_model);
    layOut();
    connect(m_canvas, &WaveCanvas::scaleChanged, this, &WaveView::showScale);
    connect(m_canvas, &WaveCanvas::cursorMoved, this, &WaveView::showCursors);
    connect(m_gtkWave, &GtkWave::said, this, &WaveView::say);
    connect(m_scroll, &QScrollBar::valueChanged, m_canvas, &WaveCanvas::moveTo);
    connect(m_wanted, &QLineEdit::returnPressed, this, [this] { find(1); });
    connect(m_clock, &QLineEdit::editingFinished, this, &WaveView::readClock);
    connect(m_rows->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &WaveView::showCursors);
    showCursors();
}

void WaveView::layOut()
{
    m_rows->setAccessibleName(tr("Signals"));
    m_rows->setFrameShape(QFrame::NoFrame);
    m_rows->setUniformRowHeights(true);
    m_rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_rows->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_rows->setItemDelegateForColumn(WaveModel::Name, new NameDelegate(m_rows));
    m_rows->header()->setStretchLastSection(true);
    const int character = fontMetrics().averageCharWidth();
    m_rows->header()->resizeSection(WaveModel::Name, character * kRowsWidth * 2 / 3);
    m_splitter->addWidget(m_rows);
    m_splitter->addWidget(m_canvas);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({character * kRowsWidth, character * 80});
    m_splitter->setChildrenCollapsible(false);
    m_scroll->setFocusPolicy(Qt::NoFocus); // keys of the waveform do the same
    m_scroll->setAccessibleName(tr("Samples"));
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* bar = new QToolBar;
    makeActions(bar);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(bar);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(m_scroll);
    layout->addWidget(m_state);
    setFocusProxy(m_canvas);
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

    m_clock->setPlaceholderText(tr("unknown"));
    m_clock->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
    m_clock->setToolTip(tr("The sample clock's frequency, for times: 50 MHz"));
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
    QMenu* radixes = menu->addMenu(tr("&Radix"));
    for (int i = 0; i < kRadixes; ++i)
        radixes->addAction('&' + radixName(Radix(i)), this, [this, i] { setRadix(Radix(i)); });
    menu->addAction(tr("&Expand all"), m_rows, &QTreeView::expandAll);
    menu->addAction(tr("&Collapse all"), m_rows, &QTreeView::collapseAll);
    menu->addSeparator();
    menu->addAction(addAction(
        tr("&Copy as Picture"), {}, {QKeySequence("Ctrl+Shift+C")}, [this] { copyPicture(); }));
    menu->addAction(tr("Open in &GTKWave"), this, &WaveView::openInGtkWave);
    m_rows->setContextMenuPolicy(Qt::CustomContextMenu);
    m_canvas->setContextMenuPolicy(Qt::CustomContextMenu);
    for (QWidget* widget : {static_cast<QWidget*>(m_rows), static_cast<QWidget*>(m_canvas)})
        connect(widget, &QWidget::customContextMenuRequested, menu,
            [=](const QPoint& at) { menu->popup(widget->mapToGlobal(at)); });
    return menu;
}

WaveformPtr WaveView::waveform() const { return m_model->waveform(); }

void WaveView::setDimmed(bool dimmed) { m_canvas->setDimmed(dimmed); }

void WaveView::setNamesOf(const QString& configuration)
{
    OXA::KnownNames names;
    OXA::readKnownNames(configuration, names, nullptr);
    m_model->setStates(names.states);
}

void WaveView::setWaveform(const WaveformPtr& waveform)
{
    const qint64 before = m_model->waveform()->samples;
    QStringList expanded;
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QModelIndex index = m_model->index(i, 0);
        if (m_rows->isExpanded(index))
            expanded += m_model->row(index)->name;
    }
    const WaveRow* chosen = m_model->row(m_rows->currentIndex());
    const QString current = chosen ? chosen->name : QString();
    m_model->setWaveform(waveform);
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QModelIndex index = m_model->index(i, 0);
        const QString& name = m_model->row(index)->name;
        m_rows->setExpanded(index, expanded.contains(name));
        if (!m_rows->currentIndex().isValid() && name == current)
            m_rows->setCurrentIndex(index);
    }
    if (!m_rows->currentIndex().isValid())
        m_rows->setCurrentIndex(m_model->index(0, 0));
    m_canvas->waveformChanged(before);
    showCursors();
}

void WaveView::showScale()
{
    const WaveScale& scale = m_canvas->scale();
    const QSignalBlocker blocker(m_scroll);
    const double last = double(m_model->waveform()->samples) - scale.visible();
    m_scroll->setRange(0, int(qBound(0.0, std::ceil(last), 1.0 * kFewSamples)));
    m_scroll->setPageStep(int(qBound(1.0, scale.visible(), 1.0 * kFewSamples)));
    m_scroll->setSingleStep(qMax(m_scroll->pageStep() / 10, 1));
    m_scroll->setValue(int(qBound(0.0, scale.first(), 1.0 * kFewSamples)));
}

QString WaveView::timeText(qint64 samples) const
{
    return m_clockHz > 0 ? tr(" (%1)").arg(durationText(double(samples) / m_clockHz)) : QString();
}

/// "A: sample 587, window 0, trigger + 12"
QString WaveView::cursorText(int which) const
{
    const qint64 sample = m_canvas->cursor(which);
    QString text = tr("%1: sample %2").arg(which == 0 ? "A" : "B", QString::number(sample));
    const int number = waveform()->windowAt(sample);
    if (number < 0)
        return text;
    const WaveWindow& window = waveform()->windows[size_t(number)];
    text += tr(", window %1").arg(number);
    if (window.trigger == kNoSample)
        return text;
    const qint64 distance = sample - window.trigger;
    return text
        + tr(", trigger %1 %2%3")
              .arg(distance < 0 ? QChar(0x2212) : QChar('+'), QString::number(qAbs(distance)),
                  timeText(qAbs(distance)));
}

void WaveView::showCursors()
{
    m_model->setSample(m_canvas->cursor(0));
    QStringList texts;
    for (const int which : {0, 1}) {
        if (m_canvas->cursor(which) >= 0)
            texts += cursorText(which);
    }
    if (texts.size() == 2) {
        const qint64 distance = m_canvas->cursor(1) - m_canvas->cursor(0);
        texts += tr("B %1 A: %2 samples%3")
                     .arg(QChar(0x2212), QString::number(distance), timeText(distance));
    }
    if (texts.isEmpty())
        texts += tr("Click for cursor A, Shift+click for B; arrow keys move them.");
    say(texts.join("      "));
    const QModelIndex current = m_rows->currentIndex();
    const QModelIndex value = current.siblingAtColumn(WaveModel::Value);
    m_canvas->setAccessibleDescription(
        tr("%1 is %2").arg(current.siblingAtColumn(0).data().toString(), value.data().toString()));
}

void WaveView::say(const QString& text)
{
    m_state->setText(text);
    m_state->setToolTip(text);
}

/// Moves cursor A to the next trigger; after the last one, to the first.
void WaveView::showTrigger()
{
    const qint64 now = m_canvas->cursor(0);
    qint64 first = kNoSample;
    for (const WaveWindow& window : waveform()->windows) {
        if (window.trigger == kNoSample)
            continue;
        first = first == kNoSample ? window.trigger : first;
        if (window.trigger > now) {
            first = window.trigger;
            break;
        }
    }
    if (first == kNoSample)
        return say(tr("There is no trigger."));
    m_canvas->setCursor(0, first);
    m_canvas->reveal(first);
}

void WaveView::find(int step)
{
    const QModelIndex current = m_rows->currentIndex();
    const WaveRow* row = m_model->row(current);
    if (!row || waveform()->samples == 0)
        return say(tr("Choose a signal first."));
    const QString wanted = m_wanted->text().trimmed();
    WavePattern pattern;
    if (!wanted.isEmpty() && !readPattern(wanted, m_model->radix(current), row->width, pattern))
        return say(tr("%1 is not a value of %2.").arg(wanted, row->name));
    const auto matchFrom = [&](qint64 sample) {
        do {
            sample = step > 0 ? row->changes.next(qMax(sample, qint64(0)) + 1)
                              : row->changes.previous(sample - 1);
        } while (sample > 0 && sample < waveform()->samples && !wanted.isEmpty()
            && !pattern.matches(row->valueAt(sample)));
        return sample < waveform()->samples ? sample : kNoSample;
    };
    qint64 sample = matchFrom(m_canvas->cursor(0));
    const bool wraps = sample < 0;
    if (wraps)
        sample = matchFrom(step > 0 ? 0 : waveform()->samples);
    if (sample < 0)
        return say(tr("%1: no match.").arg(row->name));
    m_canvas->setCursor(0, sample);
    m_canvas->reveal(sample);
    if (wraps)
        say(step > 0 ? tr("No further match: searched on from the first sample.")
                     : tr("No earlier match: searched on from the last sample."));
}

void WaveView::setRadix(Radix radix)
{
    const QModelIndex current = m_rows->currentIndex();
    m_model->setRadix(current.parent().isValid() ? current.parent() : current, radix);
    showCursors();
}

void WaveView::readClock()
{
    double hertz = 0;
    const bool empty = m_clock->text().trimmed().isEmpty();
    if (!empty && !readFrequency(m_clock->text(), hertz))
        return say(tr("%1 is not a frequency such as 50 MHz.").arg(m_clock->text()));
    m_clockHz = hertz;
    m_clock->setText(empty ? QString() : frequencyText(hertz));
    showCursors();
}

void WaveView::copyPicture()
{
    QApplication::clipboard()->setPixmap(m_splitter->grab());
    say(tr("The picture is on the clipboard."));
}

void WaveView::openInGtkWave() { m_gtkWave->open(*waveform(), m_clockHz); }
