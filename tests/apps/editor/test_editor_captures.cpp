// SPDX-License-Identifier: Apache-2.0
#include "window_driver.h"

#include "oxa-editor/captures/captures_panel.h"
#include "oxa-editor/recent_files.h"
#include "oxa-editor/unit_dialog.h"
#include "oxa-editor/wave/rehearsal_panel.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/config/standard_config.h"

#include "oxacapture/sample_text.h"
#include "support/signals.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTreeView>

using namespace OXA_CAPTURE;

namespace {

/// Windows of a count of three bits and a signal; `samples` of each, and where their triggers are.
Capture captureOf(const QStringList& windows, const QList<int>& triggers)
{
    CapturedCore core;
    core.items = {busOf("count", 3), signalOf("busy")};
    for (int i = 0; i < windows.size(); ++i) {
        CapturedWindow window;
        window.samples = samplesOf({windows.at(i)});
        window.place = {0, window.samples.size(), triggers.at(i)};
        core.windows.push_back(window);
    }
    return {core};
}

/// A window with the panel of the captures.
struct Run : PanelDriver<CapturesPanel> {
    explicit Run(const TestFolder& folder, const QString& configuration = {})
        : PanelDriver(configuration)
        , folder(folder)
    {
        keys("Ctrl+Shift+H");
    }

    /// Opens the file through the menu.
    void open(const QString& name)
    {
        choosing(folder.path(name), [&] { keys("Ctrl+Shift+O"); });
        settle();
    }

    void drop(const QString& name)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(folder.path(name))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        const int before = panel.list()->model()->rowCount();
        QApplication::sendEvent(&window, &event);
        QTRY_COMPARE_WITH_TIMEOUT(panel.list()->model()->rowCount(), before + 1, kPatience);
    }

    void settle() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isOpening(), kPatience); }

    void select(const QList<int>& rows)
    {
        panel.list()->clearSelection();
        for (const int row : rows)
            panel.list()->selectionModel()->select(panel.list()->model()->index(row, 0),
                QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    /// The names of the rows, with their values.
    QStringList rows() const
    {
        const WaveformPtr waveform = panel.view()->waveform();
        QStringList texts;
        for (const auto& row : waveform->rows) {
            QString text = row->name + ':';
            for (qint64 sample = 0; sample < waveform->samples; ++sample)
                text += ' ' + valueText(row->valueAt(sample), Radix::Decimal);
            texts += text;
        }
        return texts;
    }

    /// Chooses the entry that begins with `text` from the menu for a sample of a row: at its edge,
    /// or in its middle. Returns the whole entry; empty when it is disabled.
    QString choose(const QString& text, const QModelIndex& row, qint64 sample, bool edge)
    {
        WaveCanvas& canvas = *panel.view()->canvas();
        const QTreeView& rows = *panel.view()->rows();
        const QRect place = rows.visualRect(row);
        const int x = int(canvas.scale().xOf(double(sample) + (edge ? 0 : 0.5))) + 1;
        const int y = rows.viewport()->mapToGlobal(place.center()).y();
        const QPoint global(canvas.mapToGlobal(QPoint(x, 0)).x(), y);
        QString entry;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction* action : menu->actions()) {
                if (!action->text().remove('&').startsWith(text))
                    continue;
                timer.stop();
                entry = action->isEnabled() ? action->text().remove('&') : QString();
                menu->close();
                if (!entry.isEmpty())
                    action->trigger();
                return;
            }
        });
        timer.start(5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, canvas.mapFromGlobal(global), global);
        QApplication::sendEvent(&canvas, &event);
        return entry;
    }

    QString choose(const QString& text, int row, qint64 sample, bool edge)
    {
        return choose(text, panel.view()->rows()->model()->index(row, 0), sample, edge);
    }

    qint64 cursor() const { return panel.view()->canvas()->cursor(0); }

    const TestFolder& folder;
};

}

class TestEditorCaptures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void savedCapturesOpen_data();
    void savedCapturesOpen();
    void twoAreCompared();
    void aCaptureIsRehearsed();
    void aValueBecomesATrigger();
    void aRowBelongsToItsCore();

private:
    TestFolder m_folder;
};

