// SPDX-License-Identifier: Apache-2.0
#include "window_driver.h"

#include "oxa-editor/build_panel.h"
#include "oxa-editor/part_choice.h"
#include "oxa-editor/target/target_panel.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/config/standard_config.h"

#include "support/live_target.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <QPlainTextEdit>
#include <QTcpServer>
#include <QTreeWidget>

namespace {

/// Takes windows of eight samples around n = `value`, the trigger the fourth; n counts samples.
std::unique_ptr<OXA::AoCore> makeCore(int index, const QString& value)
{
    auto core = coreOf(index, {busOf("n", 8)}, busOf("n", 8), value, 8, 3);
    core->windowNum = 2;
    return core;
}

QByteArray waveform()
{
    QStringList samples;
    for (int i = 0; i < 256; ++i)
        samples += QString("%1").arg(i, 8, 2, QChar('0'));
    return vcdOf(OXA::flattenedNames({busOf("n", 8)}), samples);
}

/// A window with the configuration and its panel.
struct Run : PanelDriver<TargetPanel> {
    Run(const TestFolder& folder, const QString& address)
        : PanelDriver(folder.path("chip.oxa"))
    {
        keys("Ctrl+9");
        enter("OpenOCD or port:", address);
        enter("TAP:", {});
    }

    void finish() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isRunning(), kPatience); }

    void capture()
    {
        keys("F9");
        finish();
    }

    void waitFor(const QString& text)
    {
        QTRY_VERIFY2_WITH_TIMEOUT(cores().contains(text), qPrintable(cores()), kPatience);
    }

    template <typename T> void set(int place, T& value, const T& other)
    {
        document().set({document().cores().at(place)}, value, other, "edit");
    }

    void setUnit(int place, const QString& value, OXA::MatchFunc func = OXA::MatchEqual)
    {
        OXA::MatchUnit changed = *core(place).matchUnits[0];
        changed.value0 = value;
        changed.matchFunc = func;
        set(place, *core(place).matchUnits[0], changed);
    }

    /// Lets core 0 wait for a value that is other than any, and starts.
    void neverTrigger()
    {
        setUnit(0, "XXXXXXXX", OXA::MatchNotEqual);
        keys("F9");
        waitFor("waiting for level 1 of 1");
    }

    QString cores() const
    {
        QStringList texts;
        for (int i = 0; i < panel.cores()->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = panel.cores()->topLevelItem(i);
            texts += item->text(0) + ": " + item->text(1) + ": " + item->text(2);
        }
        return texts.join('\n');
    }

    /// The values of n that are shown, and those at the triggers.
    QString samples() const
    {
        const WaveformPtr waveform = panel.view()->waveform();
        QStringList texts;
        for (qint64 sample = 0; sample < waveform->samples; ++sample)
            texts += valueText(waveform->rows.front()->valueAt(sample), Radix::Decimal);
        QStringList triggers;
        for (const WaveWindow& window : waveform->windows)
            triggers += texts.value(int(window.trigger));
        return texts.join(' ') + " @ " + triggers.join(' ');
    }
};

}

class TestEditorTarget : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void capturesAndTakesEditsOver();
    void aRunIsStopped();
    void forces();
    void whatCannotBeCaptured();
    void silentServer();
    void anotherDocument();
    void samplesThatAreNotSaved();
    void repeats();
    void startsOpenOcd();
    void savedSettings();

private:
    TestFolder m_folder;
    LiveTarget m_live;
};

void TestEditorTarget::initTestCase()
{
    const auto first = makeCore(0, "00010100"); // 20
    const auto second = makeCore(1, "01100100"); // 100
    OXA::writeOXAConfigToXml({first.get(), second.get()}, m_folder.path("chip.oxa"));
    writeFile(m_folder.path("wave.vcd"), waveform());
    QVERIFY2(m_live.start(m_folder.path("chip.oxa"), m_folder.path("wave.vcd"), {"--loop"}),
        m_live.target.said());
}

