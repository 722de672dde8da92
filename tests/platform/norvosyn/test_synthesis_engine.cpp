#include "support/patience.h"
#include "synthesis_fixture.h"

#include <QtTest>

#include <thread>

namespace {

/// A stand-in for the engine: it runs where the netlist is to be left.
struct EngineRow {
    const char *what, *script;
    bool done;
    const char* message; ///< stands in the messages; nothing: there are none
};

const EngineRow kEngines[] = {
    {"a netlist",                                  "echo 'module qx_oxa; endmodule' > netlist.v",            true,  ""                                 },
    {"no netlist",                                 "exit 0",                                                 false, "ended without a netlist"          },
    {"an empty netlist",                           ": > netlist.v",                                          false, "ended without a netlist"          },
    {"fails in silence",                           "echo new > netlist.v; exit 3",                           false, "failed (exit status 3)"           },
    {"fails in words of its own",                  "echo 'disk on fire' >&2; exit 3",                        false, "engine: disk on fire"             },
    {"crashes",                                    "echo new > netlist.v; kill -SEGV $$",                    false, "crashed (signal 11)"              },
    {"fails with an error",                        "echo '/a b/c.v:12: ERROR: no such thing' >&2; exit 1",   false,
     "/a b/c.v:12: error: no such thing"                                                                                                               },
    {"steers the terminal",                        "printf 'x.v:1: ERROR: \\033[2J\\a\\n' >&2; exit 1",      false,
     "x.v:1: error: \ufffd[2J\ufffd"                                                                                                                   },
    {"warns once",
     "for i in 1 2 3; do echo 'x.v:3: Warning: odd'; done; echo 'ABC: Warning: noise'\n"
        "echo new > netlist.v",                                                                              true,  "x.v:3: warning: odd"              },
    {"tells where an error without a place is",
     "echo '7. Executing Verilog-2005 frontend: /ip/top.v'; echo 'ERROR: no include file'; exit "
        "1",                                                                                                 false, "/ip/top.v: error: no include file"},
    {"finds a thousand errors",                    "seq -f '/x.v:%g: ERROR: bad' 1000; exit 1",              false,
     "... 980 more errors in "                                                                                                                         },
    {"has one endless error",
     "echo '/x.v:1: ERROR: bad'; yes '    and worse' | head -c 8000000; exit 1",                             false, "bad"                              },
    {"floods the log",                             "yes 0123456789 | head -c 8000000; echo new > netlist.v", true,  ""                                 },
    {"prints no line end",                         "head -c 300000 /dev/zero; echo new > netlist.v",         true,  ""                                 },
    {"closes its output early",                    "exec >&- 2>&-; sleep 0.3; echo new > netlist.v",         true,  ""                                 },
    {"does not read a question from the terminal", "read x; echo new > netlist.v",                           true,  ""                                 },
    {"hangs, deaf to the request to end",          "trap '' TERM; while :; do sleep 1; done",                false,
     "did not end within 1 s and was ended (OXA_SYNTHESIS_TIMEOUT sets the limit)"                                                                     },
};

/// True while the process is there and not merely waiting to be reaped.
bool isAlive(const QByteArray& pid)
{
    QFile file("/proc/" + pid.trimmed() + "/stat");
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains(") Z ");
}

void addDesign(SynthesisFixture& fixture)
{
    fixture.addSource("a.v", "module qx_oxa; endmodule\n");
    fixture.write("out.v", "old\n");
}

/// Waits for a file that the engine writes.
void waitFor(const SynthesisFixture& fixture, const QString& name)
{
    while (fixture.read(name).isEmpty())
        QThread::msleep(10);
}

}

class TestSynthesisEngine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void engines_data();
    void engines();
    void engineThatIsNone_data();
    void engineThatIsNone();
    void timeLimitThatIsNone();
    void nothingOutlivesTheEngine();
    void stopEndsEverything();
    void stopBeforeAndAfter();
    void oneRunAtATime();
};

void TestSynthesisEngine::engines_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < std::size(kEngines); ++i)
        QTest::newRow(kEngines[i].what) << int(i);
}