// The second one was triggered a sample later in its window, and has another count there.
void TestEditorCaptures::initTestCase()
{
    const Capture first = captureOf({"0000 0010 0101 0110", "1000 1010"}, {1, 0});
    const Capture second = captureOf({"1110 0000 0010 0111 0110", "1000 1010"}, {2, 0});
    for (const QString name : {"a.vcd", "a.csv", "a.fst"})
        QVERIFY(writeCapture(m_folder.path(name), first, nullptr));
    Capture timed = first;
    timed[0].clockHz = 1e6;
    QVERIFY(writeCapture(m_folder.path("a.sr"), timed, nullptr));
    QVERIFY(writeCapture(m_folder.path("b.vcd"), second, nullptr));
    QVERIFY(writeCapture(
        m_folder.path("c.vcd"), captureOf({"0000 0010 0001 0010 0000 0001"}, {1}), nullptr));
    Capture two = first;
    two.push_back(first.front());
    two[0].clockHz = two[1].clockHz = 1e6;
    two[1].index = 1;
    QVERIFY(writeCapture(m_folder.path("two.vcd"), two, nullptr));
    writeFile(m_folder.path("bad.csv"), "core,window,sample,trigger,a\n0,0,0,0,7\n");
    const auto core = coreOf(0, {busOf("count", 3)}, busOf("count", 3), "011", 2, 1);
    core->triggers[1]->signalList = {signalOf("busy")};
    core->sampleClock = "clk"; // which a capture does not have
    OXA::writeOXAConfigToXml({core.get()}, m_folder.path("core.oxa"));
    const auto other = coreOf(1, {busOf("count", 3)}, busOf("count", 3), "011", 2, 1);
    OXA::writeOXAConfigToXml({core.get(), other.get()}, m_folder.path("cores.oxa"));
}

void TestEditorCaptures::savedCapturesOpen_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file : {"a.vcd", "a.fst", "a.csv"})
        QTest::newRow(file) << file;
}

void TestEditorCaptures::savedCapturesOpen()
{
    QFETCH(QString, file);
    Run run(m_folder);
    run.open(file);
    QCOMPARE(run.rows(), QStringList({"count: 0 1 2 3 4 5", "busy: 0 0 1 0 0 0"}));
    const auto& windows = run.panel.view()->waveform()->windows;
    QCOMPARE(windows.size(), size_t(2));
    QCOMPARE(windows[0].trigger, 1);
    QCOMPARE(windows[1].trigger, 4);
    run.open("a.sr"); // has no windows
    QCOMPARE(run.rows(),
        QStringList({"count: 0 1 2 3 4 5", "busy: 0 0 1 0 0 0", "trigger: 0 1 0 0 1 0",
            "window: 0 0 0 0 1 1"}));
    QCOMPARE(run.panel.view()->waveform()->captured.clockHz, 1e6);
    run.open("two.vcd");
    auto& cores = *run.panel.findChild<QComboBox*>();
    QCOMPARE(cores.count(), 3);
    cores.setCurrentIndex(2);
    Q_EMIT cores.activated(2);
    QCOMPARE(run.rows().size(), 6);
    QVERIFY2(run.state().contains("times in each window, core 0 at 1000000 Hz, core 1 at"),
        qPrintable(run.state()));
    QVERIFY(run.window.close()); // without a question
}

// Window by window, with the triggers at the same sample.
void TestEditorCaptures::twoAreCompared()
{
    Run run(m_folder);
    run.drop("a.vcd");
    run.drop("b.vcd");
    QCOMPARE(run.panel.list()->model()->rowCount(), 2);
    QVERIFY(!run.find<QAbstractButton>("Next difference")->isEnabled());
    run.select({0, 1});
    QCOMPARE(run.rows(),
        QStringList({"differences: 0 0 0 1 0 0 0", "count (A): x 0 1 2 3 4 5",
            "count (B): 7 0 1 3 3 4 5", "≠ count: 0 0 0 1 0 0 0", "busy: x 0 0 1 0 0 0"}));
    QVERIFY2(run.state().contains("1 samples differ, in count."), qPrintable(run.state()));
    run.press("Next difference");
    QCOMPARE(run.cursor(), 3);
    QTest::keyClick(run.panel.view()->canvas(), Qt::Key_D);
    QCOMPARE(run.cursor(), 3);
    QVERIFY(run.state().contains("no difference after"));
    run.panel.view()->canvas()->setCursor(0, 6);
    run.press("Previous difference");
    QCOMPARE(run.cursor(), 3);

    // A table has four bits for a digit: the fourth one has nothing to be compared with.
    run.open("a.csv");
    run.select({0, 2});
    QVERIFY2(run.state().contains("No sample differs."), qPrintable(run.state()));
    run.open("bad.csv");
    QVERIFY2(run.state().contains("bad.csv:2: a cannot be \"7\""), qPrintable(run.state()));
    run.select({1});
    run.press("Remove");
    QCOMPARE(run.panel.list()->model()->rowCount(), 2);
    const auto recent = run.window.findChildren<RecentFiles*>();
    QCOMPARE(recent.size(), 2);
    QVERIFY(recent.last()->actions().first()->text().contains("a.csv"));
    QVERIFY(recent.first()->actions().isEmpty());
}

