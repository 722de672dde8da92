// SPDX-License-Identifier: Apache-2.0
#include "wave_view.h"

#include "gtkwave.h"
#include "marker_texts.h"
#include "quantity.h"
#include "save_job.h"
#include "wave_canvas.h"
#include "wave_model.h"
#include "wave_overview.h"
#include "wave_row_menu.h"
#include "wave_settings.h"

#include "oxautils/config/names_file.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTreeView>

using OXA_CAPTURE::kNoSample;

namespace {

constexpr int kNameWidth = 22; // characters
constexpr int kValueWidth = 9;

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

WaveView::WaveView(WaveSettings* settings, QWidget* parent)
    : QWidget(parent)
    , m_settings(settings ? settings : new WaveSettings(nullptr, this))
    , m_model(new WaveModel(this))
    , m_rows(new QTreeView)
    , m_splitter(new QSplitter)
    , m_gtkWave(new GtkWave(this))
    , m_save(new SaveJob(this))
    , m_rowMenu(new WaveRowMenu(*m_rows, *m_model, *this))
    , m_wanted(new QLineEdit)
    , m_filter(new QLineEdit)
    , m_clock(new QLineEdit)
    , m_problem(new QLabel)
    , m_state(new QLabel)
{
    m_rows->setModel(m_model);
    m_canvas = new WaveCanvas(*m_rows, *m_model);
    layOut();
    connect(m_settings, &WaveSettings::changed, this, &WaveView::showSettings);
    connect(m_model, &WaveModel::layoutChanged, this, &WaveView::showLayout);
    connect(m_model, &WaveModel::edited, this,
        [this] { m_settings->editRows(core(), m_model->entries()); });
    connect(m_model, &WaveModel::expandedOrCollapsed, this,
        [this] { m_settings->setRows(core(), m_model->entries()); });
    connect(m_rows, &QTreeView::expanded, m_model,
        [this](const QModelIndex& index) { m_model->setExpanded(index, true); });
    connect(m_rows, &QTreeView::collapsed, m_model,
        [this](const QModelIndex& index) { m_model->setExpanded(index, false); });
    connect(m_filter, &QLineEdit::textChanged, m_model, &WaveModel::setFilter);
    connect(m_canvas, &WaveCanvas::cursorMoved, this, &WaveView::showCursors);
    connect(m_gtkWave, &GtkWave::said, this, &WaveView::say);
    connect(m_save, &SaveJob::finished, this, [this](const QString& path, const QString& error) {
        say(error.isEmpty() ? tr("%1: written").arg(QDir::toNativeSeparators(path)) : error);
    });
    connect(m_wanted, &QLineEdit::returnPressed, this, [this] { find(1); });
    connect(m_clock, &QLineEdit::editingFinished, this, &WaveView::readClock);
    connect(m_rows->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &WaveView::showCursors);
    showSettings();
    showCursors();
}

void WaveView::layOut()
{
    m_rows->setAccessibleName(tr("Signals"));
    m_rows->setFrameShape(QFrame::NoFrame);
    m_rows->setUniformRowHeights(true);
    m_rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_rows->setEditTriggers(QAbstractItemView::DoubleClicked);
    m_rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_rows->setDragDropMode(QAbstractItemView::InternalMove);
    m_rows->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_rows, &QWidget::customContextMenuRequested, m_rowMenu,
        [this](const QPoint& at) { m_rowMenu->popup(m_rows->viewport()->mapToGlobal(at)); });
    m_rows->setItemDelegateForColumn(WaveModel::Name, new NameDelegate(m_rows));
    m_rows->header()->setStretchLastSection(true);
    const int character = fontMetrics().averageCharWidth();
    m_rows->header()->resizeSection(WaveModel::Name, character * kNameWidth);
    m_rows->header()->resizeSection(WaveModel::Value, character * kValueWidth);
    m_splitter->addWidget(m_rows);
    m_splitter->addWidget(m_canvas);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({character * (kNameWidth + 2 * kValueWidth), character * 80});
    m_splitter->setChildrenCollapsible(false);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // the tool tip has all
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(makeBar());
    layout->addWidget(m_problem);
    layout->addWidget(m_splitter, 1);
    layout->addWidget(new WaveOverview(*m_rows, *m_model, *m_canvas));
    layout->addWidget(m_state);
    setFocusProxy(m_canvas);
}

WaveformPtr WaveView::waveform() const { return m_model->waveform(); }

void WaveView::setDimmed(bool dimmed) { m_canvas->setDimmed(dimmed); }

