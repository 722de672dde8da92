#include "window_driver.h"

#include "oxa-editor/core_list.h"
#include "oxa-editor/wave/rehearsal_panel.h"
#include "oxa-editor/wave/wave_canvas.h"
#include "oxa-editor/wave/wave_view.h"

#include "oxautils/config/lite_config.h"
#include "oxautils/config/standard_config.h"

#include "support/rows.h"
#include "support/signals.h"
#include "support/waveforms.h"

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

struct ProblemRow {
    const char* what;
    const char *expression, *clock, *stimulus;
    const char* problem;
    bool signalsAreShown;
};

const ProblemRow kProblems[] = {
    {"no such file",       "M0",      "clk", "nothing.vcd", "nothing.vcd",     false},
    {"no sample clock",    "M0",      "",    "wave.vcd",    "no sample clock", false},
    {"half an expression", "M0 && (", "clk", "wave.vcd",    "expression 0",    true },
};

}

class TestEditorRehearsal : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void followsEdits();
    void problemsAreListed_data();
    void problemsAreListed();
    void theLastEditCounts();
    void followsTheFile();
    void stimulusStaysWithItsDocument();
    void liteCores();
    void closingDropsTheRun();

private:
    struct Run;

    TestFolder m_folder;
};

/// A window with the core and its rehearsal.
struct TestEditorRehearsal::Run : PanelDriver<RehearsalPanel> {
    Run(const TestFolder& folder, const QString& stimulus)
        : PanelDriver(folder.path("core.oxa"))
    {
        keys("Ctrl+8");
        if (stimulus.isEmpty())
            return;
        enter("Stimulus:", folder.path(stimulus));
        settle();
    }

    void settle() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isBusy(), kPatience); }

    void set(int unit, const QString& value)
    {
        OXA::MatchUnit changed = *core().matchUnits[unit];
        changed.value0 = value;
        document().set({document().cores().at(0)}, *core().matchUnits[unit], changed, "value");
    }

    void setExpressions(const QStringList& expressions)
    {
        document().set({document().cores().at(0)}, core().expressions, expressions, "expressions");
    }

    /// "4+4@5": four samples from number 4 on, the trigger at number 5.
    QString windows() const
    {
        QStringList texts;
        for (const WaveWindow& window : panel.view()->waveform()->windows)
            texts += QString("%1+%2@%3").arg(window.first).arg(window.samples).arg(window.trigger);
        return texts.join(' ');
    }

    QStringList rows() const
    {
        QStringList names;
        for (const auto& row : panel.view()->waveform()->rows)
            names += row->name;
        return names;
    }
};

void TestEditorRehearsal::initTestCase()
{
    OXA::writeOXAConfigToXml({makeCore().get()}, m_folder.path("core.oxa"));
    writeFile(m_folder.path("wave.vcd"), vcdOf(kNames, counting(20)));
}

void TestEditorRehearsal::followsEdits()
{
    Run run(m_folder, "wave.vcd");
    QCOMPARE(run.windows(), QString("4+4@5"));
    QVERIFY2(
        run.state().contains("trigger at sample 5, 4 samples from 4 on"), qPrintable(run.state()));
    const QStringList rows {"count", "go", "M0", "M1", "0: M0", "trigger"};
    QCOMPARE(run.rows(), rows);
    run.set(0, "110");
    run.settle();
    QCOMPARE(run.windows(), QString("5+4@6"));
    run.setExpressions({"M0", "M0 && M1"});
    run.settle();
    QCOMPARE(run.windows(), QString("13+4@14"));
    QCOMPARE(run.rows().mid(4), (QStringList {"0: M0", "1: M0 && M1", "level", "trigger"}));
    run.keys("Ctrl+Z");
    run.keys("Ctrl+Z");
    run.settle();
    QCOMPARE(run.windows(), QString("4+4@5"));
    run.set(1, "0");
    run.setExpressions({"M0", "M1"});
    run.settle();
    QCOMPARE(run.windows(), QString("5+4@6"));
    run.setExpressions({"M1 && M0 && !M1"});
    run.settle();
    QCOMPARE(run.windows(), QString());
    QVERIFY2(run.state().contains("does not trigger: level 0 of 1 reached, M0 matched 2 times"),
        qPrintable(run.state()));
}

void TestEditorRehearsal::problemsAreListed_data() { addRows(kProblems); }