void TestSynthesisEngine::engines()
{
    QFETCH(int, index);
    const EngineRow& row = kEngines[index];
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine(row.script);
    if (QByteArray(row.message).contains("within 1 s"))
        qputenv("OXA_SYNTHESIS_TIMEOUT", "1");

    QCOMPARE(fixture.run() == 0, row.done);
    QCOMPARE(fixture.read("out.v") == "old\n", !row.done);
    QVERIFY2(fixture.messages().contains(row.message), qPrintable(fixture.messages()));
    QCOMPARE(fixture.proxy.messages().isEmpty(), *row.message == 0);
    QVERIFY2(fixture.proxy.messages().size() <= 21, "not the whole log");
    QVERIFY(fixture.messages().size() < 10000);
    QVERIFY2(fixture.messages().count("odd") < 2, "each message once");
}

void TestSynthesisEngine::engineThatIsNone_data()
{
    QTest::addColumn<QString>("engine");
    QTest::newRow("no such path") << "/nowhere/engine";
    QTest::newRow("no such name") << "oxa-no-such-engine";
    QTest::newRow("not executable") << "a.v";
}

void TestSynthesisEngine::engineThatIsNone()
{
    QFETCH(QString, engine);
    SynthesisFixture fixture;
    addDesign(fixture);
    const QString program = engine == "a.v" ? fixture.path(engine) : engine;
    qputenv("OXA_SYNTHESIS_ENGINE", program.toUtf8());

    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.proxy.messages().size(), 1);
    QVERIFY2(fixture.messages().contains(program), qPrintable(fixture.messages()));
    QVERIFY2(fixture.messages().contains("OXA_SYNTHESIS_ENGINE"), qPrintable(fixture.messages()));
    QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
}

void TestSynthesisEngine::timeLimitThatIsNone()
{
    for (const char* limit : {"soon", "-1", "0", "99999999999"}) {
        SynthesisFixture fixture;
        addDesign(fixture);
        fixture.setEngine("echo new > netlist.v");
        qputenv("OXA_SYNTHESIS_TIMEOUT", limit);
        QVERIFY(fixture.run() != 0);
        QVERIFY2(fixture.messages().contains("OXA_SYNTHESIS_TIMEOUT"), limit);
    }
}

void TestSynthesisEngine::nothingOutlivesTheEngine()
{
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine("echo new > netlist.v; sleep 1000 & echo $! > ../child");
    QCOMPARE(fixture.run(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(fixture.read("child")), kPatience);
}

void TestSynthesisEngine::stopEndsEverything()
{
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine("trap '' TERM\n(trap '' TERM; while :; do sleep 1; done) &\n"
                      "echo $! > ../child; echo $$ > ../engine.pid\nwhile :; do sleep 1; done");
    std::thread stopper([&] {
        waitFor(fixture, "engine.pid");
        fixture.proxy.tryToStop();
    });
    const int result = fixture.run();
    stopper.join();

    QVERIFY(result != 0);
    QCOMPARE(fixture.messages(), QString("the synthesis was stopped"));
    QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(fixture.read("engine.pid")), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(fixture.read("child")), kPatience);
}

void TestSynthesisEngine::stopBeforeAndAfter()
{
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine("echo new > netlist.v; echo ran >> ../ran");

    fixture.proxy.tryToStop();
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.messages(), QString("the synthesis was stopped before it began"));
    QVERIFY(fixture.read("ran").isEmpty());

    QCOMPARE(fixture.run(), 0);
    fixture.proxy.tryToStop();
    QCOMPARE(fixture.run(), 0);
    QCOMPARE(fixture.messages(), QString());
}

void TestSynthesisEngine::oneRunAtATime()
{
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine("echo '@stage 50 half'; echo '@stage 20 back'; echo new > netlist.v");
    QList<int> percents;
    int inner = 0;
    connect(&fixture.proxy, &NorvoSyn::QxSynthesisSyncProxy::progress, this,
        [&](const QString&, int percent) {
            percents << percent;
            if (percents.size() == 1)
                inner = fixture.run();
        });
    QCOMPARE(fixture.run(), 0);
    QVERIFY2(inner != 0, "a run inside a run is refused");
    QCOMPARE(percents, QList<int>({50, 50, 100}));
}

QTEST_GUILESS_MAIN(TestSynthesisEngine)
#include "test_synthesis_engine.moc"
