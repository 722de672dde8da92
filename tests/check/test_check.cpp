// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/check.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/generate/standard_files.h"
#include "support/files.h"

#include <dev/device_db.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace OXA;

namespace {

// A Standard configuration that breaks no rule. "@" is where its checksum goes.
constexpr char kStandard[] = R"(<?xml version='1'?>
<OXA_CONFIG>
<Version>3.0</Version>
<Mode>Standard</Mode>
<AoCore index='0' sample_clock='clk' trig_type='0' storage_depth='64' window_num='1' capture_amount='64' trigger_pos='8' implementation='0'>
<SignalList><Signal>a</Signal></SignalList>
<Triggers>
<Trigger index='0'><SignalList><Bus restorename='p'><Signal>p1</Signal><Signal>p0</Signal></Bus></SignalList></Trigger>
<Trigger index='1'/>
</Triggers>
<MatchUnits>
<MatchUnit index='0' enabled='1' trigger='0' match_type='0' func='0' value0='1X' value1='' countinuous='0' counter_enable='1' counter_width='3' counter='8'/>
<MatchUnit index='1' enabled='0' match_type='0' func='0' value0='' value1='' countinuous='0' counter_enable='0' counter_width='2' counter='2'/>
</MatchUnits>
<Expressions type='Static'>
<Expression>M0</Expression>
</Expressions>
</AoCore>
<OXA_ID>@</OXA_ID>
</OXA_CONFIG>
)";

constexpr char kLite[] = R"(<?xml version='1'?>
<OXA_CONFIG>
<Version>3.0</Version>
<Mode>Lite</Mode>
<AoCore_Lite index='0' sample_clock='clk' trig_type='0' capture_amount='64' implemention='0' input_register_enabled='0' capture_init_data_enabled='1'>
<SignalList><Signal>a</Signal></SignalList>
</AoCore_Lite>
<OXA_ID>@</OXA_ID>
</OXA_CONFIG>
)";

struct Broken {
    const char* rule; // the only one that the file breaks; none: the file is good
    const char *from, *to; // what makes a good file that file
    const char* place;
    int line;
};

constexpr char kDeep[] = "depth='131072' window_num='1' capture_amount='65537'";
constexpr char kRange[] = "type='4' func='6' value0='10' value1='01'";
constexpr char kHole[]
    = "<Bus name='b'><Signal>b[3]</Signal><Signal>b[2]</Signal><Signal>b[0]</Signal></Bus>";
constexpr char kStatic[] = "Static'>\n<Expression>M0<";

constexpr char kBuses[] = "<Bus name='b'><Signal>b[9]</Signal><Signal>b[8]</Signal></Bus>"
                          "<Bus name='c'><Signal>d[1]</Signal><Signal>e[1]</Signal>"
                          "<Signal>d[3]</Signal></Bus><Bus name='f'><Signal>f[3:3]</Signal></Bus>";
constexpr char kEverything[] = ">(match[0] &amp;&amp; ~M0 || !(M0 ^ 1'b1)) | (M0 &amp; |M0)<";

constexpr char kUnitAgain[] = "<MatchUnit index='1' enabled='0' match_type='0' counter_enable='0' "
                              "counter_width='2' counter='2' countinuous='0' func='0' value0='' "
                              "value1=''/>\n<MatchUnit index='1'";

