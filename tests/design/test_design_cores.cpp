// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/add_core.h"
#include "oxautils/design/choose_signals.h"
#include "oxautils/design/design_rules.h"
#include "oxautils/design/read_design.h"
#include "support/files.h"

#include <QtTest>

using namespace OXA;

namespace {

// Words; then items, buses with their number of bits, warnings and errors, each behind a "; ".
struct Choice {
    const char *words, *chosen;
};

// clang-format off
constexpr Choice kChoices[] = {
    {"top/b top/m/rev", "top/b*8; top/m/rev*4"},
    {"m/words[*] off sized state z b?",
        "top/m/off*4; top/sized*3; top/state*2; top/z; "
        "\"m/words[*]\" is not in the design; the nearest names are top/m/words[7:0]; \"b?\" is not in the design; the nearest names are top/b[7:0]"},
    {"b[3] b b[7:4]", "top/b[3]; top/b[7:4]*4; top/b[2:0]*3"},
    {"off[3:4] rev[2:1] *state[1]", "top/m/off[4:3]*2; top/m/rev[1:2]*2; top/state[1]"},
    {"off[6:5] z[1] z[0]",
        "top/z; \"off[6:5]\" is not in the range [5:2] of top/m/off; "
        "\"z[1]\" has an index, but top/z has only one bit"},
    {"lane[1]/* lane[1]/inner",
        "top/m/lane[1]/inner*4; top/m/lane[1]/u/d*4; top/m/lane[1]/u/odd.name*4; "
        "top/m/lane[1]/u/q*4; left out, because it is the sample clock: top/m/lane[1]/u/clk"},
    {"w* top/clk", "top/clk; left out, because memories cannot be watched: top/m/words; "
        "\"w*\" matches nothing that can be watched"},
    {"words words[2]", "\"words\" is a memory, which cannot be watched; watch the signals at its ports; "
        "\"words[2]\" is a memory, which cannot be watched; watch the signals at its ports"},
    {"u/q stat[1:0]", "\"u/q\" may be top/m/lane[0]/u/q or top/m/lane[1]/u/q or "
        "top/m/lane[2]/u/q or one of 9 more; "
        "\"stat[1:0]\" is not in the design; the nearest names are top/state[1:0]"},
};

// A core by its clock, its data and the signals of T0; a bus as NAME=BIT,BIT. Then its problems.
struct Core {
    const char *clock, *data, *port, *problems;
};

constexpr Core kCores[] = {
    {"top/clk", "top/m/rev=rev[0],rev[1],rev[2],rev[3] z", "off=off[5],off[4],off[3],off[2]", ""},
    {"lane[3]/u/clk", "top/a[7:6]=a[7],a[6] b[1] b[0] x=a[4],a[3]", "", ""},
    {"top/clk", "off=off[2],off[3],off[4],off[5]", "rev=rev[3],rev[2],rev[1],rev[0]",
        "declared-bits core 0, bus \"off\" is \"off[2]\" to \"off[5]\" in 4 bits, "
        "declared is top/m/off[5:2]; "
        "declared-bits core 0, T0, bus \"rev\" is \"rev[3]\" to \"rev[0]\" in 4 bits, "
        "declared is top/m/rev[0:3]"},
    {"top/clk", "a=a[7],a[6] x=b[7],b[5] mixed=a[0],a[1],z", "",
        "bus-order core 0, \"b[5]\" follows; bus-order core 0, \"a[1]\" follows; "
        "declared-bits core 0, bus \"a\" is \"a[7]\" to \"a[6]\" in 2 bits, "
        "declared is top/a[7:0]; "
        "declared-bits core 0, bus \"x\" is \"b[7]\" to \"b[5]\" in 2 bits, "
        "declared is top/b[7:0]"},
    {"top/clk", "stat=stat[1],stat[0] b off[6] off[7]", "stat=stat[1],stat[0] nothing",
        "not-in-design core 0, \"stat[1]\" is not in the design; the nearest names are "
        "top/state[1:0]; not-in-design core 0, \"b\" is a bus of 8 bits, [7:0], but represents one "
        "bit; not-in-design core 0, \"off[6]\" is not in the range [5:2] of top/m/off; "
        "not-in-design core 0, T0, \"nothing\" is not in the design"},
    {"top/clk", "words=words[7],words[6] b[0]", "words[9]",
        "watched-memory core 0, \"words[7]\" is in a memory"},
    {"top/clk", "state=state[1],state[0] b[0]", "state[0]",
        "other-clock core 0, the register \"top/state\" has clock \"top/clk2\", the core samples "
        "it with \"top/clk\""},
    {"a[0]", "state[0] b[0]", "",
        "idle-clock core 0, the design has no register with the sample clock \"a[0]\""},
    {"clk3", "b[0]", "",
        "not-in-design core 0, \"clk3\" is not in the design; the nearest names are top/clk, "
        "top/clk2, top/m/clk"},
};
// clang-format on

SignalItem itemOf(const QString& text)
{
    SignalItem item;
    item.name = text.section('=', 0, 0);
    const QStringList bits = text.section('=', 1).split(',', Qt::SkipEmptyParts);
    for (const QString& bit : bits) {
        item.subItems += SignalItem();
        item.subItems.last().name = bit;
    }
    return item;
}

QList<SignalItem> itemsOf(const char* text)
{
    QList<SignalItem> items;
    for (const QString& word : QString(text).split(' ', Qt::SkipEmptyParts))
        items += itemOf(word);
    return items;
}

QString shown(const QList<Problem>& problems)
{
    QStringList texts;
    for (const Problem& problem : problems) {
        const bool isOurs = problem.rule != "bus-order";
        texts += problem.rule + ' ' + problem.place.text() + ", "
            + (isOurs ? problem.text : problem.text.section(", ", 1).section(' ', 0, 1));
    }
    return texts.join("; ");
}

}

