// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/signal_finder.h"
#include "oxacapture/waveform/waveform_sampler.h"

#include "oxacapture/sample_text.h"
#include "oxacapture/wave_text.h"
#include "support/files.h"
#include "support/patience.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <malloc.h>

using namespace OXA_CAPTURE;

class TestWaveform : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void samplesAreTakenJustBeforeTheEdge();
    void onlyChangesBetweenLevelsAreEdges();
    void everyUnknownNameIsReported();
    void deepScopesTakeLittleMemory();
    void damageIsReportedWithItsLine();
    void wordsMayCrossEveryBuffer();
    void everyKindIsReadAlike();

private:
    bool sample(const QByteArray& vcd, const std::vector<SampleRequest>& requests);
    QStringList messages() const;

    QTemporaryDir m_dir;
    SampledWaveform m_result;
    Messages m_messages;
};

bool TestWaveform::sample(const QByteArray& vcd, const std::vector<SampleRequest>& requests)
{
    m_messages.clear();
    return sampleWaveform(writeFile(m_dir.filePath("w"), vcd), requests, m_result, m_messages);
}

QStringList TestWaveform::messages() const
{
    QStringList texts;
    for (const Message& message : m_messages)
        texts += message.message().replace(m_dir.filePath("w"), "w");
    return texts;
}

void TestWaveform::samplesAreTakenJustBeforeTheEdge()
{
    const struct {
        const char *what, *names;
        bool falling;
        const char* samples;
    } rows[] = {
        {"bits of a vector",                         "dut.count[3] dut/count[0]",     false, "01 00 x1"},
        {"falling edges",                            "dut.count[3] dut.count[0]",     true,  "00 x1"   },
        {"an ascending vector",                      "other/count[3] other/count[0]", false, "10 10 10"},
        {"bits declared one by one",                 "bits[1] tb.dut.bits[0]",        false, "1x 1x 10"},
        {"full name, slashes",                       "/tb/dut/count[1]",              false, "0 1 x"   },
        {"unique suffix of an escaped name",         "late/one",                      false, "x 1 1"   },
        {"one net in two scopes, sampled by itself", "clk",                           false, "0 0 0"   },
    };
    for (const auto& row : rows) {
        const SampleRequest request {
            "clk", row.falling, {{}, QString(row.names).split(' ')}
        };
        QVERIFY2(sample(QByteArray(kHeader) + kChanges, {request}), row.what);
        QCOMPARE(samplesText(m_result.cores[0], 1), QString(row.samples));
    }
}

void TestWaveform::onlyChangesBetweenLevelsAreEdges()
{
    const QByteArray changes
        = "#0\n1!\n#1\nx!\n#2\n1!\n#3\n0!\n#4\nz!\n#5\n1!\n#6\n0!\n1!\n#7\n0!\n";
    const SampleRequest rising {"clk", false, {{"late.one"}}};
    const SampleRequest falling {"tb.clk", true, {{"late.one"}}};
    QVERIFY(sample(kHeader + changes, {rising, falling, rising}));
    QCOMPARE(m_result.cores[0].size(), 1);
    QCOMPARE(m_result.cores[1].size(), 2);
    QCOMPARE(m_result.clocks, QStringList({"clk", "tb.clk"}));
    QString edges;
    for (const ClockEdge& edge : m_result.edges)
        edges += QString("%1%2%3 ").arg(edge.sameTime ? "+" : "").arg(edge.clock).arg(edge.level);
    QCOMPARE(edges, "00 +10 01 +11 00 +10 ");
}

void TestWaveform::everyUnknownNameIsReported()
{
    const QStringList names {"dut.cuont[0]", "count[1]", "dut.count[4]", "dut.count", "level",
        "ut.bits[0]", "nothing.like.it", "tb.cl k", "tb.c\\lk", "tb.clk "};
    QVERIFY(!sample(QByteArray(kHeader) + kChanges,
        {
            {"clock", false, {names}}
    }));
    QCOMPARE(messages(),
        QStringList({"clock: is not in the waveform; the nearest names are tb.clk, tb.dut.clk",
            "dut.cuont[0]: is not in the waveform; the nearest names are tb.dut.count[3:0], "
            "tb.other.count[0:3]",
            "count[1]: is ambiguous in the waveform: it may be tb.dut.count[3:0], "
            "tb.other.count[0:3]",
            "dut.count[4]: is not a bit of tb.dut.count[3:0]",
            "dut.count: is not a single bit: the waveform has tb.dut.count[3:0]",
            "level: is not in the waveform",
            "ut.bits[0]: is not in the waveform; the nearest names are tb.dut.bits[0], "
            "tb.dut.bits[1]",
            "nothing.like.it: is not in the waveform",
            "tb.cl k: is not in the waveform; the nearest names are tb.clk, tb.dut.clk",
            "tb.c\\lk: is not in the waveform; the nearest names are tb.clk, tb.dut.clk",
            "tb.clk : is not in the waveform; the nearest names are tb.clk, tb.dut.clk"}));
    QVERIFY(!sample(kHeader,
        {
            {"clk", false, {{"\\bits[0] ", "/\\tb /dut/\\count[1] "}}}
    }));
    QCOMPARE(messages(), QStringList("clk: the sample clock has no rising edge in the waveform"));
}