// Without the sample clock, which no capture contains.
void TestEditorCaptures::aCaptureIsRehearsed()
{
    for (const QString file : {"a.vcd", "a.csv", "a.sr"}) {
        Run run(m_folder, m_folder.path("core.oxa"));
        run.open(file);
        run.press("Rehearse");
        auto& rehearsal = *run.window.findChild<RehearsalPanel*>();
        QTRY_VERIFY_WITH_TIMEOUT(!rehearsal.isBusy() && rehearsal.isVisible(), kPatience);
        const auto& windows = rehearsal.view()->waveform()->windows;
        QVERIFY2(windows.size() == 1, qPrintable(textsIn(*rehearsal.problems())));
        QCOMPARE(windows.front().trigger, 3);
        run.core().triggers[0]->signalList = {signalOf("other")};
        rehearsal.setCore(run.document().cores().first());
        QTRY_VERIFY_WITH_TIMEOUT(!rehearsal.isBusy(), kPatience);
        QVERIFY2(textsIn(*rehearsal.problems()).contains("other: is not in the capture"),
            qPrintable(textsIn(*rehearsal.problems())));
    }
}

// And an edge; or a data signal. The unit is shown before it is stored.
void TestEditorCaptures::aValueBecomesATrigger()
{
    Run run(m_folder, m_folder.path("core.oxa"));
    run.open("c.vcd");
    const auto accepting = [&](int row, qint64 sample, bool edge) {
        QString entry;
        run.inModal<UnitDialog>(
            [](UnitDialog* dialog) {
                dialog->accept();
                return true;
            },
            [&] { entry = run.choose("Trigger on this", row, sample, edge); });
        return entry;
    };
    QCOMPARE(accepting(0, 1, true), QString("Trigger on this (001)…")); // of a bus
    QCOMPARE(run.core().matchUnits[0]->value0, QString("001"));
    QCOMPARE(run.page(), QString("Match units"));
    QCOMPARE(run.document().undoStack().undoText(), QString("trigger on count"));
    QCOMPARE(accepting(1, 2, true), QString("Trigger on this (rising edge)…"));
    const OXA::MatchUnit& edge = *run.core().matchUnits[1];
    QVERIFY(edge.enabled && edge.matchType == OXA::MatchBasicEdges && edge.value0 == "R");
    QCOMPARE(accepting(1, 3, false), QString("Trigger on this (0)…"));
    QCOMPARE(edge.value0, QString("0"));

    QVERIFY(!run.choose("Find next", 0, 1, false).isEmpty());
    QCOMPARE(run.cursor(), 3);
    QVERIFY(!run.choose("Find next", 1, 2, true).isEmpty());
    QCOMPARE(run.cursor(), 5);
    QCOMPARE(run.choose("Add to data signals", 0, 1, false), QString()); // count is one
    QVERIFY(!run.choose("Add to data signals", 1, 1, false).isEmpty());
    QCOMPARE(run.page(), QString("Signals"));
    QCOMPARE(OXA::flattenedNames(run.core().captureSignals),
        QStringList({"count[2]", "count[1]", "count[0]", "busy"}));
    run.core().triggers[1]->signalList.clear();
    QCOMPARE(
        run.choose("Trigger on this (no trigger port has the signal)", 1, 1, false), QString());
}

// Where all cores are shown, the row chooses the core, not the list of cores.
void TestEditorCaptures::aRowBelongsToItsCore()
{
    Run run(m_folder, m_folder.path("cores.oxa"));
    run.open("two.vcd");
    QTreeView& rows = *run.panel.view()->rows();
    auto& cores = *run.panel.findChild<QComboBox*>();
    cores.setCurrentIndex(2);
    Q_EMIT cores.activated(2);
    for (const int core : {1, 0}) {
        const QModelIndex busy = rows.model()->index(1, 0, rows.model()->index(core, 0));
        QCOMPARE(busy.data().toString(), QString("busy"));
        rows.scrollTo(busy);
        QVERIFY(!run.choose("Add to data signals", busy, 1, false).isEmpty());
        QCOMPARE(run.core(core).dataSignals().last(), QString("busy"));
        QCOMPARE(run.core(1 - core).dataSignals().size(), core == 1 ? 3 : 4);
    }
}

QTEST_MAIN(TestEditorCaptures)
#include "test_editor_captures.moc"