// Errors that only a file can have.
constexpr Broken kBrokenForms[] = {
    {"malformed",         "</Mode>",                "</mode>",                                           "line 4",     4 },
    {"version",           "<Version>3.0</Version>", "",                                                  "line 2",     2 },
    {"version",           "3.0",                    "3.x",                                               "line 3",     3 },
    {"mode",              ">Standard",              ">standard",                                         "line 4",     4 },
    {"unread-element",    "<OXA_ID>",               "<AoCore_Lite/><OXA_ID>",                            "line 19",    19},
    {"unread-element",    "<Triggers>",             "<SignalList/><Triggers>",                           "core 0",     7 },
    {"missing-attribute", " value1=''",             "",                                                  "core 0, M0", 12},
    {"not-a-number",      "trigger_pos='8'",        "trigger_pos='0x8'",                                 "core 0",     5 },
    {"not-a-word",        "</Signal></S",           "</Signal><Signal capture_enable='1'>b</Signal></S", "core 0",
     6                                                                                                                   },
    {"port-number",       "<Trigger index='1'",     "<Trigger index='16'",                               "core 0",     9 },
    {"port-twice",        "<Trigger index='1'",     "<Trigger index='0'",                                "core 0, T0", 9 },
    {"unit-number",       "<MatchUnit index='1'",   "<MatchUnit index='-1'",                             "core 0",     13},
    {"unknown-port",      "enabled='0'",            "enabled='0' trigger='16'",                          "core 0, M1", 13},
    {"empty-bus",         "<Signal>a<",             "<Bus name='b'/><Signal>a<",                         "core 0",     6 },
    {"unit-twice",        "\n<MatchUnit index='1'", kUnitAgain,                                          "core 0, M1", 13},
    {"checksum",          "@",                      "0000000000000000",                                  "line 19",    19},
    {"checksum",          "<OXA_ID>@</OXA_ID>",     "",                                                  "line 2",     2 },
};

constexpr Broken kBrokenLiteForms[] = {
    {"missing-attribute", " implemention='0'", "", "core 0", 5},
};

/// An element that not every core has.
struct BrokenElement {
    const char* rule;
    const char* attributes; ///< of the element
    bool isForm; ///< cores in memory do not break it
};

constexpr BrokenElement kBrokenStorages[] = {
    {"",                  "keep='changes' watch='a'",              false},
    {"",                  "keep='when' when='!M0' gap_bits='0'",   false},
    {"storage-kind",      "keep='never'",                          true },
    {"missing-attribute", "gap_bits='9'",                          true },
    {"unread-element",    "keep='all'/><Storage keep='all'",       true },
    {"idle-storage",      "keep='all' watch='a'",                  true },
    {"idle-storage",      "keep='when' when='M0' watch='a'",       true },
    {"not-a-number",      "keep='changes' limit='-'",              true },
    {"gap-bits",          "keep='changes' gap_bits='0'",           false},
    {"gap-bits",          "keep='when' when='M0' gap_bits='33'",   false},
    {"few-gap-bits",      "keep='changes' gap_bits='2' limit='1'", false},
    {"storage-limit",     "keep='changes' limit='4294967296'",     false},
    {"unknown-watch",     "keep='changes' watch='a p1'",           false},
    {"disabled-unit",     "keep='when' when='M0 &amp;&amp; M1'",   false},
    {"expression-syntax", "keep='when'",                           false},
};

constexpr BrokenElement kBrokenEvents[] = {
    {"",               "trigger_out='true' stamps='true'", false},
    {"forcing-core",   "forced_by='0'",                    false},
    {"forcing-core",   "forced_by='-1'",                   false},
    {"not-a-number",   "forced_by='0x1 '",                 true },
    {"not-a-word",     "stamps='yes'",                     true },
    {"unread-element", "/><Events",                        true },
};

constexpr char kSecondLite[]
    = "<AoCore_Lite index='0' sample_clock='clk' trig_type='0' capture_amount='1' implemention='2' "
      "input_register_enabled='0' capture_init_data_enabled='0'><SignalList><Signal>a</Signal>"
      "</SignalList></AoCore_Lite><OXA_ID>";

// Errors that cores in memory can have, too.
constexpr Broken kBrokenLite[] = {
    {"",              "@",                   "@",                  "",       0},
    {"memory-kind",   "implemention='0'",    "implemention='1'",   "core 0", 5},
    {"lite-amount",   "capture_amount='64'", "capture_amount='0'", "core 0", 5},
    {"unusable-name", "<Signal>a",           "<Signal>a\tb",       "core 0", 5},
    {"unbuilt-core",  "<OXA_ID>",            kSecondLite,          "core 1", 8},
};