void TestEditorTarget::capturesAndTakesEditsOver()
{
    Run run(m_folder, m_live.address());
    run.press("Connect");
    run.finish();
    QCOMPARE(
        run.cores(), QString("core 0: 8 signals, 16 samples: \ncore 1: 8 signals, 16 samples: "));
    QVERIFY(run.state().contains("built from the configuration shown"));

    run.capture();
    QCOMPARE(run.problems(), QString());
    QCOMPARE(run.samples(), QString("17 18 19 20 21 22 23 24 17 18 19 20 21 22 23 24 @ 20 20"));
    run.panel.cores()->setCurrentItem(run.panel.cores()->topLevelItem(1));
    QVERIFY(run.samples().endsWith(" @ 100 100"));

    // Another value and other windows, in a chip that stays as it is.
    run.setUnit(1, "10000000");
    run.set(1, run.core(1).windowNum, 1);
    run.set(1, run.core(1).triggerPos, 0);
    run.set(1, run.core(1).captureAmount, 3);
    run.panel.cores()->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    run.capture();
    QCOMPARE(run.problems(), QString());
    QCOMPARE(run.samples(), QString("128 129 130 @ 128"));

    const QString file = writeFile(m_folder.path("captured.csv"), "old");
    auto* save = run.window.findChild<CaptureSaver*>()->findChild<SaveJob*>();
    const auto stop = connect(save, &SaveJob::progress, save, &SaveJob::stop, Qt::DirectConnection);
    run.panel.saveTo(file);
    QVERIFY(run.panel.isSaving() && !run.find<QAbstractButton>("Arm")->isEnabled());
    run.finish();
    QVERIFY2(run.state().contains("cannot be written: stopped"), qPrintable(run.state()));
    QCOMPARE(bytesOf(file), QByteArray("old"));
    disconnect(stop);
    run.panel.saveTo(file);
    run.finish();
    QVERIFY2(run.state().contains("captured.csv: written"), qPrintable(run.state()));
    QCOMPARE(bytesOf(file).count('\n'), 4);

    run.set(0, run.core().storageDepth, 32);
    run.panel.cores()->topLevelItem(0)->setCheckState(0, Qt::Checked);
    run.capture();
    const QString refused = "Nothing was captured: core 0 cannot be changed so without synthesis";
    QVERIFY2(run.state().contains(refused), qPrintable(run.state()));
    QVERIFY2(run.cores().endsWith("not captured"), qPrintable(run.cores()));
    QVERIFY(run.state().contains("not by the last run") && run.samples().startsWith("128"));
}

void TestEditorTarget::aRunIsStopped()
{
    Run run(m_folder, m_live.address());
    run.setUnit(1, "1XXXXXX1");
    run.neverTrigger();
    run.waitFor("core 1: 8 signals, 16 samples: captured");
    QVERIFY(run.panel.isRunning());
    run.keys("Shift+F9");
    run.finish();
    // A busy machine may play the waveform so slowly that the clock seems to stand.
    QVERIFY2(run.cores().contains("did not trigger: level 0 of 1 reached, M0 matched 0 times")
            && run.cores().contains("; its last 8 samples are shown, without a trigger"),
        qPrintable(run.cores()));
    const QStringList samples = run.samples().split(' ');
    QCOMPARE(samples.mid(8), QStringList({"@", ""})); // no sample is a trigger
}

void TestEditorTarget::forces()
{
    Run run(m_folder, m_live.address());
    run.set(0, run.core().windowNum, 1);
    run.neverTrigger();
    run.press("Force");
    run.finish();
    QVERIFY2(run.cores().startsWith(
                 "core 0: 8 signals, 16 samples: captured, 1 window, window 0 forced"),
        qPrintable(run.cores()));
    // At the trigger's flag, too, which is as wide as its text.
    WaveCanvas& canvas = *run.panel.view()->canvas();
    const WaveWindow& window = run.panel.view()->waveform()->windows.front();
    QCOMPARE(window.triggerText(), QString("forced"));
    const QImage picture = canvas.grab().toImage();
    const int x = int(canvas.scale().xOf(double(window.trigger))) + 1;
    const int end = x + canvas.fontMetrics().horizontalAdvance("forced");
    QCOMPARE(picture.pixelColor(x, 1), picture.pixelColor(end, 1));
    QVERIFY(picture.pixelColor(x, 1) != picture.pixelColor(end + 20, 1));
}

