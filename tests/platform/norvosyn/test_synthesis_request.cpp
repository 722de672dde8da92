#include "synthesis_fixture.h"

#include <QtTest>

#include <unistd.h>

namespace {

struct BadRow {
    const char* key; ///< what the request has wrong, as SynthesisFixture::set takes it
    QVariant value;
    const char* message; ///< follows "request: "
};

QVariantList source(const QString& path)
{
    return {
        QVariantMap {{"path", path}, {"type", "verilog"}}
    };
}

const BadRow kBad[] = {
    {"work_dir",                   7,                      R"("work_dir" is not a text)"                                     },
    {"work_dir",                   "",                     R"("work_dir" is empty)"                                          },
    {"work_dir",                   "/dev/null/w",          R"("work_dir" is no directory and cannot become one: /dev/null/w)"},
    {"project_name",               "../x",
     R"("project_name" cannot name files (letters, digits, "_", "." and "-" can): "../x")"                                   },
    {"device",                     "QX1N-9",               R"("device" is not a map)"                                        },
    {"files",                      "a.v",                  R"("files" is not a list)"                                        },
    {"files",                      QVariantList(),         R"("files" names no file)"                                        },
    {"files",                      QVariantList {"a.v"},   R"("files[0]" is not a map)"                                      },
    {"files",                      source("/no/such.v"),   R"(files[0]: "path" is no readable file: /no/such.v)"             },
    {"files",                      source("/tmp"),         R"(files[0]: "path" is no readable file: /tmp)"                   },
    {"files",                      source("a\n.v"),        R"(files[0]: "path" holds a control character)"                   },
    {"files",                      source("/😀.v"),
     R"(files[0]: "path" holds a character past U+FFFF, which the engine cannot read: /😀.v)"                              },
    {"files",                      source("/a\"b.v"),
     "files[0]: \"path\" holds a double quote, which the engine cannot read: /a\"b.v"                                        },
    {"files",                      source(""),             R"(files[0]: "path" is empty)"                                    },
    {"options/output_file",        "/no/o.v",
     R"(options: "output_file" is to go into a directory that does not exist: /no)"                                          },
    {"options/output_file",        "/tmp",                 R"(options: "output_file" is a directory: /tmp)"                  },
    {"options/disable_insert_pad", 1,                      R"(options: "disable_insert_pad" is not a text)"                  },
    {"iniconfig",                  "RESOURCE_CHECK=false", R"("iniconfig" is not a list)"                                    },
};

}

class TestSynthesisRequest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneComplaintForOneFault();
    void everyFaultIsReported();
    void sourcesStay();
};

void TestSynthesisRequest::oneComplaintForOneFault()
{
    for (const BadRow& row : kBad) {
        SynthesisFixture fixture;
        fixture.addSource("a.v", "module qx_oxa; endmodule\n");
        fixture.setEngine("echo started > started");
        fixture.set(row.key, row.value);
        QVERIFY2(fixture.run() != 0, row.message);
        QCOMPARE(fixture.messages(), QString("request: ") + row.message);
        QVERIFY(!QFile::exists(fixture.path("oxa_test_synthesis")));
    }
}

void TestSynthesisRequest::everyFaultIsReported()
{
    SynthesisFixture fixture;
    fixture.set("work_dir", fixture.path("new"));
    fixture.set("device", QVariantMap());
    fixture.set("options", QVariantMap());
    fixture.set("files",
        QVariantList {
            QVariantMap(), QVariantMap {{"path", "/no.v"}, {"type", "vhdl"}}
    });
    QVERIFY(fixture.run() != 0);
    const QStringList messages = fixture.proxy.messages();
    QCOMPARE(messages.size(), 9);
    QCOMPARE(messages.filter(QRegularExpression("device: .* is missing")).size(), 4);
    QCOMPARE(messages.at(4), QString(R"(request: files[0]: "path" is missing)"));
    QCOMPARE(messages.at(6), QString(R"(request: files[1]: "type" is "vhdl", not "verilog")"));
    QCOMPARE(messages.at(8), QString(R"(request: options: "output_file" is missing)"));
    fixture.request.clear();
    QVERIFY(fixture.run() != 0);
    QCOMPARE(fixture.proxy.messages().filter(" is missing").size(), 6);
    QVERIFY2(!QFile::exists(fixture.path("new")), "a request that cannot run makes no directory");
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