/// Cores against the signals of a design.
class TestDesignCores : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void choices();
    void problems();
    void documentsListTheRules();

private:
    QString problemsOf(const Core& row, const Design& design) const;

    Design m_design;
};

void TestDesignCores::initTestCase()
{
    DesignSources sources;
    sources.files << OXA_SOURCE_DIR "/tests/design/traps.sv";
    sources.defines << "GO=8'd1";
    sources.parameters << "N=3";
    sources.top = "top";
    QString error;
    QVERIFY2(readDesign(sources, m_design, &error), qPrintable(error));
}

void TestDesignCores::choices()
{
    const DesignIndex index(m_design);
    for (const Choice& row : kChoices) {
        const ChosenSignals chosen = chooseSignals(index, QString(row.words).split(' '), "top/clk");
        QStringList texts;
        for (const SignalItem& item : chosen.items) {
            const int bits = item.bitCount();
            texts += item.name + (item.isBus() ? "*" + QString::number(bits) : QString());
        }
        QCOMPARE((texts + chosen.warnings + chosen.errors).join("; "), QString(row.chosen));
    }
    const ChosenSignals chosen = chooseSignals(index, {"rev"});
    QCOMPARE(flattenedNames(chosen.items).join(' '),
        QString("top/m/rev[0] top/m/rev[1] top/m/rev[2] top/m/rev[3]"));
}

QString TestDesignCores::problemsOf(const Core& row, const Design& design) const
{
    AoCore core(0);
    core.sampleClock = row.clock;
    core.signalList = core.captureSignals = itemsOf(row.data);
    core.getTrigger(0)->signalList = itemsOf(row.port);
    core.expressions << "1'b1";
    QList<Problem> problems = checkCores(QList<AoCore*> {&core});
    addDesignProblems(QList<AoCore*> {&core}, DesignIndex(design), problems);
    return shown(problems);
}

void TestDesignCores::problems()
{
    Design waveform = m_design;
    waveform.isWaveform = true;
    for (const Core& row : kCores) {
        QCOMPARE(problemsOf(row, m_design), QString(row.problems));
        const bool isOfClock = QByteArray(row.problems).contains("-clock ");
        QCOMPARE(problemsOf(row, waveform),
            isOfClock ? QString()
                      : QString(row.problems).replace("not in the design", "not in the waveform"));
    }
}

void TestDesignCores::documentsListTheRules()
{
    const QString page = QString::fromUtf8(bytesOf(OXA_SOURCE_DIR "/docs/checks.md"));
    for (const RuleInfo& rule : designRules())
        QVERIFY2(page.contains(
                     QString("\n| `%1` | %2 | %3 | %4 |\n")
                         .arg(rule.name, severityText(rule.severity), rule.meaning, rule.hint)),
            qPrintable(rule.name));
}

QTEST_GUILESS_MAIN(TestDesignCores)
#include "test_design_cores.moc"
