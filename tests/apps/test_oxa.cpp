// SPDX-License-Identifier: Apache-2.0
#include "oxa_calls.h"

#include "support/rows.h"

#include <QDirIterator>
#include <QtTest>

#include <unistd.h>

namespace {

constexpr Call kCalls[] = {
    {"",                                                              2, "error: A subcommand is required; `oxa --help`"                          },
    {"fnord",                                                         2, "error: no command \"fnord\"; `oxa --help`"                              },
    {"new DIR/s.oxa",                                                 0, "s.oxa: an empty Standard configuration"                                 },
    {"show DIR/s.oxa",                                                0, "Standard, version 3.0, 0 cores"                                         },
    {"new DIR/s.oxa --lite",                                          2, "exists; remove it first"                                                },
    {"new DIR/l.oxa --lite",                                          0, "l.oxa: an empty Lite configuration"                                     },
    {"show DIR/l.oxa",                                                0, "Lite, version 3.0, 0 cores"                                             },
    {"new DIR/no/such.oxa",                                           2, "such.oxa: cannot be written: No such file or directory"                 },
    {"show",                                                          2, "error: FILE is required; `oxa show --help`"                             },
    {"show no/such.oxa",                                              2, "error: no/such.oxa: No such file or directory"                          },
    {"show /",                                                        2, "error: /: it is a directory"                                            },
    {"show UART",                                                     0, "index 0, clock uart_tx/clk, rising edge, module uart_tx\n"              },
    {"show UART",                                                     0, "data     17 bits x 1024 samples in block SRAM: uart_tx/busy, uart_tx/tx"},
    {"show UART",                                                     0, "M2       Basic w/edges: T2 rises, 3 times (counter of 4 bits)\n"        },
    {"show UART --json",                                              0, R"("checksum":{"computed":"0000000000010111","state":"matches")"         },
    {"show DIR/damaged.oxa",                                          0, " differs; expected "                                                    },
    {"show DIR/unsigned.oxa",                                         0, "checksum missing; "                                                     },
    {"check UART --strict",                                           0, "uart.oxa: no problems\n"                                                },
    {"check UART ON --json",                                          0, R"("problems":[],)"                                                      },
    {"check UART --part QX",                                          2, "no part \"QX\""                                                         },
    {"check DIR/deep.oxa --part QX1N-1LV-CSP30-C6",                   1, "[block-sram]"                                                           },
    {"check DIR/warned.oxa",                                          0, "[idle-continuous]"                                                      },
    {"check DIR/warned.oxa --strict",                                 1, "[idle-continuous]"                                                      },
    {"check DIR/broken.oxa",                                          1,
     "oxa:80:13: warning: core 0, M0: value0 \"r1000110\" has 8 characters"                                                                       },
    {"check DIR/broken.oxa",                                          1,
     "[value-character]\n    Levels are 0, 1 and X, with == and != only;"                                                                         },
    {"check DIR/broken.oxa",                                          1, "broken.oxa: 1 error, 1 warning\n"                                       },
    {"check DIR/broken.oxa --json",                                   1, R"([{"column":13,"core":0,"hint":"Write one character)"                  },
    {"check DIR/broken.oxa --json",                                   1, R"("line":80,"place":"core 0, M0","rule":"value-too)"                    },
    {"generate DIR/warned.oxa ON LIST --strict",                      1, "oxa:80:13: error: core 0, M0: it counts"                                },
    {"generate DIR/warned.oxa ON LIST",                               0, "oxa:80:13: warning: core 0, M0: it counts"                              },
    {"generate UART ON LIST --no-top --json",                         0, R"(/qx_con_top.v"],"format":1,"includePaths":[)"                         },
    {"show DIR/malformed.oxa --json",                                 2, R"("line":4,"message":)"                                                 },
    {"show --jsn --json",                                             2, R"({"errors":[{"message":"FILE is required;)"                            },
    {"generate DIR/broken.oxa ON LIST --json",                        1, R"("rule":"value-character")"                                            },
    {"generate DIR/illegal.oxa ON --work-dir DIR/w --no-synthesis",   1, "M3, which is switched off"                                              },
    {"simulate DIR/illegal.oxa ON --stimulus UART --keep-work DIR/w", 1, "names M3, which"                                                        },
    {"simulate DIR/illegal.oxa ON --stimulus UART --model -o DIR/w",  1, "names M3, which"                                                        },
    {"target DIR/illegal.oxa ON --stimulus UART",                     1, "names M3, which"                                                        },
    {"target UART ON --bench UART",                                   2, "no design is named"                                                     },
    {"target UART ON --stimulus UART --design UART",                  2, "or --bench with a test bench"                                           },
    {"generate DIR/malformed.oxa ON LIST",                            2, "tag mismatch at 4:"                                                     },
    {"show DIR/newer.oxa",                                            2, "this program reads versions up to 3.0"                                  },
    {"target UART ON --design UART --bench DIR/none.v",               2, "none.v: there is no such bench"                                         },
    {"simulate - ON --stimulus -",                                    2, "either FILE or the waveform"                                            },
    {"convert UART DIR/x.fst",                                        1, "uart.oxa: is no waveform"                                               },
    {"convert UART DIR/x.txt",                                        2, "the suffix has to be .vcd, .fst, .csv or .sr"                           },
    {"show DIR/w",                                                    2, "No such file"                                                           }, // nothing was written
    {"generate UART ON LIST --ip-dir /no/such",                       2, "no installed cores in /no/such"                                         },
    {"generate UART --work-dir DIR/w",                                2, "error: --part or --for is required"                                     },
    {"generate UART --for ice4 LIST",                                 2, "error: no family \"ice4\"; `oxa devices --families`"                    },
    {"generate UART --for ice40 --link jtag LIST",                    2, "error: ice40 has no link \"jtag\""                                      },
    {"generate UART --for ice40 --work-dir DIR/list --json",          0,
     R"(/board/icebreaker.pcf"],"defines":[],)"                                                                                                   },
    {"generate UART ON --work-dir DIR/w --no-top",                    2, "--no-synthesis"                                                         },
    {"generate UART ON --work-dir w --device QX-none",                2, "of device \"QX-none\" in the catalogue"                                 },
    {"generate UART ON --work-dir UART",                              2, "is not a directory"                                                     },
};

