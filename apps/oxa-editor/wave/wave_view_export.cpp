// SPDX-License-Identifier: Apache-2.0
// What leaves a WaveView: pictures and samples.
#include "wave_view.h"

#include "gtkwave.h"
#include "save_job.h"
#include "wave_canvas.h"
#include "wave_model.h"
#include "wave_picture.h"
#include "wave_span.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>

namespace {

/// `path`, with `suffix` unless it has one.
QString withSuffix(const QString& path, const QString& suffix)
{
    return path.isEmpty() || !QFileInfo(path).suffix().isEmpty() ? path : path + suffix;
}

}

void WaveView::copyPicture()
{
    QApplication::clipboard()->setImage(WavePicture(*m_rows, *m_canvas).image());
    say(tr("The picture is on the clipboard."));
}

void WaveView::exportPicture(const QString& path)
{
    QString error;
    say(WavePicture(*m_rows, *m_canvas).write(path, &error)
            ? tr("%1: written").arg(QDir::toNativeSeparators(path))
            : error);
}

void WaveView::exportSpans(const QString& path)
{
    const WaveSpans spans = m_canvas->markers().spans();
    if (spans.empty())
        return say(tr("Set the cursors A and B first: the samples between them are exported."));
    if (waveform()->joint)
        return say(tr("Choose one core to export samples of it."));
    if (m_save->isRunning())
        return say(tr("Another file is being written."));
    OXA_CAPTURE::CapturedCore core = cutSpans(*waveform(), spans);
    if (core.windows.empty())
        return say(tr("There are no samples to export."));
    core.clockHz = clock();
    OXA_CAPTURE::CaptureFileOptions options;
    options.states = m_model->states();
    m_save->start(path,
        std::make_shared<const OXA_CAPTURE::Capture>(OXA_CAPTURE::Capture {std::move(core)}),
        options);
}

void WaveView::askForPicture()
{
    const QString svg = tr("Scalable pictures (*.svg)");
    QString filter = svg;
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Export Picture"), {}, svg + ";;" + tr("Pictures (*.png)"), &filter);
    if (!path.isEmpty())
        exportPicture(withSuffix(path, filter == svg ? ".svg" : ".png"));
}

void WaveView::askForSpans()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export Samples Between Cursors"),
        {}, tr("Value change dumps (*.vcd);;All files (*)"));
    if (!path.isEmpty())
        exportSpans(withSuffix(path, ".vcd"));
}

void WaveView::openInGtkWave() { m_gtkWave->open(*waveform(), clock()); }