constexpr Broken kBrokenCores[] = {
    {"",                     "@",                                             "@",                                           "",                     0 },
    {"",                     "<Signal>a</Signal>",                            kBuses,                                        "",                     0 },
    {"",                     ">M0<",                                          kEverything,                                   "",                     0 },
    {"",                     kStatic,                                         "Dynamic'>\n<Expression>!(M0^!M0)|M0&amp;M0<", "",                     0 },
    {"core-index",           "<AoCore index='0'",                             "<AoCore index='1'",                           "core 0",               5 },
    {"no-clock",             "sample_clock='clk'",                            "sample_clock=''",                             "core 0",               5 },
    {"sampling-edge",        "trig_type='0'",                                 "trig_type='2'",                               "core 0",               5 },
    {"memory-kind",          "implementation='0'",                            "implementation='3'",                          "core 0",               5 },
    {"no-data",              "<Signal>a",                                     "<Signal capture_enable='false'>a",            "core 0",               5 },
    {"signal-twice",         "<Signal>a</Signal>",                            "<Signal>a</Signal><Signal>a</Signal>",        "core 0",               5 },
    {"signal-twice",         "p0",                                            "p1",                                          "core 0, T0",           8 },
    {"sampled-clock",        "<Signal>a",                                     "<Signal>clk",                                 "core 0",               5 },
    {"bus-order",            "p1</Signal><Signal>p0",                         "p[0]</Signal><Signal>p[1]",                   "core 0, T0",           8 },
    {"bus-order",            "<Signal>a</Signal>",                            kHole,                                         "core 0",               5 },
    {"range-as-bit",         "<Signal>a",                                     "<Signal>a[31:0]",                             "core 0",               5 },
    {"range-as-bit",         "p0",                                            "\\p[0:7] ",                                   "core 0, T0",           8 },
    {"unusable-name",        "<Signal>a",                                     "<Signal>a b",                                 "core 0",               5 },
    {"unusable-name",        "<Signal>a",                                     "<Signal>",                                    "core 0",               5 },
    {"unusable-name",        "p0",                                            "0p",                                          "core 0, T0",           8 },
    {"unusable-name",        "clk",                                           "wire",                                        "core 0",               5 },
    {"hidden-characters",    "<Signal>a",                                     "<Signal>a&#x202e;b",                          "core 0",               5 },
    {"hidden-characters",    "restorename='p'",                               "restorename='p&#27;'",                        "core 0",               5 },
    {"wrapper-name",         "p0",                                            "control0",                                    "core 0, T0",           8 },
    {"storage-depth",        "storage_depth='64'",                            "storage_depth='65'",                          "core 0",               5 },
    {"window-count",         "window_num='1'",                                "window_num='0'",                              "core 0",               5 },
    {"window-count",         "window_num='1'",                                "window_num='3'",                              "core 0",               5 },
    {"capture-amount",       "capture_amount='64'",                           "capture_amount='65'",                         "core 0",               5 },
    {"capture-amount",       "window_num='1'",                                "window_num='2'",                              "core 0",               5 },
    {"capture-amount",       "capture_amount='64'",                           "capture_amount='0'",                          "core 0",               5 },
    {"trigger-position",     "trigger_pos='8'",                               "trigger_pos='64'",                            "core 0",               5 },
    {"trigger-position",     "trigger_pos='8'",                               "trigger_pos='-1'",                            "core 0",               5 },
    {"short-window",         "trigger_pos='8'",                               "trigger_pos='62'",                            "core 0",               5 },
    {"narrow-registers",     "depth='64' window_num='1' capture_amount='64'", kDeep,                                         "core 0",               5 },
    {"unit-unbound",         " trigger='0'",                                  "",                                            "core 0, M0",           12},
    {"unit-on-empty-port",   " trigger='0'",                                  " trigger='1'",                                "core 0, M0",           12},
    {"match-type",           "match_type='0'",                                "match_type='6'",                              "core 0, M0",           12},
    {"function",             "func='0' value0='1X'",                          "func='2' value0='10'",                        "core 0, M0",           12},
    {"value-too-long",       "1X",                                            "1X0",                                         "core 0, M0",           12},
    {"value-too-short",      "1X",                                            "1",                                           "core 0, M0",           12},
    {"value-character",      "1X",                                            "1x",                                          "core 0, M0",           12},
    {"value-character",      "1X",                                            "1R",                                          "core 0, M0",           12},
    {"value-character",      "match_type='0' func='0'",                       "match_type='2' func='5'",                     "core 0, M0",           12},
    {"range-order",          "type='0' func='0' value0='1X' value1=''",       kRange,                                        "core 0, M0",           12},
    {"counter-width",        "counter_width='3'",                             "counter_width='33'",                          "core 0, M0",           12},
    {"counter",              "counter='8'",                                   "counter='9'",                                 "core 0, M0",           12},
    {"counter",              "counter='8'",                                   "counter='0'",                                 "core 0, M0",           12},
    {"idle-counter",         "counter_enable='1'",                            "counter_enable='0'",                          "core 0, M0",           12},
    {"idle-continuous",      "='0' counter_enable='1'",                       "='1' counter_enable='0'",                     "core 0, M0",           12},
    {"unused-unit",          ">M0<",                                          ">1'b1<",                                      "core 0, M0",           12},
    {"no-expression",        "<Expression>M0</Expression>",                   "",                                            "core 0",               5 },
    {"table-memory",         "'Static'",                                      "'Dynamic' ex_implementation='3'",             "core 0",               5 },
    {"expression-character", ">M0<",                                          ">M0+1'b1<",                                   "core 0, expression 0", 16},
    {"expression-character", ">M0<",                                          ">M0\n&amp;&amp; M0<",                         "core 0, expression 0", 16},
    {"expression-character", kStatic,                                         "Dynamic'>\n<Expression>M0&amp;&amp;M0<",
     "core 0, expression 0",                                                                                                                         16},
    {"expression-character", kStatic,                                         "Dynamic'>\n<Expression>~M0<",                 "core 0, expression 0", 16},
    {"expression-blank",     kStatic,                                         "Dynamic'>\n<Expression>M0 <",                 "core 0, expression 0", 16},
    {"unknown-unit",         ">M0<",                                          ">M0|M16|M17<",                                "core 0, expression 0", 16},
    {"disabled-unit",        ">M0<",                                          ">M0|M1<",                                     "core 0, expression 0", 16},
    {"constant-expression",  ">M0<",                                          ">~M0 &amp;&amp; (M0 ^ 1'b0)<",                "core 0, expression 0", 16},
    {"constant-expression",  kStatic,                                         "Dynamic'>\n<Expression>M0|!M0<",              "core 0, expression 0", 16},
    {"parentheses",          ">M0<",                                          ">(M0<",                                       "core 0, expression 0", 16},
    {"parentheses",          ">M0<",                                          ">M0)|(M0<",                                   "core 0, expression 0", 16},
    {"expression-syntax",    ">M0<",                                          ">M0</Expression><Expression><",               "core 0, expression 1", 16},
    {"expression-syntax",    ">M0<",                                          ">M0 M0<",                                     "core 0, expression 0", 16},
    {"expression-syntax",    kStatic,                                         "Dynamic'>\n<Expression>!!M0<",                "core 0, expression 0", 16},
};