// Calls that would write over an input, which IN has of each kind, over the user's home, or over
// files that no run made. GENERATE and SIMULATE are their beginnings.
constexpr Call kOverwriting[] = {
    {"GENERATE --work-dir IN",                                      2, "contains, or is in"      },
    {"GENERATE --work-dir IN/data",                                 2, "contains, or is in"      }, // the environment names the catalogue
    {"GENERATE --work-dir IN/ip/OXA --ip-dir IN/ip",                2, "contains, or is in"      },
    {"GENERATE --work-dir IN/../home",                              2, "contains, or is in"      },
    {"GENERATE --work-dir IN/w -o IN/c.oxa",                        2, "which this command reads"},
    {"GENERATE --work-dir IN/w -o IN/twin.csv",                     2, "which this command reads"},
    {"GENERATE --work-dir IN/w --ip-dir IN/ip -o IN/ip/OXA/core.v", 2, "which this command reads"},
    {"generate IN/c.oxa ON --work-dir IN/mine",                     2, "did not create its files"},
    {"SIMULATE --keep-work IN/mine",                                2, "did not create its files"},
    {"SIMULATE --keep-work IN",                                     2, "contains, or is in"      },
    {"SIMULATE --keep-work IN/ip --netlist IN/ip/OXA/core.v",       2, "contains, or is in"      },
    {"SIMULATE --model -o IN/wave.vcd",                             2, "which this command reads"},
};

}

class TestOxa : public QObject, OxaCalls {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void calls_data() { addRows(kCalls); }
    void calls();
    void workDirectoriesAreEmptied();
    void inputsStay_data() { addRows(kOverwriting); }
    void inputsStay();
    void oneRunInAWorkDirectory();
    void streamsTakeResults();
    void referencePageIsWhatHelpSays();
    void examplesOfTheManual();
};