void TestEditorTarget::whatCannotBeCaptured()
{
    Run run(m_folder, "127.0.0.1:1");
    run.capture();
    QVERIFY2(run.state().contains("Not connected: OpenOCD: cannot connect to 127.0.0.1:1"),
        qPrintable(run.state()));
    auto* address = run.find<QLineEdit>("OpenOCD or port:");
    QVERIFY(!address->hasFocus()); // a key would replace it
    address->setText(m_live.address());
    QTest::keyClick(address, Qt::Key_Return);
    run.finish();
    QVERIFY(run.state().contains("built from the configuration shown"));
}

// The window goes on while somebody who says nothing is waited for, and a stop does not wait.
void TestEditorTarget::silentServer()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    Run run(m_folder, QString("127.0.0.1:%1").arg(server.serverPort()));
    run.press("Arm");
    run.keys("Ctrl+4");
    QCOMPARE(run.page(), QString("Match units"));
    QVERIFY(run.panel.isRunning());
    run.keys("Shift+F9");
    QVERIFY(run.state().contains("Stopping"));
    run.finish();
    QCOMPARE(run.problems(), QString());
    QVERIFY2(run.state().endsWith("Stopped."), qPrintable(run.state()));
}

void TestEditorTarget::anotherDocument()
{
    Run run(m_folder, m_live.address());
    run.neverTrigger();
    run.document().undoStack().setClean();
    const QString question
        = run.answering(QMessageBox::Yes, [&] { run.window.open(m_folder.example("uart.oxa")); });
    QVERIFY2(question.contains("A run is in progress"), qPrintable(question));
    run.finish();
    QCOMPARE(run.cores(), QString());
    QVERIFY(run.panel.view()->waveform()->rows.empty());
}

// They stay in the history, also when another configuration is opened; closing the window asks.
void TestEditorTarget::samplesThatAreNotSaved()
{
    Run run(m_folder, m_live.address());
    run.capture();
    const QString path = run.document().path();
    writeFile(path, bytesOf(path) + '\n');
    QTRY_VERIFY_WITH_TIMEOUT(run.message().contains("Another program"), kPatience);
    run.press("Reload");
    run.capture(); // with other samples than the first ones
    QVERIFY(run.window.open(m_folder.example("uart.oxa")));
    run.enter("OpenOCD or port:", "127.0.0.1:1");
    run.capture();
    const auto& history = *run.window.findChild<CaptureHistory*>();
    QCOMPARE(history.rowCount(), 3);
    QVERIFY2(history.at(0)->asked.startsWith("core 0: M0 (M0: T0 == 00010100), 2 × 8 samples"),
        qPrintable(history.at(0)->asked));
    QCOMPARE(history.at(1)->ended, QString("captured, 2 windows; captured, 2 windows"));
    QVERIFY2(history.at(2)->ended.contains("127.0.0.1:1"), qPrintable(history.at(2)->ended));

    const auto close = [&] { run.window.close(); };
    QCOMPARE(run.answering(QMessageBox::Cancel, close),
        QString("The samples of 2 captures are not saved."));
    QVERIFY(run.window.isVisible());
    const auto saving = [&](const QString& name) {
        run.choosing(m_folder.path(name), [&] { run.answering(QMessageBox::Save, close); });
    };
    run.answering(QMessageBox::Ok, [&] { saving("taken.doc"); });
    QVERIFY(run.window.isVisible()); // such a file cannot be written
    auto* saver = run.window.findChild<CaptureSaver*>();
    saver->start(history.at(0), m_folder.path("first.csv"));
    QTRY_VERIFY_WITH_TIMEOUT(!saver->isRunning(), kPatience);
    QCOMPARE(history.data(history.index(0, CaptureHistory::File)).toString(), QString("first.csv"));
    QVERIFY(run.answering(QMessageBox::Cancel, close).startsWith("The samples captured at "));
    saving("taken.csv");
    QVERIFY(!run.window.isVisible());
    QCOMPARE(bytesOf(m_folder.path("taken.csv")).count('\n'), 2 * 16 + 1);
}