constexpr char kSecondCore[]
    = R"(<AoCore index='1' sample_clock='clk2' trig_type='1' storage_depth='64' window_num='1' capture_amount='64' trigger_pos='8'>
<SignalList><Signal>a</Signal></SignalList>
<Expressions type='Static'><Expression>1'b1</Expression></Expressions>
</AoCore>
)";

/// `text` with `from`, which it has to hold, replaced by `to`.
QString changed(const QString& text, const QString& from, const QString& to)
{
    QString result = text;
    const int at = result.indexOf(from);
    if (at < 0)
        qFatal("no '%s' to change", qPrintable(from));
    return result.replace(at, from.size(), to);
}

/// What a file is found to break: its rule, its place and its line.
struct Case {
    const char* rule;
    QString content;
    const char* place;
    int line;
    bool isForm = false; ///< cores in memory do not break it

    QString text() const
    {
        return *rule ? QString("%1, %2, line %3").arg(rule, place, QString::number(line))
                     : QString();
    }
};

/// The problems as `Case::text` shows them.
QString shown(const QList<Problem>& problems)
{
    QStringList texts;
    for (const Problem& problem : problems) {
        texts += QString("%1, %2, line %3")
                     .arg(problem.rule, problem.place.text(), QString::number(problem.place.line));
        if (problem.text.isEmpty() || problem.hint.isEmpty())
            texts += "nothing is said";
    }
    return texts.join("; ");
}

