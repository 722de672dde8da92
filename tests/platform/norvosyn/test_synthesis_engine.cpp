#include "support/patience.h"
#include "support/rows.h"
#include "synthesis_fixture.h"

#include <QtTest>

#include <thread>

namespace {

/// A stand-in for the engine: it runs where the netlist is to be left.
struct EngineRow {
    const char *what, *script; ///< "ok" in the script writes a netlist
    bool done;
    const char* message; ///< stands in the messages; nothing: there are none
};

constexpr EngineRow kEngines[] = {
    {"no netlist",                "exit 0",                                                             false, "ended without a netlist"       },
    {"an empty netlist",          ": > netlist.v",                                                      false, "ended without a netlist"       },
    {"fails in silence",          "ok; exit 3",                                                         false, "failed (exit status 3)"        },
    {"fails in words of its own", "echo 'disk on fire' >&2; exit 3",                                    false, "engine: disk on fire"          },
    {"crashes",                   "ok; kill -SEGV $$",                                                  false, "crashed (signal 11)"           },
    {"an error",                  "echo '/a b.v:12: ERROR: no' >&2; exit 1",                            false, "/a b.v:12: error: no"          },
    {"a warning",                 "ok; echo 'x.v:3: Warning: odd'; echo 'A: Warning: b'",               true,
     "x.v:3: warning: odd"                                                                                                                     },
    {"an error in a file",        "echo '7. Executing Verilog-2005 frontend: /i.v\nERROR: no'; exit 1",
     false,                                                                                                    "/i.v: error: no"               },
    {"floods the log",            "yes 0123456789 | head -c 8000000; ok",                               true,  ""                              },
    {"prints no line end",        "head -c 300000 /dev/zero; ok",                                       true,  ""                              },
    {"closes its output early",   "exec >&- 2>&-; sleep 0.3; ok",                                       true,  ""                              },
    {"asks a question",           "read x; ok",                                                         true,  ""                              },
    {"hangs",                     "trap '' TERM; while :; do sleep 1; done",                            false, "within 1 s and was ended (OXA_"},
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
    void engineThatIsNone();
    void timeLimitThatIsNone();
    void nothingOutlivesTheEngine();
    void stopEndsEverything();
    void stopBeforeAndAfter();
    void oneRunAtATime();
};

void TestSynthesisEngine::engines_data() { addRows(kEngines); }

void TestSynthesisEngine::engines()
{
    const EngineRow& row = rowOf(kEngines);
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine(QByteArray("ok() { echo new > netlist.v; }\n") + row.script);
    if (QByteArray(row.message).contains("within 1 s"))
        qputenv("OXA_SYNTHESIS_TIMEOUT", "1");

    QCOMPARE(fixture.run() == 0, row.done);
    QCOMPARE(fixture.read("out.v") == "old\n", !row.done);
    QVERIFY2(fixture.messages().contains(row.message), qPrintable(fixture.messages()));
    QCOMPARE(fixture.proxy.messages().isEmpty(), *row.message == 0);
    QVERIFY2(fixture.proxy.messages().size() <= 2, "not the whole log");
}

void TestSynthesisEngine::engineThatIsNone()
{
    for (const char* engine : {"/nowhere/engine", "oxa-no-such-engine", "./a.v"}) {
        SynthesisFixture fixture;
        addDesign(fixture);
        QDir::setCurrent(fixture.path(""));
        qputenv("OXA_SYNTHESIS_ENGINE", engine);

        QVERIFY(fixture.run() != 0);
        QCOMPARE(fixture.proxy.messages().size(), 1);
        QVERIFY2(fixture.messages().contains(QString(engine).section("./", -1)), engine);
        QVERIFY2(fixture.messages().contains("OXA_SYNTHESIS_ENGINE"), engine);
        QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
        QDir::setCurrent("/");
    }
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

// Which is named by a path from the directory where the program runs.
void TestSynthesisEngine::nothingOutlivesTheEngine()
{
    SynthesisFixture fixture;
    addDesign(fixture);
    fixture.setEngine("echo new > netlist.v; sleep 1000 & echo $! > ../child");
    QDir::setCurrent(fixture.path(""));
    qputenv("OXA_SYNTHESIS_ENGINE", "./engine");
    QCOMPARE(fixture.run(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(fixture.read("child")), kPatience);
    QDir::setCurrent("/");
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
    QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis/tmp")));
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
