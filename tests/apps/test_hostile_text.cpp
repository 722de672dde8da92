// SPDX-License-Identifier: Apache-2.0
#include "oxa_calls.h"

#include "support/rows.h"
#include "support/talking_server.h"
#include "support/waveforms.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QtTest>

namespace {

// Of all signals alike; longer than a window.
const QStringList kSamples
    = QString("000 000 000 111 000 111 000 000 111 000 000 111 000 000").split(' ');

// Clears a terminal, sets its title, turns the reading order, and forges a message.
const QString kSteering = QString::fromUtf8("\x1b[2J\xc2\x9b"
                                            "0c\xe2\x80\xae\n"
                                            "error: forged\r\x07\x7f");

struct Name {
    const char *what, *name, *shown;
};

constexpr Name kNames[] = {
    {"blank",              "a b",        "a b"         },
    {"line end",           "a\nb",       "a\\nb"       },
    {"no-break space",     "a\u00a0b",   "a\u00a0b"    },
    {"next line",          "a\xc2\x85_", "a\\u0085_"   },
    {"escape",             "a\x1b[2Jb",  "a\\u001b[2Jb"},
    {"macro",              "a`b",        "a`b"         },
    {"escaped, then code", "\\ab ; b ",  "\\ab ; b "   },
    {"never ends",         "\\ab;",      "\\ab;"       },
};

struct Printing {
    const char *what, *call; // HOSTILE is a file, TEXT its name
};

constexpr Printing kPrinting[] = {
    {"show",              "show HOSTILE"                               },
    {"show, JSON",        "show HOSTILE --json"                        },
    {"check",             "check HOSTILE"                              },
    {"check, JSON",       "check HOSTILE --json"                       },
    {"estimate",          "estimate HOSTILE ON"                        },
    {"generate",          "generate HOSTILE ON --work-dir DIR/w"       },
    {"simulate",          "simulate HOSTILE ON --stimulus DIR/wave.vcd"},
    {"capture",           "capture DIR/plain.oxa --unit TEXT"          },
    {"set",               "set DIR/plain.oxa --port T0=TEXT"           },
    {"no file",           "show TEXT"                                  },
    {"no part",           "voltage --part TEXT"                        },
    {"no catalogue",      "devices --device-db TEXT"                   },
    {"no command",        "TEXT"                                       },
    {"no option",         "show HOSTILE -TEXT"                         },
    {"the library's log", "new DIR/no/TEXT"                            },
};

QString entities(const QString& text)
{
    QString xml;
    for (const QChar c : text)
        xml += c > ' ' && c < '\x7f' ? QString(c) : QString("&#%1;").arg(c.unicode());
    return xml;
}

/// One core, whose texts are those that are not named here.
QByteArray configuration(const QString& signal, const QString& clock = "clk",
    const QString& module = "m", const QString& expression = "M0")
{
    const QString xml = R"(<OXA_CONFIG><Version>3.0</Version><Mode>Standard</Mode>
<AoCore index="0" sample_clock="%2" trig_type="0" storage_depth="16" window_num="1"
 capture_amount="8" implementation="0" trigger_pos="1" module_name="%3"
 force_trigger_by_falling_edge="false" capture_init_data_enabled="false">
<SignalList><Signal capture_enable="true">%1</Signal></SignalList>
<Triggers><Trigger index="0"><SignalList><Signal capture_enable="true">%1</Signal></SignalList>
</Trigger></Triggers>
<MatchUnits><MatchUnit index="0" enabled="1" match_type="0" func="0" counter_enable="0"
 counter_width="2" counter="2" countinuous="0" value0="1" value1="" trigger="0"/></MatchUnits>
<Expressions type="Static"><Expression>%4</Expression></Expressions>
</AoCore></OXA_CONFIG>)";
    return xml.arg(entities(signal), entities(clock), entities(module), entities(expression))
        .toUtf8();
}

}

// Names, paths and replies that were written to be taken for commands or code.
class TestHostileText : public QObject, OxaCalls {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void namesThatWouldBeCode_data() { addRows(kNames); }
    void namesThatWouldBeCode();
    void oddNamesStayWordsAndPathsAreNoOptions();
    void lineEndsInPaths();
    void whatIsPrintedSteersNothing_data() { addRows(kPrinting); }
    void whatIsPrintedSteersNothing();
    void repliesSteerNothing();
    void jsonKeepsItsMeaning();

private:
    Result run(const QString& call) const;

    QString m_steering; // a configuration
};

void TestHostileText::initTestCase()
{
    // The finder of names must not find a signal for a hostile name.
    writeFile(path("wave.vcd"), vcdOf({"ab", "a`b", "ab;"}, kSamples));
    writeFile(path("plain.oxa"), configuration("ab"));
    m_steering = writeFile(path("steering " + kSteering + ".oxa"),
        configuration("a" + kSteering, "clk" + kSteering, kSteering, "M0" + kSteering));
}

// HOSTILE in a call is the configuration, TEXT hostile itself.
Result TestHostileText::run(const QString& call) const
{
    QStringList list = words(call);
    return oxa(list.replaceInStrings("HOSTILE", m_steering).replaceInStrings("TEXT", kSteering));
}

