// SPDX-License-Identifier: Apache-2.0
#include "support/patience.h"
#include "support/rows.h"
#include "synthesis_fixture.h"

#include <QtTest>

#include <thread>
#include <unistd.h>

namespace {

struct BadRow {
    const char* key; ///< what the request has wrong, as SynthesisFixture::set takes it
    QVariant value;
    const char* message; ///< how the only one begins behind "request: "
};

QVariantList source(const QString& path)
{
    return {
        QVariantMap {{"path", path}, {"type", "verilog"}}
    };
}

const BadRow kBad[] = {
    {"work_dir",                   7,                      R"("work_dir" is not a text)"                           },
    {"work_dir",                   "/dev/null/w",
     R"("work_dir" is not a directory and cannot be created: /dev/null/w)"                                         },
    {"project_name",               "../x",                 R"("project_name" cannot name files (letters, digits, )"},
    {"device",                     "QX1N-9",               R"("device" is not a map)"                              },
    {"files",                      "a.v",                  R"("files" is not a list)"                              },
    {"files",                      QVariantList(),         R"("files" contains no file)"                           },
    {"files",                      QVariantList {"a.v"},   R"("files[0]" is not a map)"                            },
    {"files",                      source("/no/such.v"),   R"(files[0]: "path" is not a readable file: /no/such.v)"},
    {"files",                      source("a\n.v"),        R"(files[0]: "path" contains a control character)"      },
    {"files",                      source("/😀.v"),      R"(files[0]: "path" contains a character past U+FFFF)"  },
    {"files",                      source("/a\"b.v"),      R"(files[0]: "path" contains a double quote, )"         },
    {"files",                      source(""),             R"(files[0]: "path" is empty)"                          },
    {"options/output_file",        "/no/o.v",              R"(options: "output_file" is in a directory )"          },
    {"options/output_file",        "/tmp",                 R"(options: "output_file" is a directory: /tmp)"        },
    {"options/disable_insert_pad", 1,                      R"(options: "disable_insert_pad" is not a text)"        },
    {"iniconfig",                  "RESOURCE_CHECK=false", R"("iniconfig" is not a list)"                          },
};

/// A script that replaces the engine. It runs in the directory of the netlist.
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

/// What a run requires. Scripts replace the engine.
class TestSynthesisRuns : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneComplaintForOneFault();
    void everyFaultIsReported();
    void sourcesStay();
    void engines_data();
    void engines();
    void unusableEnvironment();
    void nothingOutlivesTheEngine();
    void stopEndsEverything();
    void stopBeforeAndAfter();
    void oneRunAtATime();
};

void TestSynthesisRuns::oneComplaintForOneFault()
{
    for (const BadRow& row : kBad) {
        SynthesisFixture fixture;
        fixture.addSource("a.v", "module qx_oxa; endmodule\n");
        fixture.setEngine("echo started > started");
        fixture.set(row.key, row.value);
        QVERIFY2(fixture.run() != 0, row.message);
        QCOMPARE(fixture.proxy.messages().size(), 1);
        const QString message = QString("request: ") + row.message;
        QVERIFY2(fixture.messages().startsWith(message), qPrintable(fixture.messages()));
        QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis")));
    }
}

void TestSynthesisRuns::everyFaultIsReported()
{
    SynthesisFixture fixture;
    fixture.set("work_dir", fixture.path("new"));
    fixture.set("device", QVariantMap());
    fixture.set("files",
        QVariantList {
            QVariantMap(), QVariantMap {{"path", "/no.v"}, {"type", "vhdl"}}
    });
    QVERIFY(fixture.run() != 0);
    const QStringList messages = fixture.proxy.messages();
    QCOMPARE(messages.size(), 8);
    QCOMPARE(messages.filter(QRegularExpression("device: .* is missing")).size(), 4);
    QCOMPARE(messages.filter(QRegularExpression("files\\[0\\]: .* is missing")).size(), 2);
    QCOMPARE(messages.at(6), QString(R"(request: files[1]: "type" is "vhdl", not "verilog")"));
    QVERIFY2(!QFile::exists(fixture.path("new")), "a request that cannot run makes no directory");
}

// Sources where the run writes its own files, and a source that is a link to the output.
void TestSynthesisRuns::sourcesStay()
{
    for (const char* name :
        {"oxa_test.tcl", "oxa_test.log", "oxa_test_synthesis/cells/a.v", "twin.v"}) {
        SynthesisFixture fixture;
        fixture.addSource(name, "module qx_oxa; endmodule\n");
        fixture.setEngine("echo new > netlist.v");
        if (name == QByteArray("twin.v"))
            QCOMPARE(::link(qPrintable(fixture.path(name)), qPrintable(fixture.output())), 0);
        QVERIFY(fixture.run() != 0);
        QVERIFY2(fixture.messages().contains(fixture.path(name)), qPrintable(fixture.messages()));
        QCOMPARE(fixture.read(name), QByteArray("module qx_oxa; endmodule\n"));
    }
}

void TestSynthesisRuns::engines_data() { addRows(kEngines); }

void TestSynthesisRuns::engines()
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

void TestSynthesisRuns::unusableEnvironment()
{
    const QList<QPair<const char*, const char*>> rows = {
        {"OXA_SYNTHESIS_ENGINE",  "oxa-no-such-engine"},
        {"OXA_SYNTHESIS_ENGINE",  "./a.v"             },
        {"OXA_SYNTHESIS_TIMEOUT", "soon"              },
        {"OXA_SYNTHESIS_TIMEOUT", "0"                 },
        {"OXA_SYNTHESIS_TIMEOUT", "99999999999"       }
    };
    for (const auto& row : rows) {
        SynthesisFixture fixture;
        addDesign(fixture);
        fixture.setEngine("echo new > netlist.v");
        QDir::setCurrent(fixture.path(""));
        qputenv(row.first, row.second);
        QVERIFY2(fixture.run() != 0, row.second);
        QCOMPARE(fixture.proxy.messages().size(), 1);
        QVERIFY2(fixture.messages().contains(row.first), qPrintable(fixture.messages()));
        QCOMPARE(fixture.read("out.v"), QByteArray("old\n"));
        QDir::setCurrent("/");
    }
}

// Which is named by a path from the directory where the program runs.
void TestSynthesisRuns::nothingOutlivesTheEngine()
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

void TestSynthesisRuns::stopEndsEverything()
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

void TestSynthesisRuns::stopBeforeAndAfter()
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

void TestSynthesisRuns::oneRunAtATime()
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

QTEST_GUILESS_MAIN(TestSynthesisRuns)
#include "test_synthesis_runs.moc"
