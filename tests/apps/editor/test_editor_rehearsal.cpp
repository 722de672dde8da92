// SPDX-License-Identifier: Apache-2.0
#include "window_driver.h"

#include "oxa-editor/wave/rehearsal_panel.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_row_menu.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/config/standard_config.h"

#include "support/signals.h"
#include "support/waveforms.h"

#include <QTreeView>

namespace {

// A count of three bits, and a signal that only the trigger sees.
const QStringList kNames {"count[2]", "count[1]", "count[0]", "go"};

QStringList counting(int samples)
{
    QStringList texts;
    for (int i = 0; i < samples; ++i)
        texts += QString("%1%2").arg(i % 8, 3, 2, QChar('0')).arg(i >= 8 ? 1 : 0);
    return texts;
}

/// Takes windows of four samples, the trigger the second, around M0.
std::unique_ptr<OXA::AoCore> makeCore()
{
    auto core = coreOf(0, {busOf("count", 3)}, busOf("count", 3), "101", 4, 1);
    core->triggers[1]->signalList = {signalOf("go")};
    enableUnit(*core, 1, 1, "1");
    return core;
}

/// A window with the core and its rehearsal.
struct Run : PanelDriver<RehearsalPanel> {
    explicit Run(const TestFolder& folder, const QString& stimulus = {},
        const QString& configuration = "core.oxa")
        : PanelDriver(folder.path(configuration))
        , folder(folder)
    {
        keys("Ctrl+8");
        if (!stimulus.isEmpty())
            rehearse(stimulus);
    }

    void rehearse(const QString& stimulus)
    {
        enter("Stimulus:", folder.path(stimulus));
        settle();
    }

    void settle() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isBusy(), kPatience); }

    template <typename T> void set(T& value, const T& other)
    {
        document().set({document().cores().at(0)}, value, other, "edit");
    }

    void setUnit(int unit, const QString& value)
    {
        OXA::MatchUnit changed = *core().matchUnits[unit];
        changed.value0 = value;
        set(*core().matchUnits[unit], changed);
    }

    /// "4+4@5 count go": four samples from number 4 on, the trigger at number 5, and all rows.
    QString shown()
    {
        settle();
        QStringList texts;
        for (const WaveWindow& window : panel.view()->waveform()->windows)
            texts += QString("%1+%2@%3").arg(window.first).arg(window.samples).arg(window.trigger);
        for (const auto& row : panel.view()->waveform()->rows)
            texts += row->name;
        return texts.join(' ');
    }

    const TestFolder& folder;
};

}

class TestEditorRehearsal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void followsEdits();
    void thePositionIsWhereItsLabelSays();
    void anotherCoreForces();
    void problemsAreListed();
    void theRowsHaveTheirOwnUndo();
    void theLastEditCounts();
    void followsTheFile();
    void stimulusStaysWithItsDocument();

private:
    TestFolder m_folder;
};

void TestEditorRehearsal::initTestCase()
{
    OXA::writeOXAConfigToXml({makeCore().get()}, m_folder.path("core.oxa"));
    writeFile(m_folder.path("wave.vcd"), vcdOf(kNames, counting(20)));
    writeFile(m_folder.path("large.vcd"), vcdOf(kNames, counting(200000)));
}