template <size_t count>
QList<Case> changesOf(const char* file, const Broken (&rows)[count], bool isForm)
{
    QList<Case> cases;
    for (const Broken& row : rows)
        cases += {row.rule, changed(file, row.from, row.to), row.place, row.line, isForm};
    return cases;
}

/// `file`, whose first core has the element.
QString withElement(const QString& file, const char* tag, const char* attributes)
{
    return changed(file, "</AoCore>", QString("<%1 %2/>\n</AoCore>").arg(tag, attributes));
}

template <size_t count>
QList<Case> brokenElements(const char* tag, const BrokenElement (&rows)[count], const char* place)
{
    QList<Case> cases;
    for (const BrokenElement& row : rows)
        cases += {row.rule, withElement(kStandard, tag, row.attributes), place, 18, row.isForm};
    return cases;
}

/// Three cores with these attributes of their events.
QString threeCores(const char* first, const char* second, const char* third)
{
    const QString other = QString(kSecondCore).replace("clk2", "clk").replace(">a<", ">e<");
    const QString last = changed(other, "index='1'", "index='2'");
    return changed(withElement(kStandard, "Events", first), "<OXA_ID>",
        withElement(other, "Events", second) + withElement(last, "Events", third) + "<OXA_ID>");
}

/// Two cores that force each other, but have nothing that triggers them.
QString silentCores()
{
    const QString cores = threeCores("forced_by='1'", "forced_by='0'", "");
    return changed(
        changed(cores, "<Expression>M0</Expression>", ""), "<Expression>1'b1</Expression>", "");
}

/// Cores that force each other, and signals with names of what the wrapper has for events.
QList<Case> brokenForcing()
{
    const QString forced = threeCores("", "forced_by='0'", "");
    const QString noExpression
        = changed(threeCores("forced_by='1'", "", ""), "<Expression>M0</Expression>", "");
    const QString withOutput = threeCores("", "trigger_out='true'", "");
    QList<Case> cases;
    cases += {"", threeCores("forced_by='1'", "forced_by='0'", "forced_by='0 1'"), "", 0};
    cases += {"", noExpression, "", 0};
    cases
        += {"forced-chain", threeCores("", "forced_by='0'", "forced_by='1'"), "core 2, events", 28};
    cases += {"forcing-core", threeCores("", "forced_by='3'", ""), "core 1, events", 23};
    cases += {"", changed(forced, "p0", "trigger0_o"), "", 0};
    cases += {"", changed(forced, "p0", "pulse1"), "", 0};
    cases += {"wrapper-name", changed(forced, "p0", "pulse0"), "core 0, T0", 8};
    cases += {"wrapper-name", changed(withOutput, "p0", "trigger1_o"), "core 0, T0", 8};
    return cases;
}