void TestOxa::initTestCase()
{
    changed("deep.oxa", "storage_depth=\"1024\"", "storage_depth=\"65536\"");
    QByteArray damaged = bytesOf(changed("damaged.oxa", "trig_type=\"0\"", "trig_type=\"1\""));
    const int id = damaged.indexOf("    <OXA_ID>");
    writeFile(path("unsigned.oxa"), damaged.remove(id, damaged.indexOf('\n', id) + 1 - id));
    changed("malformed.oxa", "</Mode>", "</mode>");
    changed("newer.oxa", "<Version>3.0", "<Version>4.0");
    changed("illegal.oxa", "M1 &amp;", "M3 &amp;");
    changed("broken.oxa", "value0=\"R01000110\"", "value0=\"r1000110\"");
    changed("warned.oxa", "countinuous=\"0\" func=\"0\" value0=\"R01000110\"",
        "countinuous=\"1\" func=\"0\" value0=\"R01000110\"");
}

void TestOxa::calls()
{
    const Call& row = rowOf(kCalls);
    const Result result = run(row.what);
    QCOMPARE(result.status, row.status);
    QVERIFY2(saidBy(result).contains(row.said), qPrintable(saidBy(result)));
    const bool json = words(row.what).contains("--json");
    QVERIFY(row.status != 2 || json || result.out.isEmpty());
}

void TestOxa::workDirectoriesAreEmptied()
{
    const QString work = path("their directory");
    const QStringList call
        = words("generate UART ON --no-synthesis --work-dir") + QStringList(work);
    QVERIFY(QDir().mkpath(work));
    const Result first = oxa(call); // empty: nothing to lose
    QCOMPARE(first.status, 0);
    QVERIFY2(first.err.contains("contains a space"), "no tool reads such a list");
    for (const char* option : {"", "--force"}) { // generated into before, or not
        writeFile(work + "/mine", "x");
        QCOMPARE(oxa(call + QString(option).split(' ', Qt::SkipEmptyParts)).status, 0);
        QVERIFY(!QFile::exists(work + "/mine"));
        QFile::remove(work + "/.oxa-generated");
    }
}

void TestOxa::inputsStay()
{
    const Call& row = rowOf(kOverwriting);
    const QTemporaryDir directory;
    const QString in = directory.filePath("in");
    QVERIFY(QDir().mkpath(in + "/mine"));
    writeFile(in + "/mine/.file", "old");
    for (const char* name : {"/data", "/ip/OXA", "/../home/w"}) {
        QVERIFY(QDir().mkpath(in + name));
        writeFile(in + name + "/.oxa-generated", "");
    }
    for (const char* name :
        {"/.oxa-generated", "/ip/.oxa-generated", "/ip/OXA/core.v", "/wave.vcd"})
        writeFile(in + name, "any");
    QVERIFY(QFile::copy(uart, in + "/c.oxa"));
    QVERIFY(QFile::copy(OXA_SOURCE_DIR "/share/device/devices.csv", in + "/data/devices.csv"));
    QCOMPARE(::link(qPrintable(in + "/data/devices.csv"), qPrintable(in + "/twin.csv")), 0);
    const auto content = [&directory] {
        QMap<QString, QByteArray> files;
        QDirIterator it(directory.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString file = it.next();
            files.insert(file, bytesOf(file));
        }
        return files;
    };
    const auto before = content();
    QString call = row.what;
    call.replace("GENERATE", "generate IN/c.oxa ON --force");
    call.replace("SIMULATE", "simulate IN/c.oxa ON --stimulus IN/wave.vcd");
    call.replace(QRegularExpression("\\bIN\\b"), in);
    const Result result = run(
        call, {"OXA_DEVICE_DB=" + in + "/data/devices.csv", "HOME=" + directory.filePath("home")});
    QCOMPARE(result.status, row.status);
    QVERIFY2(result.err.contains(row.said), qPrintable(result.err));
    QCOMPARE(content(), before);
}

