#include "synthesis_fixture.h"

#include <norvosyn/request_keys.h>

#include <QDir>
#include <QtTest>

using namespace NorvoSyn;

namespace {

struct BadRow {
    const char* key; ///< what the request has wrong, as SynthesisFixture::set takes it
    QVariant value; ///< invalid: the key is missing
    const char* message; ///< "%1" is the fixture's directory
};

const BadRow kBad[] = {
    {"work_dir",                   {},                                               "request: \"work_dir\" is missing"                      },
    {"work_dir",                   7,                                                "request: \"work_dir\" is not a text"                   },
    {"work_dir",                   "",                                               "request: \"work_dir\" is empty"                        },
    {"work_dir",                   "/dev/null/w",
     "request: \"work_dir\" is no directory and cannot become one: /dev/null/w"                                                              },
    {"project_name",               {},                                               "request: \"project_name\" is missing"                  },
    {"project_name",               "../x",
     "request: \"project_name\" cannot name files (letters, digits, \"_\", \".\" and \"-\" "
        "can): \"../x\""                                                                                                                     },
    {"device",                     {},                                               "request: \"device\" is missing"                        },
    {"device",                     "QX1N-9",                                         "request: \"device\" is not a map"                      },
    {"device/pn",                  {},                                               "request: device: \"pn\" is missing"                    },
    {"device/name",                1,                                                "request: device: \"name\" is not a text"               },
    {"device/package",             {},                                               "request: device: \"package\" is missing"               },
    {"device/speed",               QStringList(),                                    "request: device: \"speed\" is not a text"              },
    {"files",                      {},                                               "request: \"files\" is missing"                         },
    {"files",                      "a.v",                                            "request: \"files\" is not a list"                      },
    {"files",                      QVariantList(),                                   "request: \"files\" names no file"                      },
    {"files",                      QVariantList {"a.v"},                             "request: \"files[0]\" is not a map"                    },
    {"files",                      QVariantList {QVariantMap {{"type", "verilog"}}},
     "request: files[0]: \"path\" is missing"                                                                                                },
    {"options",                    {},                                               "request: \"options\" is missing"                       },
    {"options",                    QVariantList(),                                   "request: \"options\" is not a map"                     },
    {"options/output_file",        {},                                               "request: options: \"output_file\" is missing"          },
    {"options/output_file",        "/nowhere/o.v",
     "request: options: \"output_file\" is to go into a directory that does not exist: "
        "/nowhere"                                                                                                                           },
    {"options/output_file",        "/tmp",                                           "request: options: \"output_file\" is a directory: /tmp"},
    {"options/disable_insert_pad", 1,                                                "request: options: \"disable_insert_pad\" is not a text"},
    {"iniconfig",                  {},                                               "request: \"iniconfig\" is missing"                     },
    {"iniconfig",                  "RESOURCE_CHECK=false",                           "request: \"iniconfig\" is not a list"                  },
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
    QCOMPARE(fixture.messages(), QString(kBad[index].message));
    QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis")));
}

void TestSynthesisRequest::everyFaultIsReported()
{
    NorvoSyn::QxSynthesisSyncProxy proxy(nullptr);
    QVERIFY(proxy.run({}) != 0);
    QCOMPARE(proxy.messages().size(), 6);

    SynthesisFixture fixture;
    fixture.set("device", QVariantMap());
    fixture.set("files",
        QVariantList {
            QVariantMap(), QVariantMap {{"path", "/no.v"}, {"type", "vhdl"}}
    });
    fixture.set("work_dir", fixture.path("new"));
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.proxy.messages().size(), 4 + 2 + 2);
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

QTEST_GUILESS_MAIN(TestSynthesisRequest)
#include "test_synthesis_request.moc"