QList<Case> brokenCores()
{
    QList<Case> cases = changesOf(kStandard, kBrokenCores, false)
        + brokenElements("Storage", kBrokenStorages, "core 0, storage")
        + brokenElements("Events", kBrokenEvents, "core 0, events") + brokenForcing();
    cases += {"no-cores", "<A><Version>3.0</Version><Mode>Standard</Mode></A>", "line 1", 1, true};
    cases += {"too-many-expressions",
        changed(kStandard, "<Expression>",
            QString("<Expression>M0</Expression>").repeated(16) + "<Expression>"),
        "core 0", 5};
    const QString chain = QString("M0|").repeated(34) + "M0"; // 35 operands and 34 operators
    cases += {"expression-too-long",
        changed(kStandard, kStatic, "Dynamic'>\n<Expression>" + chain + "<"),
        "core 0, expression 0", 16};
    cases += {"expression-syntax",
        changed(kStandard, ">M0<",
            QString(">%1M0%2<").arg(QString("!(").repeated(101), QString(")").repeated(101))),
        "core 0, expression 0", 16};
    cases += {"hidden-unit",
        QString(kStandard)
            .replace("<MatchUnit index='1'", "<MatchUnit index='10'")
            .replace("<MatchUnit index='0'", "<MatchUnit index='1'")
            .replace("<MatchUnit index='10' enabled='0'",
                "<MatchUnit index='10' enabled='1' trigger='0'")
            .replace("value0=''", "value0='11'")
            .replace(kStatic, "Dynamic'>\n<Expression>M1</Expression><Expression>M10<"),
        "core 0, expression 1", 16};
    // Eight units: more rows than a word holds.
    QString wide = kStandard;
    QString any = "M0";
    for (int i = 2; i < 9; ++i) {
        const QString unit = wide.section('\n', 11, 11);
        wide = changed(wide, unit,
            unit + '\n' + QString(unit).replace("index='0'", QString("index='%1'").arg(i)));
        any += QString("|M%1").arg(i);
    }
    cases += {"constant-expression", changed(wide, ">M0<", ">" + any + "|!M8<"),
        "core 0, expression 0", 23};
    cases += {"shared-data", changed(kStandard, "<OXA_ID>", QString(kSecondCore) + "<OXA_ID>"),
        "core 1", 19};
    QString many;
    for (int i = 1; i <= 16; ++i)
        many += QString(kSecondCore)
                    .replace("index='1'", QString("index='%1'").arg(i))
                    .replace("clk2", "clk");
    cases += {"too-many-cores", changed(kStandard, "<OXA_ID>", many + "<OXA_ID>"), "core 16", 79};
    return cases;
}

}

class TestCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rules();
    void parts();
    void unreadableFiles();
    void everyRuleHasARow();
    void namesOfTheWrapperAreKnown();
    void documentsListTheRules();

private:
    /// A file of that content, its checksum right unless it says another.
    QString write(const QString& content)
    {
        QString path = m_dir.filePath("c.oxa");
        const int at = content.indexOf('@');
        writeFile(path, content.toUtf8());
        if (at >= 0)
            writeFile(path, QString(content).replace(at, 1, computeOXACRCForXml(path)).toUtf8());
        return path;
    }

    QTemporaryDir m_dir;
    QStringList m_rulesWithRows;
};

void TestCheck::rules()
{
    const QList<Case> cases = changesOf(kStandard, kBrokenForms, true) + brokenCores()
        + changesOf(kLite, kBrokenLite, false) + changesOf(kLite, kBrokenLiteForms, true);
    for (const Case& row : cases) {
        m_rulesWithRows << row.rule;
        const QString path = write(row.content);
        QCOMPARE(shown(checkConfigFile(path)), row.text());
        if (row.isForm)
            continue;
        Configuration read;
        QVERIFY(readConfiguration(path, read, nullptr));
        const QList<Problem> problems
            = read.mode == Lite ? checkCores(read.liteCores) : checkCores(read.cores);
        Case withoutLine = row;
        withoutLine.line = 0;
        QCOMPARE(shown(problems), withoutLine.text());
    }
    QCOMPARE(shown(checkConfigFile(write(silentCores()))),
        QString("no-expression, core 0, line 5; no-expression, core 1, line 20"));
    for (const char* name : {"uart.oxa", "uart_lite.oxa"})
        QCOMPARE(
            shown(checkConfigFile(OXA_SOURCE_DIR "/examples/uart/" + QString(name))), QString());
}