void TestEditorRehearsal::followsEdits()
{
    Run run(m_folder, "wave.vcd");
    QCOMPARE(run.shown(), QString("4+4@5 count go M0 M1 0: M0 trigger"));
    run.setUnit(0, "110");
    QVERIFY(run.shown().startsWith("5+4@6"));
    run.set(run.core().expressions, {"M0", "M0 && M1"});
    QCOMPARE(run.shown(), QString("13+4@14 count go M0 M1 0: M0 1: M0 && M1 level trigger"));
    run.keys("Ctrl+Z");
    run.keys("Ctrl+Z");
    QVERIFY(run.shown().startsWith("4+4@5"));
    OXA::CoreStorage storage;
    storage.keep = OXA::CoreStorage::Changes;
    storage.watch = QStringList {"count[2]"};
    run.set(run.core().storage, storage);
    QCOMPARE(run.shown(), QString("4+9@5 count go M0 M1 0: M0 trigger stored"));
    QVERIFY2(run.state().contains("4 samples from 4 on, which span 9"), qPrintable(run.state()));
    const WaveRow& stored = *run.panel.view()->waveform()->rows.back();
    QString flags;
    for (int sample = 3; sample < 14; ++sample)
        flags += "01x"[int(stored.bitAt(sample))];
    QCOMPARE(flags, QString("x110010001x"));
    run.keys("Ctrl+Z");
    run.set(run.core().expressions, {"M1 && M0 && !M1"});
    QVERIFY(run.shown().startsWith("count"));
    QVERIFY2(run.state().contains("does not trigger: level 0 of 1 reached, M0 matched 2 times"),
        qPrintable(run.state()));
}

// Entered on the page, drawn there, and where the trigger falls in the window.
void TestEditorRehearsal::thePositionIsWhereItsLabelSays()
{
    Run run(m_folder, "wave.vcd");
    for (const int position : {0, 2, 3}) {
        run.keys("Ctrl+1");
        run.enter("Trigger position:", QString::number(position));
        run.settle();
        const QString label = run.find<QWidget>("Drawing of the window")->accessibleDescription();
        QVERIFY2(label.startsWith(QString("%1 before the trigger, %2 from the trigger on")
                                      .arg(position)
                                      .arg(4 - position)),
            qPrintable(label));
        QCOMPARE(run.panel.view()->waveform()->windows.size(), size_t(1));
        const WaveWindow& window = run.panel.view()->waveform()->windows.front();
        QCOMPARE(window.trigger - window.first, position);
        QCOMPARE(window.samples, 4);
    }
}

// A core that never triggers itself, forced by one behind it; and without the signals of that one.
void TestEditorRehearsal::anotherCoreForces()
{
    const auto forced = makeCore();
    forced->expressions = QStringList {"M0 && !M0"};
    const auto forcing = coreOf(7, {signalOf("go")}, busOf("count", 3), "101", 4, 1);
    OXA::writeOXAConfigToXml({forced.get(), forcing.get()}, m_folder.path("two.oxa"));
    Run run(m_folder, "wave.vcd", "two.oxa");
    QVERIFY(run.shown().startsWith("count"));
    OXA::CoreEvents events;
    events.forcedBy = {7};
    run.set(run.core().events, events);
    QVERIFY2(run.shown().startsWith("8+4@9 "), qPrintable(run.shown() + run.state()));
    QVERIFY2(run.state().contains("forced at sample 9"), qPrintable(run.state()));
    run.document().set({run.document().cores().at(1)}, run.core(1).triggers[0]->signalList,
        {busOf("nowhere", 3)}, "edit");
    QVERIFY(run.shown().startsWith("count"));
    QVERIFY2(run.state().contains("without the triggers of other cores: nowhere"),
        qPrintable(run.state()));
}

void TestEditorRehearsal::problemsAreListed()
{
    const struct {
        const char *expression, *clock, *stimulus;
        const char *problem, *shown;
    } rows[] = {
        {"M0",      "clk", "nothing.vcd", "nothing.vcd",     ""                                  },
        {"M0",      "",    "wave.vcd",    "no sample clock", ""                                  },
        {"M0 && (", "clk", "wave.vcd",    "expression 0",    "count go"                          },
        {"M0",      "clk", "wave.vcd",    nullptr,           "4+4@5 count go M0 M1 0: M0 trigger"},
    };
    Run run(m_folder);
    for (const auto& row : rows) {
        run.set(run.core().sampleClock, QString(row.clock));
        run.set(run.core().expressions, {row.expression});
        run.rehearse(row.stimulus);
        QVERIFY2(run.problems().contains(row.problem), qPrintable(run.problems()));
        QCOMPARE(run.panel.problems()->isVisible(), bool(row.problem));
        QCOMPARE(run.shown(), QString(row.shown));
    }
}

