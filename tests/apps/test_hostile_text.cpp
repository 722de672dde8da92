#include "support/files.h"
#include "support/oxa_program.h"
#include "support/waveforms.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <future>

namespace {

const QString kPart = "QX1N-9LV-QFN88-C6";

// Of all signals alike; longer than a window.
const QStringList kSamples
    = QString("000 000 000 111 000 111 000 000 111 000 000 111 000 000").split(' ');

// Clears a terminal, sets its title, turns the reading order, and forges a message.
const QString kSteering = QString::fromUtf8("\x1b[2J\xc2\x9b"
                                            "0c\xe2\x80\xae\n"
                                            "error: forged\r\x07\x7f");

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

// Names, paths and replies that were made to be more than text.
class TestHostileText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void namesThatWouldBeCode_data();
    void namesThatWouldBeCode();
    void oddNamesStayWords();
    void whatIsPrintedSteersNothing_data();
    void whatIsPrintedSteersNothing();
    void repliesSteerNothing();
    void jsonKeepsItsMeaning();
    void pathsAreNoOptions();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList simulated(const QString& command, const QString& file) const
    {
        return {command, file, "--part", kPart, "--stimulus", path("wave.vcd")};
    }

    QTemporaryDir m_dir;
    QString m_steering; // a configuration
};

void TestHostileText::initTestCase()
{
    // The finder of names must not help a hostile one to its signal either.
    writeFile(path("wave.vcd"), vcdOf({"ab", "a`b", "ab;"}, kSamples));
    m_steering = writeFile(path("steering " + kSteering + ".oxa"),
        configuration("a" + kSteering, "clk" + kSteering, kSteering, "M0" + kSteering));
}

void TestHostileText::namesThatWouldBeCode_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("blank") << "a b"
                           << "a b";
    QTest::newRow("line end") << "a\nb"
                              << "a\\nb";
    QTest::newRow("no-break space")
        << QString("a%1b").arg(QChar(0xa0)) << QString("a%1b").arg(QChar(0xa0));
    QTest::newRow("next line") << QString("a%1b").arg(QChar(0x85)) << "a\\u0085b";
    QTest::newRow("escape") << "a\x1b[2Jb"
                            << "a\\u001b[2Jb";
    QTest::newRow("macro") << "a`b"
                           << "a`b";
    QTest::newRow("escaped, then code") << "\\ab ; b "
                                        << "\\ab ; b ";
    QTest::newRow("never ends") << "\\ab;"
                                << "\\ab;";
}

void TestHostileText::namesThatWouldBeCode()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    const QString file = writeFile(path("name.oxa"), configuration(name));
    const QString work = path("work");
    const QStringList calls[] = {
        {"generate",        file,    "--part", kPart, "--work-dir", work, "--no-synthesis"},
        {"generate",            file,       "--part", kPart, "--work-dir", work},
        simulated("simulate", file) + QStringList {"--keep-work", work       },
        simulated("target", file) + QStringList {"--port",  "0"},
    };
    for (const QStringList& call : calls) {
        const Result result = oxa(call);
        QVERIFY2(result.err.contains("core 0: the signal name \"" + shown + '"'),
            qPrintable(result.err));
        QCOMPARE(result.status, 2);
        QVERIFY(!QFile::exists(work));
    }
}

// Icarus and Yosys read the names that are accepted as the finder of signals does.
void TestHostileText::oddNamesStayWords()
{
    const QStringList names {"ab", "a;b", "$fopen(\"f\")", "\"", "(*", "a*)", "x,y", "a\\b", "x/*y",
        "//", "x;endmodule", "{a}", "a'b", "#1", "@(a)", QString::fromUtf8("\xc3\xa9")};
    QStringList samples;
    for (int i = 0; i < 24; ++i)
        samples += QString::number((i * 40503) & 0xffff, 2).rightJustified(names.size(), '0');
    writeFile(path("odd.vcd"), vcdOf(names, samples));
    QByteArray content = configuration("ab");
    QByteArray list;
    for (const QString& name : names)
        list += "<Signal capture_enable=\"true\">"
            + entities(name).toHtmlEscaped().replace("&amp;#", "&#").toUtf8() + "</Signal>";
    content.replace(content.indexOf("<Signal cap"), list.indexOf("<Signal cap", 1), list);
    const QString file = writeFile(path("odd.oxa"), content);
    const QStringList simulate {"simulate", file, "--part", kPart, "--stimulus", path("odd.vcd")};
    const Result netlist
        = oxa({"generate", file, "--part", kPart, "--work-dir", path("odd"), "-o", path("odd.v")});
    QVERIFY2(netlist.status == 0, qPrintable(netlist.err));
    QByteArray first;
    for (const QStringList& how : {
             QStringList("--model"), QStringList(), QStringList {"--netlist", path("odd.v")}
    }) {
        const Result result = oxa(simulate + QStringList {"-o", path("odd.csv")} + how);
        QVERIFY2(result.status == 0, qPrintable(result.err));
        first = first.isEmpty() ? bytesOf(path("odd.csv")) : first;
        QCOMPARE(bytesOf(path("odd.csv")), first);
    }
    QVERIFY(first.count('\n') > 2); // there are samples
}