// Each row has a configuration that just fits, too.
void TestCheck::parts()
{
    struct Row {
        Case broken;
        const char* device;
        QString fitting;
        const char* fittingDevice;
    };
    const auto deep = [](const QString& content, int depth) {
        return changed(content, "storage_depth='64'", QString("storage_depth='%1'").arg(depth));
    };
    const auto kind = [](int kind) {
        return changed(kStandard, "implementation='0'", QString("implementation='%1'").arg(kind));
    };
    const QString tables = changed(kStandard, "'Static'", "'Dynamic' ex_implementation='2'");
    // 72 kbit are 4 blocks: 8192 samples of 1 + 1 bits take one, of 5 + 1 bits three, of 6 + 1
    // four.
    const auto twoCores = [&](int dataSignals) {
        QString second = deep(kSecondCore, 8192);
        for (int i = 1; i < dataSignals; ++i)
            second = changed(second, "<Signal>", QString("<Signal>s%1</Signal><Signal>").arg(i));
        second = changed(second, ">a<", ">e<");
        return changed(deep(kStandard, 8192), "<OXA_ID>", second + "<OXA_ID>");
    };
    // 1024 look-up tables and 768 registers. Units with two bounds take more of the former.
    const auto wide = [](int type, int bits, int units = 1) {
        QString port;
        for (int i = 0; i < bits; ++i)
            port += QString("<Signal>w%1</Signal>").arg(i);
        const QString content
            = changed(kStandard, "value0='1X'", QString("value0='%1'").arg(QString(bits, '1')));
        const QString typed
            = changed(changed(content, "type='0' func", QString("type='%1' func").arg(type)),
                "<Bus restorename='p'><Signal>p1</Signal><Signal>p0</Signal></Bus>", port);
        const QString unit = typed.section('\n', 11, 11, QString::SectionIncludeTrailingSep);
        QString more;
        QString expression = "M0";
        for (int i = 2; i <= units; ++i) {
            more += changed(unit, "index='0'", QString("index='%1'").arg(i));
            expression += QString(" || M%1").arg(i);
        }
        return changed(changed(typed, "</MatchUnits>", more + "</MatchUnits>"), "<Expression>M0",
            "<Expression>" + expression);
    };
    const QString late = changed(kStandard, "trigger_pos='8'", "trigger_pos='61'");
    const Row rows[] = {
        {{"no-shadow-sram", kind(2), "core 0", 5},          "QX1N-4",   kind(2),                                      "QX1N-9"          },
        {{"no-shadow-sram", tables, "core 0", 5},           "QX1N-4",   tables,                                       "QX1N-9"          },
        {{"block-sram", twoCores(6), "core 1", 19},         "QX1N-1",   twoCores(5),                                  "QX1N-1"          },
 // 4 kbit are 64 blocks of 64 bits, and 16 samples of 1 + 1 bits take one.
        {{"shadow-sram", deep(kind(2), 2048), "core 0", 5}, "QX1NZ-1D", deep(kind(2),                                 1024),
         "QX1NZ-1D"},
        {{"look-up-tables", wide(4, 25, 6), "core 0", 5},                                                 "QX1N-1",             wide(4, 100), "QX1N-1"},
        {{"registers", wide(0, 220), "core 0", 5},                                         "QX1N-1",                                                   wide(0,                                                        150),                          "QX1N-1"},
        {{"near-limit", wide(4, 22, 6), "core 0", 5},                                             "QX1N-1",                                               wide(4,                                    100),"QX1N-1"},
        {{"short-window", late, "core 0", 5},                                           "QX1N-9",   late,    "QX1N-9C"                                   },
    };
    for (const Row& row : rows) {
        m_rulesWithRows << row.broken.rule;
        const DEV::ChipInfo part = DEV::DeviceDb::instance().find("", row.device);
        const DEV::ChipInfo roomy = DEV::DeviceDb::instance().find("", row.fittingDevice);
        const QString path = write(row.broken.content);
        QCOMPARE(shown(checkConfigFile(path)), QString());
        QCOMPARE(shown(checkConfigFile(path, &part)), row.broken.text());
        QCOMPARE(shown(checkConfigFile(write(row.fitting), &roomy)), QString());
    }
}

