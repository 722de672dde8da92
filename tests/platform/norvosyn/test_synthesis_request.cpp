#include "synthesis_fixture.h"

#include <QtTest>

#include <unistd.h>

namespace {

struct BadRow {
    const char* key; ///< what the request has wrong, as SynthesisFixture::set takes it
    QVariant value;
    const char* message; ///< what follows "request: "
};

const BadRow kBad[] = {
    {"work_dir",                   7,                      R"("work_dir" is not a text)"                                     },
    {"work_dir",                   "",                     R"("work_dir" is empty)"                                          },
    {"work_dir",                   "/dev/null/w",          R"("work_dir" is no directory and cannot become one: /dev/null/w)"},
    {"project_name",               "../x",
     R"("project_name" cannot name files ()"
        R"(letters, digits, "_", "." and "-" can): "../x")"                                                                  },
    {"device",                     "QX1N-9",               R"("device" is not a map)"                                        },
    {"device/name",                1,                      R"(device: "name" is not a text)"                                 },
    {"files",                      "a.v",                  R"("files" is not a list)"                                        },
    {"files",                      QVariantList(),         R"("files" names no file)"                                        },
    {"files",                      QVariantList {"a.v"},   R"("files[0]" is not a map)"                                      },
    {"options/output_file",        "/no/o.v",
     R"(options: "output_file" is to go into a directory )"
        R"(that does not exist: /no)"                                                                                        },
    {"options/output_file",        "/tmp",                 R"(options: "output_file" is a directory: /tmp)"                  },
    {"options/disable_insert_pad", 1,                      R"(options: "disable_insert_pad" is not a text)"                  },
    {"iniconfig",                  "RESOURCE_CHECK=false", R"("iniconfig" is not a list)"                                    },
};

}

class TestSynthesisRequest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneComplaintForOneFault_data();
    void oneComplaintForOneFault();
    void everyFaultIsReported();
    void unusableSources_data();
    void unusableSources();
    void sourcesStay();
};

void TestSynthesisRequest::oneComplaintForOneFault_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < std::size(kBad); ++i)
        QTest::newRow(kBad[i].message) << int(i);
}

void TestSynthesisRequest::oneComplaintForOneFault()
{
    QFETCH(int, index);
    SynthesisFixture fixture;
    fixture.addSource("a.v", "module qx_oxa; endmodule\n");
    fixture.setEngine("echo started > started");
    fixture.set(kBad[index].key, kBad[index].value);

    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.messages(), QString("request: %1").arg(kBad[index].message));
    QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis")));
}

void TestSynthesisRequest::everyFaultIsReported()
{
    SynthesisFixture fixture;
    fixture.request.clear();
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.messages(), QString(R"(request: "work_dir" is missing
request: "project_name" is missing
request: "device" is missing
request: "files" is missing
request: "options" is missing
request: "iniconfig" is missing)"));

    fixture.request = QVariantMap {
        {"work_dir",     fixture.path("new")                                                            },
        {"project_name", "p"                                                                            },
        {"device",       QVariantMap()                                                                  },
        {"files",        QVariantList {QVariantMap(), QVariantMap {{"path", "/no.v"}, {"type", "vhdl"}}}},
        {"options",      QVariantMap()                                                                  },
        {"iniconfig",    QStringList()                                                                  },
    };
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.messages(), QString(R"(request: device: "pn" is missing
request: device: "name" is missing
request: device: "package" is missing
request: device: "speed" is missing
request: files[0]: "path" is missing
request: files[0]: "type" is missing
request: files[1]: "type" is "vhdl", not "verilog"
request: files[1]: "path" is no readable file: /no.v
request: options: "output_file" is missing)"));
    QVERIFY2(!QFile::exists(fixture.path("new")), "a request that cannot run makes no directory");
}

void TestSynthesisRequest::unusableSources_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("message");
    QTest::newRow("absent") << "/no/such.v"
                            << "\"path\" is no readable file: /no/such.v";
    QTest::newRow("directory") << "/tmp"
                               << "\"path\" is no readable file: /tmp";
    QTest::newRow("line end") << "a\n.v"
                              << "\"path\" holds a control character";
    QTest::newRow("emoji") << QString::fromUtf8("/😀.v") << "holds a character past U+FFFF";
    QTest::newRow("quote") << "/a\"b.v"
                           << "holds a double quote";
    QTest::newRow("empty") << ""
                           << "\"path\" is empty";
}

void TestSynthesisRequest::unusableSources()
{
    QFETCH(QString, path);
    QFETCH(QString, message);
    SynthesisFixture fixture;
    fixture.set("files",
        QVariantList {
            QVariantMap {{"path", path}, {"type", "verilog"}}
    });
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.proxy.messages().size(), 1);
    QVERIFY2(fixture.messages().contains(message), qPrintable(fixture.messages()));
}

// Where the run writes its own files, and under another name of the output.
void TestSynthesisRequest::sourcesStay()
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

QTEST_GUILESS_MAIN(TestSynthesisRequest)
#include "test_synthesis_request.moc"