// With the same keys as the configuration's.
void TestEditorRehearsal::theRowsHaveTheirOwnUndo()
{
    Run run(m_folder, "wave.vcd");
    const int before = run.document().undoStack().index();
    WaveView& view = *run.panel.view();
    const auto rows = [&] { return view.rows()->model()->rowCount(); };
    const auto press = [&](QWidget* widget, Qt::KeyboardModifiers with) {
        run.activate();
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Z, with);
    };
    const int all = rows();
    view.rows()->setCurrentIndex(view.rows()->model()->index(0, 0));
    view.rowMenu().hideRows();
    view.rows()->expand(view.rows()->model()->index(0, 0)); // no step of its own
    view.rowMenu().addDivider();
    QCOMPARE(rows(), all);
    press(view.canvas(), Qt::ControlModifier);
    QCOMPARE(rows(), all - 1);
    press(view.rows(), Qt::ControlModifier);
    QCOMPARE(rows(), all);
    press(view.canvas(), Qt::ControlModifier);
    QVERIFY2(run.state().contains("no change of the rows to undo"), qPrintable(run.state()));
    press(view.canvas(), Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(rows(), all - 1);
    QCOMPARE(run.document().undoStack().index(), before);
}

// The user edits, and closes the window, while a thread reads a large stimulus.
void TestEditorRehearsal::theLastEditCounts()
{
    auto run = std::make_unique<Run>(m_folder);
    auto* rehearsal = run->panel.findChild<Rehearsal*>();
    QSignalSpy progress(rehearsal, &Rehearsal::progress);
    QSignalSpy finished(rehearsal, &Rehearsal::finished);
    run->enter("Stimulus:", m_folder.path("large.vcd"));
    for (int value = 0; value < 8; ++value) {
        run->setUnit(0, QString("%1").arg(value, 3, 2, QChar('0')));
        QTest::qWait(value == 3 ? 300 : 1);
    }
    run->setUnit(0, "011");
    QVERIFY(run->shown().startsWith("2+4@3"));
    QVERIFY(finished.size() <= 2);

    finished.clear();
    progress.clear();
    QFile::copy(m_folder.path("large.vcd"), m_folder.path("again.vcd"));
    run->enter("Stimulus:", m_folder.path("again.vcd"));
    QTRY_VERIFY_WITH_TIMEOUT(progress.size() > 0, kPatience);
    run.reset();
    QCOMPARE(finished.size(), 0);
}

void TestEditorRehearsal::followsTheFile()
{
    writeFile(m_folder.path("changing.vcd"), vcdOf(kNames, counting(20)));
    Run run(m_folder, "changing.vcd");
    QVERIFY(run.shown().startsWith("4+4@5"));
    QTest::qWait(20); // the file's time has to be another
    writeFile(m_folder.path("changing.vcd"), vcdOf(kNames, counting(20).mid(2)));
    QTRY_VERIFY_WITH_TIMEOUT(run.shown().startsWith("2+4@3"), kPatience);
}

void TestEditorRehearsal::stimulusStaysWithItsDocument()
{
    Run run(m_folder, "wave.vcd");
    run.window.open(m_folder.example("uart.oxa"));
    QCOMPARE(run.shown(), QString());
    QCOMPARE(run.panel.stimulus(), QString());
    QVERIFY(run.state().contains("Choose a stimulus"));
    run.keys("Ctrl+8");
    QVERIFY(run.find<QLineEdit>("Stimulus:")->hasFocus());
    run.window.open(m_folder.path("core.oxa"));
    QVERIFY(run.shown().startsWith("4+4@5"));
    QCOMPARE(run.panel.stimulus(), m_folder.path("wave.vcd"));
    run.press("Remove the core");
    run.settle();
    QVERIFY(run.state().contains("There is no core"));
}

QTEST_MAIN(TestEditorRehearsal)
#include "test_editor_rehearsal.moc"