void TestHostileText::whatIsPrintedSteersNothing_data()
{
    QTest::addColumn<QStringList>("call");
    const QString plain = writeFile(path("plain.oxa"), configuration("ab"));
    QTest::newRow("show") << QStringList {"show", m_steering};
    QTest::newRow("show, JSON") << QStringList {"show", m_steering, "--json"};
    QTest::newRow("check") << QStringList {"check", m_steering};
    QTest::newRow("check, JSON") << QStringList {"check", m_steering, "--json"};
    QTest::newRow("estimate") << QStringList {"estimate", m_steering, "--part", kPart};
    QTest::newRow("generate") << QStringList {
        "generate", m_steering, "--part", kPart, "--work-dir", path("w")};
    QTest::newRow("simulate") << simulated("simulate", m_steering);
    QTest::newRow("capture") << QStringList {"capture", plain, "--unit", kSteering};
    QTest::newRow("set") << QStringList {"set", plain, "--port", "T0=" + kSteering};
    QTest::newRow("no file") << QStringList {"show", kSteering};
    QTest::newRow("no part") << QStringList {"voltage", "--part", kSteering};
    QTest::newRow("no catalogue") << QStringList {"devices", "--device-db", kSteering};
    QTest::newRow("no command") << QStringList {kSteering};
    QTest::newRow("no option") << QStringList {"show", m_steering, '-' + kSteering};
    QTest::newRow("the library's log") << QStringList {"new", path("no/" + kSteering)};
}

void TestHostileText::whatIsPrintedSteersNothing()
{
    QFETCH(QStringList, call);
    const Result result = oxa(call);
    const QString all = result.out + result.err;
    static const QRegularExpression steers(
        "(?!\n)[\\p{Cc}\\p{Cf}\\p{Zl}\\p{Zp}]|^error: forged", QRegularExpression::MultilineOption);
    QVERIFY2(!steers.match(all).hasMatch(), qPrintable(all));
    QVERIFY2(all.contains("u009b0c") && all.contains("u202e"), qPrintable(all));
}

void TestHostileText::repliesSteerNothing()
{
    std::promise<quint16> port;
    const std::unique_ptr<QThread> server(QThread::create([&port] {
        QTcpServer openocd;
        openocd.listen(QHostAddress::LocalHost);
        port.set_value(openocd.serverPort());
        if (!openocd.waitForNewConnection(-1))
            return;
        QTcpSocket* client = openocd.nextPendingConnection();
        client->waitForReadyRead(-1);
        client->write("1 " + kSteering.toUtf8() + '\x1a');
        client->waitForDisconnected(-1);
    }));
    server->start();
    const QString file = writeFile(path("plain.oxa"), configuration("ab"));
    const Result result
        = oxa({"capture", file, "--openocd", QString(":%1").arg(port.get_future().get())});
    server->wait();
    QCOMPARE(result.err,
        QString("error: OpenOCD: \\u001b[2J\\u009b0c\\u202e\\nerror: forged\\r\\u0007\\u007f\n"));
}

void TestHostileText::jsonKeepsItsMeaning()
{
    const Result result = oxa({"show", m_steering, "--json"});
    const QJsonObject json = QJsonDocument::fromJson(result.out.toUtf8()).object();
    const QJsonObject core = json.value("cores").toArray().first().toObject();
    QCOMPARE(core.value("signals").toArray().first().toString(), "a" + kSteering);
    QCOMPARE(core.value("module").toString(), kSteering);
}

// Every path is one that begins with a dash.
void TestHostileText::pathsAreNoOptions()
{
    QVERIFY(QDir::setCurrent(m_dir.path()));
    QVERIFY(QFile::link(OXA_BINARY_DIR "/share/oxautils/ip", "-ip"));
    writeFile("-c.oxa", configuration("ab"));
    writeFile("-.vcd", bytesOf("wave.vcd"));
    const QStringList part {"--part", kPart, "--ip-dir=-ip"};
    const Result listed = oxa(QStringList {"generate", "--work-dir=-w", "--no-synthesis"} + part
        + QStringList {"--", "-c.oxa"});
    QCOMPARE(listed.status, 0);
    for (const QString& line : listed.out.split('\n', Qt::SkipEmptyParts))
        QVERIFY2(line.startsWith("./-") || line.startsWith("+incdir+-"), qPrintable(line));
    const Result netlist = oxa(
        QStringList {"generate", "--work-dir=-w", "-o-o.v"} + part + QStringList {"--", "-c.oxa"});
    QVERIFY2(netlist.status == 0, qPrintable(netlist.err));
    for (const char* more : {"--netlist=-o.v", "--output=-s.csv"}) {
        const Result simulated
            = oxa(QStringList {"simulate", more, "--stimulus=-.vcd", "--keep-work=-k"} + part
                + QStringList {"--", "-c.oxa"});
        QVERIFY2(simulated.status == 0, qPrintable(simulated.err));
        QVERIFY(QFile::exists("-k/target.vvp"));
    }
    const Result broken
        = oxa(simulated("simulate", path("-c.oxa")) + QStringList {"--keep-work=k\ny"});
    QCOMPARE(broken.status, 1);
    QVERIFY2(broken.err.contains("/k\\ny") && broken.err.contains("end of a path"),
        qPrintable(broken.err));
}

QTEST_GUILESS_MAIN(TestHostileText)
#include "test_hostile_text.moc"
