// SPDX-License-Identifier: Apache-2.0
#include "captures_panel.h"

#include "oxa-editor/beside_samples.h"
#include "oxa-editor/least_lines.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/model/shown_text.h"

#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>

#include <algorithm>

namespace {

constexpr int kShownNames = 4; // of signals that differ
constexpr int kAskedWidth = 34; // characters

/// "count, busy and 3 more"
QString namesText(const QStringList& names)
{
    QStringList shown;
    for (const QString& name : names.mid(0, kShownNames))
        shown += OXA::shownText(name);
    const int more = names.size() - shown.size();
    return shown.join(", ") + (more > 0 ? CapturesPanel::tr(" and %1 more").arg(more) : QString());
}

}

CapturesPanel::CapturesPanel(const Document& document, WaveSettings& waves, CaptureHistory& history,
    CaptureSaver& saver, QWidget* parent)
    : QWidget(parent)
    , m_document(document)
    , m_waves(waves)
    , m_history(history)
    , m_saver(saver)
    , m_job(new OpenJob(this))
    , m_list(new QTreeView)
    , m_cores(new QComboBox)
    , m_state(new QLabel)
    , m_view(new WaveView(&waves))
{
    layOutBeside(*this, makeControls(), m_view);
    setFocusProxy(m_list);
    connect(m_job, &OpenJob::finished, this, &CapturesPanel::showOpened);
    connect(m_job, &OpenJob::progress, this, [this](const QString& path, int percent) {
        m_state->setText(
            tr("%1: %2 % read")
                .arg(OXA::shownText(QDir::toNativeSeparators(path)), QString::number(percent)));
    });
    connect(
        &m_saver, &CaptureSaver::finished, this, [this](const QString& path, const QString& error) {
            m_state->setText(error.isEmpty()
                    ? tr("%1: written").arg(OXA::shownText(QDir::toNativeSeparators(path)))
                    : OXA::shownText(error));
            showState();
        });
    connect(&m_saver, &CaptureSaver::started, this, &CapturesPanel::showState);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &CapturesPanel::showChosen);
    connect(&m_history, &QAbstractItemModel::rowsRemoved, this, &CapturesPanel::showChosen);
    connect(m_cores, QOverload<int>::of(&QComboBox::activated), this, &CapturesPanel::showCore);
    showChosen();
}

