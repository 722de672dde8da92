// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/waveform_design.h"
#include "oxautils/design/design_index.h"
#include "oxautils/design/read_design.h"
#include "support/files.h"
#include "support/rows.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace OXA;

namespace {

// Path and range, kind, clock, values.
constexpr const char* kSignals[] = {
    "top/a[7:0] input",
    "top/b[7:0] output rising edge of top/clk",
    "top/m/always_there/n register falling edge of top/clk",
    "top/m/lane[1]/u/odd.name[3:0] register rising edge of top/clk",
    "top/m/lane[10]/inner[3:0] register rising edge of top/clk",
    "top/m/off[5:2] wire",
    "top/m/rev[0:3] wire",
    "top/m/words[7:0] memory",
    "top/pad inout",
    "top/sized[2:0] wire",
    "top/state[1:0] register rising edge of top/clk2 00=IDLE 10=RUN 11=STOP",
    "top/z output falling edge of top/clk",
};

struct Name {
    const char *name, *found;
};

constexpr Name kNames[] = {
    {"top/m/rev[1]",          "top/m/rev[1]"                                              },
    {"top.m.rev[0]",          "top/m/rev[0]"                                              },
    {"off[5]",                "top/m/off[5]"                                              },
    {"lane[3].u.q[0]",        "top/m/lane[3]/u/q[0]"                                      },
    {"u/odd/name[1]",
     "may be top/m/lane[0]/u/odd.name or top/m/lane[1]/u/odd.name or "
        "top/m/lane[2]/u/odd.name or one of 9 more"                                       },
    {"top/z",                 "top/z"                                                     },
    {"off[6]",                "is not in the range [5:2] of top/m/off"                    },
    {"top/z[1]",              "has an index, but top/z has only one bit"                  },
    {"top/m/u/qq",
     "is not in the design; the nearest names are top/m/lane[0]/u/q[3:0], "
        "top/m/lane[1]/u/q[3:0], top/m/lane[2]/u/q[3:0]"                                  },
    {"top/stat[0]",           "is not in the design; the nearest names are top/state[1:0]"},
    {"top/m/nothing_like_it", "is not in the design"                                      },
};

struct Glob {
    const char *pattern, *first;
    int count;
};

constexpr Glob kGlobs[] = {
    {"*",          "top/a",                    39},
    {"lane*inner", "top/m/lane[0]/inner",      12},
    {"lane[1?]/*", "top/m/lane[10]/inner",     10},
    {"odd.name",   "top/m/lane[0]/u/odd.name", 12},
    {"m/rev",      "top/m/rev",                1 },
    {"ev",         "",                         0 },
};

struct List {
    const char *text, *sources; // or the error
};

constexpr List kLists[] = {
    {"a.v \"b c.sv\" // x.v\n+incdir+i+j +define+A=1+B\n", "/w/a.v,/w/b c.sv /w/i,/w/j A=1,B  "      },
    {"-Ii -I j -DA --top t -P t.N=3 -v lib.v -sv",         "/w/lib.v /w/i,/w/j A N=3 t"              },
    {"../a.v\n\n  -y lib\n",                               "list:3: \"-y\" is not a supported option"},
    {"-f /no/such",                                        "/no/such: cannot be read: No such file"  },
    {"a.v\n-I",                                            "list:2: \"-I\" has no value"             },
};

QString described(const Design& design, const DesignSignal& signal)
{
    QStringList words {signal.path + signal.rangeText(), signal.kindText()};
    if (signal.isRegister())
        words += design.clockText(signal);
    for (const auto& state : signal.states)
        words += state.first + '=' + state.second;
    return words.join(' ');
}

QString described(const DesignSources& sources)
{
    return QStringList {sources.files.join(','), sources.includeDirs.join(','),
        sources.defines.join(','), sources.parameters.join(','), sources.top}
        .join(' ');
}

}

class TestDesign : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyKindOfSignal();
    void names();
    void globs();
    void lists();
    void remembered();
    void unreadable();
    void hostileNames();
    void vhdl();
    void waveforms();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    DesignSources m_sources;
    Design m_design;
};

void TestDesign::initTestCase()
{
    m_sources.files << OXA_SOURCE_DIR "/tests/design/traps.sv";
    m_sources.defines << "GO=8'd1";
    m_sources.parameters << "N=3";
    m_sources.top = "top";
    QString error;
    QVERIFY2(readDesign(m_sources, m_design, &error), qPrintable(error));
}

void TestDesign::everyKindOfSignal()
{
    QStringList all;
    for (const DesignSignal& signal : m_design.items)
        all += described(m_design, signal);
    for (const char* expected : kSignals)
        QVERIFY2(all.contains(expected), qPrintable(QString(expected) + "\n" + all.join('\n')));
    QVERIFY(all.indexOf("top/m/lane[2]/u/clk wire") < all.indexOf("top/m/lane[10]/u/clk wire"));
    QCOMPARE(m_design.clocks, QStringList({"top/clk", "top/clk2"}));
    QCOMPARE(m_design.warnings.size(), 3);
    QVERIFY(m_design.warnings.at(0).contains("traps.sv:48: `bind` is ignored"));
    QVERIFY(m_design.warnings.at(1).contains("module \"foreign\" is not in the sources"));
    QVERIFY(m_design.warnings.at(2).contains("module \"hollow\" is not in the sources"));
}