// Scopes in scopes, with a variable in each: the full names together take a thousand times the
// file.
void TestWaveform::deepScopesTakeLittleMemory()
{
    constexpr int kDepth = 10000;
    QByteArray vcd;
    for (int depth = 0; depth < kDepth; ++depth)
        vcd += "$scope module s" + QByteArray::number(depth) + " $end\n$var wire 1 ! v $end\n";
    vcd += "$enddefinitions $end\n";
    VcdReader reader(writeFile(m_dir.filePath("w"), vcd));
    const size_t before = mallinfo2().uordblks;
    QVERIFY(reader.readHeader());
    const SignalFinder finder(reader);
    const size_t taken = mallinfo2().uordblks - before;
    QVERIFY2(taken < 20 * size_t(vcd.size()), qPrintable(QString::number(taken)));
    for (const char* name : {"s0.v", "s0/s1.v", "s4999.s5000/v", "v"})
        QCOMPARE(finder.find(name, nullptr).code, 0);
    for (const char* name : {"0.s1.v", "s1.s3.v", "s5.s4.v", ".s1.v.", "x.s0.v", ""})
        QCOMPARE(finder.find(name, nullptr).code, -1);
    QVERIFY(finder.find(QString::fromStdString(reader.fullName(reader.variables().back())), nullptr)
                .code
        == 0);
}

void TestWaveform::damageIsReportedWithItsLine()
{
    struct Row {
        const char *what, *text, *message;
    };
    const Row headers[] = {
        {"nothing at all",                "",                                           "w:1: the file ends before $enddefinitions"   },
        {"no dump",
         "\x7f"
            "ELF\x01\n",                                                                "w:1: expected a declaration, found \"?ELF?\""},
        {"open section",                  "$comment\n $var wire 1 ! a",                 "w:2: the file ends inside $comment"          },
        {"scope without a name",          "\n$scope module $end",                       "w:2: $scope needs a kind and a name"         },
        {"upscope too often",             "$upscope $end",                              "w:1: $upscope without an open scope"         },
        {"short declaration",             "$var wire 1 ! $end",
         "w:1: $var needs a kind, a width, an identifier and a name"                                                                  },
        {"no bits",                       "$var wire 0 ! a $end",                       "w:1: a variable cannot have \"0\" bits"      },
        {"absurd width",                  "$var wire 2000000000 ! a $end",
         "w:1: a variable cannot have \"2000000000\" bits"                                                                            },
        {"range narrower than its width", "$var wire 9 ! a [7:0] $end",
         "w:1: \"a[7:0]\" does not have \"9\" bits"                                                                                   },
        {"range and width differ",        "$var wire 4 ! a [7:0] $end",
         "w:1: \"a[7:0]\" does not have \"4\" bits"                                                                                   },
        {"one net, two widths",           "$var wire 4 ! a $end\n$var wire 5 ! b $end",
         "w:2: identifier \"!\" was declared with another width"                                                                      },
    };
    const Row changes[] = {
        {"no change",                  "#0\nnever",             "w:18: expected a time or a value change, found \"never\""},
        {"undeclared identifier",      "#0\n1!\n0?",            "w:19: identifier \"?\" was not declared"                 },
        {"undeclared long identifier", "b1 !!!!!",              "w:17: identifier \"!!!!!\" was not declared"             },
        {"bits that are none",         "b0120 \"",              "w:17: \"b0120\" is not a value of bits"                  },
        {"too many bits",              "b00000 \"",             "w:17: a value of 5 bits for the 4 of identifier \"\"\""  },
        {"cut off in a vector",        "#5\nb0101",             "w:18: the file ends inside a value change"               },
        {"cut off in a real",          "r1.5",                  "w:17: the file ends inside a value change"               },
        {"time that is none",          "#1x",                   "w:17: \"#1x\" is not a time"                             },
        {"time too large",             "#99999999999999999999",
         "w:17: \"#99999999999999999999\" is not a time"                                                                  },
        {"time running backwards",     "#7\n#6",                "w:18: time \"#6\" is before the previous one"            },
    };
    const auto requireMessage = [this](const QByteArray& vcd, const Row& row) {
        const SampleRequest request {"tb.clk", false, {{"bits[0]"}}};
        QVERIFY2(!sample(vcd, {request}), row.what);
        QCOMPARE(messages(), QStringList(row.message));
    };
    for (const Row& row : headers)
        requireMessage(row.text, row);
    for (const Row& row : changes)
        requireMessage(QByteArray(kHeader) + row.text, row);
}