void WaveView::setNamesOf(const QString& configuration)
{
    OXA::KnownNames names;
    OXA::readKnownNames(configuration, names, nullptr);
    m_model->setStates(names.states);
    if (configuration == m_settings->configuration())
        m_settings->setConfiguredClocks(names.clocks);
}

void WaveView::setWaveform(const WaveformPtr& waveform)
{
    const qint64 before = m_model->waveform()->samples;
    m_model->setWaveform(waveform, m_settings->rows(waveform->captured.index));
    if (!m_rows->currentIndex().isValid()) {
        const QModelIndex first = m_model->index(0, 0);
        const bool isGroup = first.isValid() && !m_model->row(first);
        m_rows->setCurrentIndex(isGroup ? m_model->index(0, 0, first) : first);
    }
    m_canvas->waveformChanged(before);
    if (waveform->clockHz > 0)
        m_settings->setStimulusClock(core(), waveform->clockHz);
    showClock();
}

double WaveView::clock() const { return m_settings->clock(core()); }

int WaveView::core() const { return waveform()->captured.index; }

/// Another view, or another configuration, may have changed them.
void WaveView::showSettings()
{
    m_problem->setText(m_settings->problem());
    m_problem->setVisible(!m_settings->problem().isEmpty());
    if (!(m_settings->rows(core()) == m_model->entries()))
        m_model->setEntries(m_settings->rows(core()));
    showClock();
}

/// The sample clock, and the times that it gives.
void WaveView::showClock()
{
    const QString origin = m_settings->clockOrigin(core());
    m_clock->setEnabled(!waveform()->joint);
    m_clock->setPlaceholderText(waveform()->joint ? tr("of each core") : tr("unknown"));
    m_clock->setText(clock() > 0 ? frequencyText(clock()) : QString());
    m_clock->setToolTip(tr("The sample clock's frequency, for times: 50 MHz")
        + (origin.isEmpty() ? QString() : "\n" + tr("This one is %1.").arg(origin)));
    showRuler();
    showCursors();
}

void WaveView::showLayout()
{
    m_rows->setUniformRowHeights(!m_model->hasHighRows());
    const std::function<void(const QModelIndex&)> expand = [&](const QModelIndex& parent) {
        for (int row = 0; row < m_model->rowCount(parent); ++row) {
            const QModelIndex index = m_model->index(row, 0, parent);
            if (m_model->rowCount(index) == 0)
                continue;
            const bool isGroup = m_model->row(index) == nullptr;
            m_rows->setExpanded(
                index, m_model->entry(index)->expanded || (isGroup && m_model->isFiltered()));
            expand(index);
        }
    };
    expand({});
}

void WaveView::showCursors()
{
    for (const int cursor : {0, 1})
        m_model->setSample(cursor, m_canvas->cursor(cursor));
    m_rows->setColumnHidden(WaveModel::ValueB, m_canvas->cursor(1) < 0);
    QStringList texts
        = markerTexts(*waveform(), m_canvas->markers(), WaveTimes(waveform(), clock()));
    if (texts.isEmpty())
        texts += tr("Click for cursor A, Shift+click for B; arrow keys move them.");
    say(texts.join("      "));
    const QModelIndex current = m_rows->currentIndex();
    const QModelIndex value = current.siblingAtColumn(WaveModel::Value);
    m_canvas->setAccessibleDescription(
        tr("%1 is %2").arg(current.siblingAtColumn(0).data().toString(), value.data().toString()));
}

void WaveView::showRuler()
{
    m_canvas->setRulerTimes(m_timeRuler->isChecked() || waveform()->joint
            ? std::make_optional<WaveTimes>(waveform(), clock())
            : std::nullopt);
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

/// Shows the window that cursor A is in, else the first one.
void WaveView::zoomToWindow()
{
    const int number = waveform()->windowAt(m_canvas->cursor(0));
    if (waveform()->windows.empty())
        return say(tr("There is no window."));
    const WaveWindow& window = waveform()->windows[size_t(qMax(number, 0))];
    m_canvas->show(double(window.first), double(window.first + window.samples));
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

void WaveView::readClock()
{
    double hertz = 0;
    const QString text = m_clock->text().trimmed();
    if (!text.isEmpty() && !readFrequency(text, hertz))
        return say(tr("%1 is not a frequency such as 50 MHz.").arg(m_clock->text()));
    if (text != frequencyText(clock()))
        m_settings->enterClock(core(), hertz);
    showSettings();
}