// The second run changes nothing. A run that was killed does not block the next one.
void TestOxa::oneRunInAWorkDirectory()
{
    const QString engine = writeProgram(path("engine"),
        "echo >../started\nwhile [ ! -e ../end ]; do sleep 0.1; done\n"
        "echo 'module qx_oxa; endmodule' >netlist.v\n");
    const QStringList call = words("generate UART ON --work-dir DIR/shared");
    for (const bool killed : {true, false}) {
        QProcess first;
        first.setEnvironment(
            QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
        first.start(OXA_PROGRAM, call);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("shared/started")), kPatience);
        const Result second = oxa(call + QStringList("--force"));
        QCOMPARE(second.status, 2);
        QVERIFY2(
            second.err.contains(QString("shared is in use by process %1;").arg(first.processId())),
            qPrintable(second.err));
        QVERIFY(QFile::exists(path("shared/started")));
        if (killed)
            first.kill();
        else
            writeFile(path("shared/end"), "");
        QVERIFY(finished(first));
        QFile::remove(path("shared/started"));
    }
    QVERIFY(QFile::exists(path("shared/qx_oxa_netlist.v")));
}

// A result is written whole, or the exit status reports the failure.
void TestOxa::streamsTakeResults()
{
    QVERIFY(run("new /dev/stdout").out.startsWith("<?xml"));
    const QString engine
        = writeProgram(path("quick"), "echo 'module qx_oxa; endmodule' >netlist.v\n");
    const auto statusInto = [&](const QString& file, const QString& call) {
        QProcess process;
        process.setEnvironment(
            QProcess::systemEnvironment() + QStringList("OXA_SYNTHESIS_ENGINE=" + engine));
        process.setStandardOutputFile(file);
        process.start(OXA_PROGRAM, words(call));
        return finished(process) ? process.exitCode() : -1;
    };
    // "/dev/stdout" is a regular file then.
    QCOMPARE(
        statusInto(path("out.v"), "generate UART ON --work-dir DIR/streamed -o /dev/stdout"), 0);
    QCOMPARE(bytesOf(path("out.v")), QByteArray("module qx_oxa; endmodule\n"));
    QCOMPARE(statusInto("/dev/full", "show UART"), 1);
    QProcess pipe;
    pipe.start("sh",
        {"-c", "\"$0\" set - --samples 64 <\"$1\" 2>/dev/null | \"$0\" check -", OXA_PROGRAM,
            words("UART").first()});
    QVERIFY(finished(pipe));
    QCOMPARE(pipe.readAllStandardOutput(), QByteArray("-: no problems\n"));
    pipe.start("sh", {"-c", "echo '$enddefinitions $end #5' | \"$0\" convert - -", OXA_PROGRAM});
    QVERIFY(finished(pipe));
    QCOMPARE(pipe.readAllStandardOutput(), QByteArray("$enddefinitions $end #5\n"));
}

// tools/cli-reference BUILD/bin/oxa markdown >docs/cli.md
void TestOxa::referencePageIsWhatHelpSays()
{
    QProcess process;
    process.start(OXA_SOURCE_DIR "/tools/cli-reference", {OXA_PROGRAM, "markdown"});
    QVERIFY(finished(process));
    QCOMPARE(process.readAllStandardOutput(), bytesOf(OXA_SOURCE_DIR "/docs/cli.md"));
}

// In one directory, in their order; a chip is not here.
void TestOxa::examplesOfTheManual()
{
    const QTemporaryDir directory;
    QVERIFY(QFile::link(OXA_SOURCE_DIR "/examples", directory.filePath("examples")));
    QString script = "set -e\nPATH=" + QFileInfo(OXA_PROGRAM).path() + ":$PATH\n";
    for (const QString& line :
        QString(bytesOf(OXA_SOURCE_DIR "/apps/oxa/manual.txt")).split('\n')) {
        if (line.startsWith("  ")
            && !line.contains(QRegularExpression("oxa (probe|capture|target)")))
            script += line + '\n';
    }
    QProcess shell;
    shell.setWorkingDirectory(directory.path());
    shell.start("sh", {"-c", script});
    QVERIFY2(finished(shell) && shell.exitCode() == 0, shell.readAllStandardError());
}

QTEST_GUILESS_MAIN(TestOxa)
#include "test_oxa.moc"