void TestCheck::unreadableFiles()
{
    m_rulesWithRows << "unreadable";
    for (const char* unreadable : {"/no/such", "/"})
        QCOMPARE(shown(checkConfigFile(unreadable)), QString("unreadable, , line 0"));
    QCOMPARE(shown(checkConfigFile(write({}))), QString("malformed, line 1, line 1"));
    for (const char* text : {"M0 && M1", "M0 & M1", "M0&M1", "&lt;M0 &", "&amp;<b</"}) {
        const QList<Problem> bare
            = checkConfigFile(write(changed(kStandard, ">M0<", QString(">%1<").arg(text))));
        const bool isAmpersand = QByteArray(text) != "&amp;<b</";
        QVERIFY2(bare.size() == 1 && bare.first().hint.contains("&amp;") == isAmpersand, text);
    }
}

// Runs behind those with the rows.
void TestCheck::everyRuleHasARow()
{
    if (QCoreApplication::arguments().size() > 1)
        QSKIP("only a run of all rows has them all");
    for (const RuleInfo& rule : checkRules())
        QVERIFY2(m_rulesWithRows.contains(rule.name), qPrintable(rule.name));
}

void TestCheck::namesOfTheWrapperAreKnown()
{
    const QString path = write(threeCores("trigger_out='true'", "forced_by='0'", ""));
    OxaArg arg;
    arg.configFile = path;
    arg.workDir = m_dir.path();
    const QList<AoCore*> cores = readOXAConfigFromXml(path);
    QVERIFY(std_generateOxaTop(arg, cores));
    const QString wrapper = QString::fromUtf8(bytesOf(m_dir.filePath("qx_oxa_top.v")));

    // Its nets, and the instances, whose names stand before a parenthesis at the end of a line.
    const QRegularExpression declared("^(?:wire|output) (?:\\[9:0\\] )?(\\w+);|^\\w+ +(\\w+) ?\\($",
        QRegularExpression::MultilineOption);
    int count = 0;
    for (auto it = declared.globalMatch(wrapper); it.hasNext(); ++count) {
        const QRegularExpressionMatch match = it.next();
        const QString name = match.captured(match.lastCapturedIndex());
        if (QStringList {"qx_oxa", "a", "p1", "p0", "clk", "e"}.contains(name))
            continue;
        cores.first()->sampleClock = name;
        QCOMPARE(shown(checkCores(cores)).count("wrapper-name"), 1);
    }
    QVERIFY(count > 25);
    qDeleteAll(cores);
}

void TestCheck::documentsListTheRules()
{
    const QString page = QString::fromUtf8(bytesOf(OXA_SOURCE_DIR "/docs/checks.md"));
    const QRegularExpression special("([|<])");
    QString table = "| rule | severity | broken when | what to do |\n|---|---|---|---|\n";
    for (const RuleInfo& rule : checkRules())
        table += QString("| `%1` | %2 | %3 | %4 |\n")
                     .arg(rule.name, severityText(rule.severity),
                         QString(rule.meaning).replace(special, "\\\\1"),
                         QString(rule.hint).replace(special, "\\\\1"));
    if (!page.contains(table)) {
        const QString path = m_dir.path() + "/checks-table.md";
        m_dir.setAutoRemove(false);
        writeFile(path, table.toUtf8());
        QFAIL(qPrintable("docs/checks.md does not hold the table in " + path));
    }
    const QString excepted = page.section("all errors but", 1).section("stop", 0, 0);
    for (const RuleInfo& rule : checkRules())
        QCOMPARE(excepted.contains('`' + rule.name + '`'),
            rule.severity == Severity::Error
                && !stopsBuild({rule.name, rule.severity, {}, {}, {}}));
}

QTEST_GUILESS_MAIN(TestCheck)
#include "test_check.moc"