void TestHostileText::namesThatWouldBeCode()
{
    const Name& row = rowOf(kNames);
    writeFile(path("name.oxa"), configuration(QString::fromUtf8(row.name)));
    for (const char* call :
        {"generate --work-dir DIR/work --no-synthesis", "generate --work-dir DIR/work",
            "simulate --stimulus DIR/wave.vcd --keep-work DIR/work",
            "target --stimulus DIR/wave.vcd --port 0"}) {
        const Result result = run(call + QString(" DIR/name.oxa ON"));
        QVERIFY2(result.err.contains("core 0: the signal name \"" + QString(row.shown) + '"'),
            qPrintable(result.err));
        QCOMPARE(result.status, 2);
        QVERIFY(!QFile::exists(path("work")));
    }
}

// Icarus and Yosys read the names that are accepted as the finder of signals does; and every path
// begins with a dash.
void TestHostileText::oddNamesStayWordsAndPathsAreNoOptions()
{
    const QStringList names {"ab", "a;b", "$fopen(\"f\")", "\"", "(*", "a*)", "x,y", "a\\b", "x/*y",
        "//", "x;endmodule", "{a}", "a'b", "#1", "@(a)", QString::fromUtf8("\xc3\xa9")};
    QStringList samples;
    for (int i = 0; i < 24; ++i)
        samples += QString::number((i * 40503) & 0xffff, 2).rightJustified(names.size(), '0');
    QByteArray content = configuration("ab");
    QByteArray list;
    for (const QString& name : names)
        list += "<Signal capture_enable=\"true\">"
            + entities(name).toHtmlEscaped().replace("&amp;#", "&#").toUtf8() + "</Signal>";
    content.replace(content.indexOf("<Signal cap"), list.indexOf("<Signal cap", 1), list);
    QVERIFY(QDir::setCurrent(path(".")));
    QVERIFY(QFile::link(OXA_BINARY_DIR "/share/oxautils/ip", "-ip"));
    writeFile("-.vcd", vcdOf(names, samples));
    writeFile("-c.oxa", content);

    const QString generate("generate ON --ip-dir=-ip --work-dir=-w ");
    const Result listed = run(generate + "--no-synthesis -- -c.oxa");
    QCOMPARE(listed.status, 0);
    for (const QString& line : listed.out.split('\n', Qt::SkipEmptyParts))
        QVERIFY2(line.startsWith("./-") || line.startsWith("+incdir+-"), qPrintable(line));
    const Result netlist = run(generate + "-o-o.v -- -c.oxa");
    QVERIFY2(netlist.status == 0, qPrintable(netlist.err));
    QByteArray first;
    for (const char* how : {"--model", "--keep-work=-k", "--netlist=-o.v"}) {
        const Result result
            = run(QString("simulate ON --ip-dir=-ip --stimulus=-.vcd --output=-s.csv ") + how
                + " -- -c.oxa");
        QVERIFY2(result.status == 0, qPrintable(result.err));
        first = first.isEmpty() ? bytesOf("-s.csv") : first;
        QCOMPARE(bytesOf("-s.csv"), first);
    }
    QVERIFY(first.count('\n') > 2); // there are samples
    QVERIFY(QFile::exists("-k/target.vvp"));
}

void TestHostileText::lineEndsInPaths()
{
    const Result broken
        = run("simulate DIR/plain.oxa ON --stimulus DIR/wave.vcd --keep-work DIR/k\ny");
    QCOMPARE(broken.status, 1);
    QVERIFY2(broken.err.contains("/k\\ny") && broken.err.contains("ends a path"),
        qPrintable(broken.err));
}

void TestHostileText::whatIsPrintedSteersNothing()
{
    const Result result = run(rowOf(kPrinting).call);
    const QString all = result.out + result.err;
    static const QRegularExpression steers(
        "(?!\n)[\\p{Cc}\\p{Cf}\\p{Zl}\\p{Zp}]|^error: forged", QRegularExpression::MultilineOption);
    QVERIFY2(!steers.match(all).hasMatch(), qPrintable(all));
    QVERIFY2(all.contains("u009b0c") && all.contains("u202e"), qPrintable(all));
}

void TestHostileText::repliesSteerNothing()
{
    const TalkingServer openocd("1 " + kSteering.toUtf8() + '\x1a', -1);
    const Result result = run("capture DIR/plain.oxa --openocd " + openocd.address());
    QCOMPARE(result.err,
        QString(
            "error: OpenOCD: \\u001b[2J\\u009b0c\\u202e\n    error: forged\\r\\u0007\\u007f\n"));
}

void TestHostileText::jsonKeepsItsMeaning()
{
    const QJsonObject json = jsonOf(run("show HOSTILE --json"));
    const QJsonObject core = json["cores"].toArray().first().toObject();
    QCOMPARE(core.value("signals").toArray().first().toString(), "a" + kSteering);
    QCOMPARE(core.value("module").toString(), kSteering);
}

QTEST_GUILESS_MAIN(TestHostileText)
#include "test_hostile_text.moc"