void TestEditorRehearsal::problemsAreListed()
{
    const ProblemRow& row = rowOf(kProblems);
    Run run(m_folder, {});
    const CorePtr core = run.document().cores().at(0);
    run.document().set({core}, core->sampleClock(), QString(row.clock), "clock");
    run.setExpressions({row.expression});
    run.enter("Stimulus:", m_folder.path(row.stimulus));
    run.settle();
    QVERIFY2(run.problems().contains(row.problem), qPrintable(run.problems()));
    QVERIFY(run.panel.problems()->isVisible());
    QCOMPARE(run.rows().contains("count"), row.signalsAreShown);
    QCOMPARE(run.windows(), QString());

    run.document().set({core}, core->sampleClock(), QString("clk"), "clock");
    run.setExpressions({"M0"});
    run.enter("Stimulus:", m_folder.path("wave.vcd"));
    run.settle();
    QVERIFY(!run.panel.problems()->isVisible());
    QCOMPARE(run.windows(), QString("4+4@5"));
}

// Edits come while a run that reads a large stimulus is under way.
void TestEditorRehearsal::theLastEditCounts()
{
    writeFile(m_folder.path("large.vcd"), vcdOf(kNames, counting(200000)));
    Run run(m_folder, {});
    QSignalSpy shown(run.panel.findChild<Rehearsal*>(), &Rehearsal::finished);
    run.enter("Stimulus:", m_folder.path("large.vcd"));
    for (int value = 0; value < 8; ++value) {
        run.set(0, QString("%1").arg(value, 3, 2, QChar('0')));
        QTest::qWait(value == 3 ? 300 : 1);
    }
    run.set(0, "011");
    run.settle();
    QCOMPARE(run.windows(), QString("2+4@3"));
    QVERIFY(shown.size() <= 2);
}

void TestEditorRehearsal::followsTheFile()
{
    writeFile(m_folder.path("changing.vcd"), vcdOf(kNames, counting(20)));
    Run run(m_folder, "changing.vcd");
    QCOMPARE(run.windows(), QString("4+4@5"));
    QTest::qWait(20); // the file's time has to be another
    writeFile(m_folder.path("changing.vcd"), vcdOf(kNames, counting(20).mid(2)));
    QTRY_COMPARE_WITH_TIMEOUT(run.windows(), QString("2+4@3"), kPatience);
}

void TestEditorRehearsal::stimulusStaysWithItsDocument()
{
    Run run(m_folder, "wave.vcd");
    run.window.open(m_folder.example("uart.oxa"));
    run.settle();
    QCOMPARE(run.panel.stimulus(), QString());
    QVERIFY(run.state().contains("Choose a stimulus"));
    QVERIFY(run.rows().isEmpty());
    run.window.open(m_folder.path("core.oxa"));
    run.settle();
    QCOMPARE(run.panel.stimulus(), m_folder.path("wave.vcd"));
    QCOMPARE(run.windows(), QString("4+4@5"));
    run.window.findChild<CoreList*>()->remove();
    run.settle();
    QVERIFY(run.state().contains("There is no core"));
}

void TestEditorRehearsal::liteCores()
{
    OXA::AOCore_Lite core;
    core.sampleClock = "clk";
    core.signalList = {busOf("count", 3)};
    core.captureAmount = 8;
    OXA::writeOXAConfigToXml_Lite({&core}, m_folder.path("lite.oxa"));
    Run run(m_folder, {});
    run.window.open(m_folder.path("lite.oxa"));
    run.enter("Stimulus:", m_folder.path("wave.vcd"));
    run.settle();
    QCOMPARE(run.windows(), QString("0+8@-1"));
    QCOMPARE(run.rows(), QStringList {"count"});
}

// The window goes while the thread still reads for it.
void TestEditorRehearsal::closingDropsTheRun()
{
    writeFile(m_folder.path("large.vcd"), vcdOf(kNames, counting(200000)));
    auto run = std::make_unique<Run>(m_folder, QString());
    auto* rehearsal = run->panel.findChild<Rehearsal*>();
    QSignalSpy progress(rehearsal, &Rehearsal::progress);
    QSignalSpy finished(rehearsal, &Rehearsal::finished);
    run->enter("Stimulus:", m_folder.path("large.vcd"));
    QTRY_VERIFY_WITH_TIMEOUT(progress.size() > 0, kPatience);
    run.reset();
    QCOMPARE(finished.size(), 0);
}

QTEST_MAIN(TestEditorRehearsal)
#include "test_editor_rehearsal.moc"