QWidget* CapturesPanel::makeControls()
{
    m_list->setModel(&m_history);
    m_list->setAccessibleName(tr("Captures of this session"));
    m_list->setToolTip(tr("Select two, with Ctrl, to compare them"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(CaptureHistory::Asked, QHeaderView::Interactive);
    m_list->header()->resizeSection(
        CaptureHistory::Asked, fontMetrics().averageCharWidth() * kAskedWidth);
    keepLeastLines(*m_list);
    m_state->setWordWrap(true);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* controls = new QWidget;
    auto* layout = new QVBoxLayout(controls);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* files = new QHBoxLayout;
    addButton(
        tr("Open…"), tr("Read a saved capture or a waveform"), [this] { Q_EMIT chooseWanted(); },
        *files);
    m_save = addButton(
        tr("Save…"), tr("Write the samples to a file"), [this] { save(); }, *files);
    m_remove = addButton(
        tr("Remove"), tr("Remove the selected captures from this list"), [this] { remove(); },
        *files);
    m_rehearse = addButton(
        tr("Rehearse"), tr("Use the file of this capture as the stimulus of the rehearsal"),
        [this] { Q_EMIT stimulusWanted(chosen().first()->file); }, *files);
    m_stop = addButton(
        tr("Stop"), tr("Stop reading the file"), [this] { m_job->stop(); }, *files);
    layout->addLayout(files);
    layout->addWidget(m_list, 1);
    auto* differences = new QHBoxLayout;
    auto* label = new QLabel(tr("Core:"));
    label->setBuddy(m_cores);
    differences->addWidget(label);
    differences->addWidget(m_cores, 1);
    m_previous = addButton(
        tr("Previous difference"), tr("Cursor A to the difference before it (Shift+D)"),
        [this] { showDifference(-1); }, *differences);
    m_next = addButton(
        tr("Next difference"), tr("Cursor A to the next difference (D)"),
        [this] { showDifference(1); }, *differences);
    for (QPushButton* button : {m_previous, m_next}) {
        auto* key = new QShortcut(QKeySequence(button == m_next ? "D" : "Shift+D"), this);
        key->setContext(Qt::WidgetWithChildrenShortcut);
        connect(key, &QShortcut::activated, button, &QPushButton::click);
    }
    layout->addLayout(differences);
    layout->addWidget(m_state);
    return controls;
}

QPushButton* CapturesPanel::addButton(
    const QString& text, const QString& tip, const std::function<void()>& act, QLayout& layout)
{
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, act);
    layout.addWidget(button);
    return button;
}

void CapturesPanel::open(const QString& path)
{
    m_job->start(path);
    showState();
}

void CapturesPanel::showOpened(
    const CaptureRecordPtr& record, const QString& path, const QString& error)
{
    showState();
    if (!record)
        return m_state->setText(OXA::shownText(error));
    record->configuration = m_document.path();
    m_history.add(record);
    m_list->selectionModel()->setCurrentIndex(m_history.index(m_history.rowCount() - 1, 0),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->setFocus();
    Q_EMIT opened(path);
}

/// The selected captures in the order of the list.
QList<CaptureRecordPtr> CapturesPanel::chosen() const
{
    QModelIndexList rows = m_list->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QList<CaptureRecordPtr> records;
    for (const QModelIndex& row : qAsConst(rows))
        records += m_history.at(row.row());
    return records;
}

void CapturesPanel::save() { m_saver.ask(chosen().first()); }

void CapturesPanel::remove()
{
    const QList<CaptureRecordPtr> records = chosen();
    if (!m_saver.mayLose(records))
        return;
    for (int row = m_history.rowCount() - 1; row >= 0; --row) {
        if (records.contains(m_history.at(row)))
            m_history.remove(row);
    }
}

void CapturesPanel::showChosen()
{
    const QList<CaptureRecordPtr> records = chosen();
    const QString core = m_cores->currentText();
    m_cores->clear();
    if (!records.isEmpty()) {
        for (const OXA_CAPTURE::CapturedCore& own : *records.first()->capture)
            m_cores->addItem(QString::number(own.index));
        if (records.size() == 1 && m_cores->count() > 1)
            m_cores->addItem(tr("all, at their times"));
    }
    m_cores->setCurrentIndex(qMax(m_cores->findText(core), m_cores->count() > 0 ? 0 : -1));
    showCore();
}

/// Shows the chosen core of one capture, or of two.
void CapturesPanel::showCore()
{
    const QList<CaptureRecordPtr> records = chosen();
    const int core = m_cores->currentIndex();
    m_comparison = Comparison();
    WaveformPtr waveform = std::make_shared<Waveform>();
    if (records.isEmpty())
        m_state->setText(m_history.rowCount() > 0
                ? tr("Select a capture, or two to compare them.")
                : tr("Runs of the target and opened captures are listed here."));
    else if (records.size() > 2)
        m_state->setText(tr("Select one capture, or two to compare them."));
    else if (core < 0)
        m_state->setText(tr("The capture has no samples."));
    else if (records.size() == 2) {
        compare(*records.first(), *records.last());
        waveform = m_comparison.waveform;
    } else if (core == int(records.first()->waveforms.size())) {
        QString text;
        if (const WaveformPtr joint = jointWaveform(*records.first(), m_waves, text))
            waveform = joint;
        m_state->setText(text);
    } else {
        m_state->setText(QString("%1: %2").arg(records.first()->asked, records.first()->ended));
        waveform = records.first()->waveforms[size_t(core)];
    }
    if (!records.isEmpty())
        m_view->setNamesOf(records.first()->configuration);
    m_view->setWaveform(waveform);
    showState();
}

void CapturesPanel::compare(const CaptureRecord& a, const CaptureRecord& b)
{
    const OXA_CAPTURE::CapturedCore& core = a.capture->at(size_t(m_cores->currentIndex()));
    const auto other = std::find_if(b.capture->begin(), b.capture->end(),
        [&](const OXA_CAPTURE::CapturedCore& own) { return own.index == core.index; });
    const QString names = tr("A: %1, B: %2. ").arg(a.time, b.time);
    if (other == b.capture->end())
        return m_state->setText(names + tr("B has no core %1.").arg(core.index));
    if (!compareCores(core, *other, m_comparison))
        return m_state->setText(names + tr("They are too large to be compared."));
    QString text = m_comparison.samples == 0
        ? tr("No sample differs.")
        : tr("%1 samples differ, in %2.")
              .arg(QString::number(m_comparison.samples), namesText(m_comparison.differing));
    if (core.windows.size() != other->windows.size())
        text += ' '
            + tr("Only the first windows are compared: A has %1, B %2.")
                  .arg(
                      QString::number(core.windows.size()), QString::number(other->windows.size()));
    if (!m_comparison.onlyInOne.isEmpty())
        text += ' ' + tr("Only one of the two has %1.").arg(namesText(m_comparison.onlyInOne));
    m_state->setText(names + text);
}

void CapturesPanel::showDifference(int step)
{
    const qint64 sample = m_comparison.find(m_view->canvas()->cursor(0), step);
    if (sample < 0)
        return m_state->setText(step > 0 ? tr("There is no difference after cursor A.")
                                         : tr("There is no difference before cursor A."));
    m_view->canvas()->setCursor(0, sample);
    m_view->canvas()->reveal(sample);
}

void CapturesPanel::showState()
{
    const QList<CaptureRecordPtr> records = chosen();
    const bool isFree = !m_saver.isRunning();
    m_save->setEnabled(records.size() == 1 && isFree && !records.first()->capture->empty());
    m_remove->setEnabled(!records.isEmpty() && isFree);
    m_rehearse->setEnabled(records.size() == 1 && !records.first()->file.isEmpty());
    m_stop->setEnabled(m_job->isRunning());
    m_stop->setVisible(m_job->isRunning());
    for (QPushButton* button : {m_previous, m_next})
        button->setEnabled(m_comparison.samples > 0);
}