void TestDesign::names()
{
    const DesignIndex index(m_design);
    for (const Name& row : kNames) {
        const DesignBit bit = index.bit(row.name);
        const QString found = bit.signal < 0 ? index.whyMissing(row.name)
                                             : m_design.items.at(bit.signal).bitName(bit.position);
        QCOMPARE(found, QString(row.found));
    }
}

void TestDesign::globs()
{
    const DesignIndex index(m_design);
    for (const Glob& row : kGlobs) {
        const QVector<int> found = index.matching(row.pattern);
        QCOMPARE(found.isEmpty() ? QString() : m_design.items.at(found.first()).path,
            QString(row.first));
        QCOMPARE(found.size(), row.pattern[1] ? row.count : m_design.items.size());
    }
}

void TestDesign::lists()
{
    for (const List& row : kLists) {
        writeFile(path("list"), row.text);
        DesignSources sources;
        QString error;
        const bool ok = readDesignList(path("list"), "/w", sources, &error);
        const QString found = ok ? described(sources) : error.remove(m_dir.path() + '/');
        QVERIFY2(ok ? found == row.sources : found.startsWith(row.sources), qPrintable(found));
    }
}

void TestDesign::remembered()
{
    DesignSources sources = m_sources;
    sources.files = QStringList {path("a \"b\"\\.v"), path("-f"), path("# c.v"), "/x/y/z.v"};
    sources.includeDirs << path("inc");
    QString error;
    QVERIFY(rememberDesign(path("c.oxa"), sources, &error));
    DesignSources again;
    QVERIFY2(readRememberedDesign(path("c.oxa"), again, &error), qPrintable(error));
    QCOMPARE(described(again), described(sources));
    QVERIFY(!bytesOf(path("c.oxa.design")).contains(m_dir.path().toUtf8()));
    sources.defines << "X=1\n-f more"; // a word ends with its line
    QVERIFY(!rememberDesign(path("c.oxa"), sources, &error));
}

void TestDesign::unreadable()
{
    writeFile(path("bad.v"), "module top(input a);\n  wire ;\nendmodule\n");
    for (const auto& [file, top, expected] : {
             std::tuple {path("none.v"),          "top",    "cannot be read"              },
             {path(""),                "top",    "is a directory"              },
             {path("bad.v"),           "top",    "bad.v:2: error: syntax error"},
             {m_sources.files.first(), "absent", "`absent'"                    }
    }) {
        DesignSources sources;
        sources.files << file;
        sources.defines = m_sources.defines;
        sources.top = top;
        Design design;
        QString error;
        QVERIFY(!readDesign(sources, design, &error));
        QVERIFY2(error.contains(expected), qPrintable(error));
    }
}

// Nothing in the name of a file, a macro or a module is a command of the engine.
void TestDesign::hostileNames()
{
    const QString name = "a; [exec touch owned] $x `{ !touch owned";
    writeFile(path(name + ".v"), "module top(input a); wire w = a; endmodule\n");
    DesignSources sources;
    sources.files << path(name + ".v");
    sources.includeDirs << path(name);
    sources.defines << "X=" + name;
    sources.top = "top";
    Design design;
    QString error;
    const QString before = QDir::currentPath();
    QDir::setCurrent(m_dir.path());
    const bool ok = readDesign(sources, design, &error);
    sources.top = name;
    sources.parameters << "N=[exec touch owned]";
    QVERIFY(!readDesign(sources, design, nullptr));
    QDir::setCurrent(before);
    QVERIFY2(ok, qPrintable(error));
    QVERIFY(!QFile::exists(path("owned")));
}

void TestDesign::vhdl()
{
    writeFile(path("v.vhd"),
        "library ieee; use ieee.std_logic_1164.all;\n"
        "entity v is port (clk : in std_logic; d : in std_logic_vector(3 downto 0);\n"
        "  q : out std_logic_vector(3 downto 0)); end;\n"
        "architecture a of v is signal held : std_logic_vector(3 downto 0); begin\n"
        "  process (clk) begin if rising_edge(clk) then held <= d; end if; end process;\n"
        "  q <= held; end;\n");
    DesignSources sources;
    sources.files << path("v.vhd");
    sources.top = "v";
    Design design;
    QString error;
    QVERIFY2(readDesign(sources, design, &error), qPrintable(error));
    const int held = DesignIndex(design).signal("v/held");
    QVERIFY(held >= 0);
    QCOMPARE(described(design, design.items.at(held)),
        QString("v/held[3:0] register rising edge of v/clk"));
}

// Bits that a simulator dumps one by one are one signal.
void TestDesign::waveforms()
{
    writeFile(path("w.vcd"),
        "$scope module top $end $scope begin lane[0] $end\n"
        "$var wire 1 ! q [1] $end $var wire 1 \" q [0] $end $var wire 4 # n [0:3] $end\n"
        "$var real 64 % r $end $upscope $end $upscope $end $enddefinitions $end\n");
    Design design;
    QString error;
    QVERIFY2(OXA_CAPTURE::readWaveformSignals(path("w.vcd"), design, &error), qPrintable(error));
    QStringList found;
    for (const DesignSignal& signal : design.items)
        found += signal.path + signal.rangeText();
    QCOMPARE(found, QStringList({"top/lane[0]/n[0:3]", "top/lane[0]/q[1:0]"}));
}

QTEST_GUILESS_MAIN(TestDesign)
#include "test_design.moc"