// Neither the window nor the file says any more what the chip was built from.
void TestEditorTarget::savedSettings()
{
    qputenv("OXA_REMEMBER", "1");
    qputenv("XDG_DATA_HOME", m_folder.path("data").toUtf8());
    Run run(m_folder, m_live.address());
    run.window.findChild<PartChoice*>()->setKey("QX3A-10ALV-QFN88-C8|QX3A-10A");
    auto* build = run.window.findChild<BuildPanel*>();
    build->setWorkDir(m_folder.path("work"));
    run.keys("F7");
    QTRY_VERIFY_WITH_TIMEOUT(!build->isRunning(), kPatience);
    run.setUnit(0, "00011110");
    run.keys("Ctrl+S");
    run.capture();
    QVERIFY2(run.samples().endsWith(" @ 30 30"), qPrintable(run.samples()));
}

// Each capture to a file; they are not unsaved then. Without files, the last one is kept.
void TestEditorTarget::repeats()
{
    Run run(m_folder, m_live.address());
    run.enter("Captures:", "3");
    run.enter("Files:", "cap.vcd");
    run.keys("F9");
    QVERIFY2(run.state().contains("needs one place for the number"), qPrintable(run.state()));
    run.enter("Files:", "cap-%02d.csv");
    run.capture();
    QVERIFY2(run.state().contains(" s, cap-00.csv to cap-02.csv"), qPrintable(run.state()));
    for (const char* name : {"cap-00.csv", "cap-01.csv", "cap-02.csv"})
        QCOMPARE(bytesOf(m_folder.path(name)).count('\n'), 2 * 16 + 1);
    QVERIFY(run.samples().endsWith(" @ 20 20"));
    const auto& history = *run.window.findChild<CaptureHistory*>();
    QVERIFY(history.at(0)->ended.startsWith("3 captures in "));
    QVERIFY(history.at(0)->file.endsWith("/cap-02.csv") && history.unsaved().isEmpty());
    const QString question = run.answering(QMessageBox::No, [&] { run.keys("F9"); });
    QVERIFY2(question.startsWith("cap-00.csv exists."), qPrintable(question));
    QVERIFY(!run.panel.isRunning());

    run.enter("Files:", {});
    run.enter("Captures:", "0");
    run.keys("F9");
    run.waitFor("capture 3: ");
    run.keys("Shift+F9");
    run.finish();
    QVERIFY2(run.state().contains(" captures in "), qPrintable(run.state()));
    QVERIFY2(run.samples().endsWith(" @ 20 20"), qPrintable(run.samples()));
    QCOMPARE(history.unsaved().size(), 1);
    run.answering(QMessageBox::Discard, [&] { run.window.close(); });
}

// It ends with the window: the target serves one OpenOCD at a time.
void TestEditorTarget::startsOpenOcd()
{
    m_live.openocd.end();
    {
        Run run(m_folder, "127.0.0.1:1");
        const auto connecting = [&](const QString& file) {
            run.enter("Start OpenOCD with:", file);
            run.press("Connect");
            run.finish();
            return run.state();
        };
        QVERIFY2(connecting("/none.cfg").contains("no such file"), qPrintable(run.state()));
        const QString wrong = writeFile(m_folder.path("wrong.cfg"), "adapter driver none\n");
        QVERIFY2(connecting(wrong).contains("OpenOCD has ended: "), qPrintable(run.state()));
        const QString right = writeFile(m_folder.path("right.cfg"),
            "set OXA_PORT " + m_live.port()
                + "\nsource " OXA_BINARY_DIR "/share/oxautils/openocd/simulated-target.cfg\n");
        QVERIFY2(connecting(right).contains("built from the configuration shown"),
            qPrintable(run.state()));
        const auto* output = run.find<QPlainTextEdit>("Output of OpenOCD");
        QVERIFY(output && output->toPlainText().contains("Listening"));
        run.capture(); // through the same one
        QVERIFY2(run.samples().endsWith(" @ 20 20"), qPrintable(run.samples()));
        run.press("End");
        QTRY_VERIFY_WITH_TIMEOUT(run.state().contains("OpenOCD has ended."), kPatience);
        run.press("Connect");
        run.finish();
        QVERIFY(run.state().contains("built from the configuration shown"));
    }
    QSettings().remove("target/openocdConfiguration");
    QVERIFY(m_live.connectOpenOcd());
}

QTEST_MAIN(TestEditorTarget)
#include "test_editor_target.moc"