// Blanks of every length: the reader's buffer ends at each letter of the words behind them.
void TestWaveform::wordsMayCrossEveryBuffer()
{
    const QByteArray changes = "#10\n1!\nb110 \"\n#20\n0!\n#30\n1!\n";
    for (int at = 0; at < changes.size(); ++at) {
        QByteArray vcd = kHeader;
        vcd.append(QByteArray((1 << 20) - vcd.size() - at - 4, '\n'))
            .append("0! \n")
            .append(changes);
        QVERIFY(sample(vcd,
            {
                {"tb.clk", false, {{"dut.count[1]"}}}
        }));
        QCOMPARE(samplesText(m_result.cores[0]), "x 1");
    }
    QVERIFY(!sample(QByteArray(3 << 20, 'a'),
        {
            {"tb.clk", false, {}}
    }));
    QVERIFY(messages().value(0).contains("too long for a value change dump"));
}

// Written by programs that are not ours; a kind is known by its content.
void TestWaveform::everyKindIsReadAlike()
{
    const struct {
        const char *what, *command, *message;
    } rows[] = {
        {"two members of gzip",  "{ head -c 99 w | gzip; tail -c +100 w | gzip; } >k",               ""                               },
        {"FST",                  "vcd2fst w k",                                                      ""                               },
        {"packed FST",           "vcd2fst -c w k",                                                   ""                               },
        {"gzip without its end", "gzip <w | head -c -9 >k",
         "k:41: the compressed file is truncated"                                                                                     },
        {"damaged gzip",         "{ gzip <w | head -c 60; yes | head -c 999; } >k",
         "the compressed file is damaged: "                                                                                           },
        {"FST without its end",  "vcd2fst w v && head -c -1 v >k",
         "the FST file is truncated, or still"                                                                                        },
        {"packed nothing",       "printf '\\376\\0\\0\\0\\0\\0\\0\\0\\11x' >k",
         "fst2vcd cannot read it; the FST file "                                                                                      },
        {"no archive",           "printf 'PK\\3\\4' >k",                                             "the sigrok session is damaged: "},
        {"another archive",      "cmake -E tar cf k --format=zip w",                                 "it has no file metadata"        },
        {"no channels",
         "printf '[device 1]\\ncapturefile=l\\n' >metadata; cmake -E tar cf k --format=zip "
            "metadata",                                                                              "has no digital channels"        },
        {"half a sample",
         "printf 'capturefile=l\\nprobe1=a\\nunitsize=2\\n' >metadata; printf abc >l-1; "
            "cmake -E tar cf k --format=zip metadata l-1",                                           "its last sample is not complete"},
        {"too many channels",
         "printf 'capturefile=l\\nprobe17=a\\nunitsize=2\\n' >metadata; "
            "cmake -E tar cf k --format=zip metadata l-1",                                           "do not fit into the samples"    },
        {"endless text",         "{ cat w; echo '$comment'; yes | head -c 17000000; } | gzip -1 >k",
         "has no $end within 16 MiB"                                                                                                  },
    };
    writeFile(m_dir.filePath("w"), QByteArray(kHeader) + kChanges);
    const SampleRequest request {"clk", false, {{"dut.count[3]", "late/one"}}};
    for (const auto& row : rows) {
        QProcess shell;
        shell.setWorkingDirectory(m_dir.path());
        shell.start("sh", {"-c", row.command});
        QVERIFY2(finished(shell) && shell.exitCode() == 0, row.what);
        m_messages.clear();
        const bool read = sampleWaveform(m_dir.filePath("k"), {request}, m_result, m_messages);
        QCOMPARE(read, *row.message == '\0');
        QVERIFY2(messages().join('|').contains(row.message), qPrintable(messages().join('|')));
        QCOMPARE(read ? samplesText(m_result.cores[0]) : "0x 01 x1", QString("0x 01 x1"));
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    const bool read = sampleWaveform(m_dir.filePath("v"), {request}, m_result, m_messages);
    qputenv("PATH", path);
    QVERIFY(!read && messages().last().contains("install the package gtkwave"));
}

QTEST_APPLESS_MAIN(TestWaveform)
#include "test_waveform.moc"
