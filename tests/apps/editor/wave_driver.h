// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APPS_EDITOR_WAVE_DRIVER_H
#define TESTS_APPS_EDITOR_WAVE_DRIVER_H

#include "window_driver.h"

#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxacapture/sample_text.h"
#include "support/signals.h"

#include <QTreeView>

/// A core with a bus `data` of four bits and a signal `go`; the windows as texts of five bits, each
/// with its trigger at sample 2.
inline OXA_CAPTURE::CapturedCore capturedOf(const QStringList& windows)
{
    OXA_CAPTURE::CapturedCore core;
    core.items = {busOf("data", 4), signalOf("go")};
    qint64 first = 0;
    for (const QString& text : windows) {
        OXA_CAPTURE::SampleTable samples = samplesOf({text});
        const OXA_CAPTURE::Window place {first, samples.size(), first + 2};
        first += samples.size() + 100;
        core.windows.push_back({place, std::move(samples)});
    }
    return core;
}

inline const QStringList kTwoWindows
    = {"00000 00011 10100 10101 x0100 1111x", "00010 00010 11110 00011 00011 00010"};

/// A shown view of these windows, and what a person does with it.
struct Shown {
    WaveView view;

    explicit Shown(const QStringList& windows = kTwoWindows, WaveSettings* settings = nullptr)
        : view(settings)
    {
        view.resize(1000, 400);
        view.setWaveform(capturedWaveform(capturedOf(windows), nullptr));
        view.show();
        view.activateWindow();
        view.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&view, kPatience));
    }

    void keys(const QString& text) { QTest::keyClicks(view.canvas(), text); }
    void key(Qt::Key key, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(view.canvas(), key, with);
    }

    void enter(const QString& label, const QString& text)
    {
        auto* edit = findIn<QLineEdit>(view, label);
        edit->setFocus();
        edit->setText(text);
        QTest::keyClick(edit, Qt::Key_Return);
        view.canvas()->setFocus();
    }

    QString state() const { return labelsIn(view); }

    /// The names and values that are in sight, "data=0 go=1".
    QString rows() const
    {
        QStringList texts;
        QModelIndex index = view.rows()->model()->index(0, 0);
        for (; index.isValid(); index = view.rows()->indexBelow(index))
            texts += index.data().toString() + '=' + index.siblingAtColumn(1).data().toString();
        return texts.join(' ');
    }

    void choose(int row) { view.rows()->setCurrentIndex(view.rows()->model()->index(row, 0)); }
    qint64 cursor(int which = 0) const { return view.canvas()->cursor(which); }
};

#endif
