#include "support/files.h"
#include "support/oxa_program.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
const QString kUartLite = OXA_SOURCE_DIR "/examples/uart/uart_lite.oxa";

QJsonObject jsonOf(const Result& result)
{
    return QJsonDocument::fromJson(result.out.toUtf8()).object();
}

}

/// What the program says about a configuration before anything is built.
class TestOxaCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void problemsForPeople();
    void problemsForPrograms();
    void statuses_data();
    void statuses();
    void generateWarns();
    void whatCannotBeBuiltIsRefused_data();
    void whatCannotBeBuiltIsRefused();
    void estimates();
    void estimatesAsJson();
    void whatDoesNotFit();
    void liteMemories();

private:
    /// The example with `from` replaced by `to`.
    QString changed(const QString& name, const QByteArray& from, const QByteArray& to)
    {
        QByteArray content = bytesOf(kUart);
        if (!content.contains(from))
            qFatal("no %s in the example", from.constData());
        return writeFile(m_dir.filePath(name), content.replace(from, to));
    }

    QTemporaryDir m_dir;
    QString m_broken; // an error and a warning
    QString m_warned;
};

void TestOxaCheck::initTestCase()
{
    m_broken = changed("broken.oxa", "value0=\"R01000110\"", "value0=\"r1000110\"");
    m_warned = changed("warned.oxa", "countinuous=\"0\" func=\"0\" value0=\"R01000110\"",
        "countinuous=\"1\" func=\"0\" value0=\"R01000110\"");
}

void TestOxaCheck::problemsForPeople()
{
    const Result result = oxa({"check", m_broken});
    QCOMPARE(result.status, 1);
    QString expected
        = "FILE:80:13: warning: core 0, M0: value0 \"r1000110\" has 8 characters for the 9 signals "
          "of T0, and is filled up with \"0\" in front [value-too-short]\n"
          "    Write one character a signal; X for those that do not matter.\n"
          "FILE:80:13: error: core 0, M0: value0 \"r1000110\" holds \"r\"; function \"==\" of type "
          "\"Basic w/edges\" takes only \"01XRFBN\" [value-character]\n"
          "    Levels are 0, 1 and X, with == and != only; edges R, F, B, N take a type with "
          "edges.\n"
          "FILE: 1 error, 1 warning\n";
    QCOMPARE(result.out, expected.replace("FILE", m_broken));
    QVERIFY(result.err.isEmpty());
    QCOMPARE(oxa({"check", kUart}).out, kUart + ": no problems\n");
}

void TestOxaCheck::problemsForPrograms()
{
    const Result result = oxa({"check", m_broken, "--json"});
    QCOMPARE(result.status, 1);
    const QJsonArray problems = jsonOf(result).value("problems").toArray();
    QCOMPARE(problems.size(), 2);
    QJsonObject first = problems.first().toObject();
    QVERIFY(first.take("text").toString().contains("8 characters"));
    QVERIFY(first.take("hint").toString().endsWith('.'));
    const QJsonObject expected {
        {"rule",     "value-too-short"},
        {"severity", "warning"        },
        {"place",    "core 0, M0"     },
        {"core",     0                },
        {"unit",     0                },
        {"line",     80               },
        {"column",   13               }
    };
    QCOMPARE(first, expected);
    QVERIFY(jsonOf(oxa({"check", kUart, "--json"})).value("problems").toArray().isEmpty());
}

void TestOxaCheck::statuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::newRow("good") << QStringList {kUart, "--strict"} << 0;
    QTest::newRow("good on a part") << QStringList {kUart, "--part", "QX1N-9LV-QFN88-C6"} << 0;
    QTest::newRow("too large for a part") << QStringList {
        changed("deep.oxa", "storage_depth=\"1024\"", "storage_depth=\"65536\""), "--part",
        "QX1N-1LV-CSP30-C6"} << 1;
    QTest::newRow("warnings") << QStringList {m_warned} << 0;
    QTest::newRow("warnings, strictly") << QStringList {m_warned, "--strict"} << 1;
    QTest::newRow("malformed") << QStringList {writeFile(m_dir.filePath("m"), "<a>")} << 1;
    QTest::newRow("no file") << QStringList {"/no/such.oxa"} << 2;
    QTest::newRow("no part") << QStringList {kUart, "--part", "QX"} << 2;
}

void TestOxaCheck::statuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, status);
    QCOMPARE(oxa(QStringList("check") + arguments).status, status);
    QCOMPARE(oxa(QStringList("check") + arguments + QStringList("--json")).status, status);
}

void TestOxaCheck::generateWarns()
{
    const QString workDir = m_dir.filePath("work");
    const QStringList call {"generate", m_warned, "--part", "QX1N-9LV-QFN88-C6", "--work-dir",
        workDir, "--no-synthesis", "--ip-dir", m_dir.path()};
    const QString line = m_warned
        + ":80:13: %1: core 0, M0: it counts only gapless matches, but its counter is off "
          "[idle-continuous]\n";
    const Result warned = oxa(call);
    QCOMPARE(warned.status, 0);
    QCOMPARE(warned.err, line.arg("warning"));
    QVERIFY(QDir().exists(workDir + "/ao_0"));

    QVERIFY(QDir(workDir).removeRecursively());
    const Result strict = oxa(call + QStringList("--strict"));
    QCOMPARE(strict.status, 1);
    QVERIFY2(strict.err.startsWith(line.arg("error")), qPrintable(strict.err));
    QVERIFY(!QFile::exists(workDir));
}

void TestOxaCheck::whatCannotBeBuiltIsRefused_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("error"); // none: it can be built
    const auto row = [](const QByteArray& from, const QByteArray& to, const char* error) {
        QTest::newRow(to) << from << to << QString(error);
    };
    const QByteArray before = "type=\"Static\">\n            <Expression>M0</Expression>\n"
                              "            <Expression>M1 &amp;&amp; M2</Expression>";
    const auto dynamic = [](const QByteArray& expression) {
        return "type=\"Dynamic\"><Expression>M0|M1|M2" + expression + "</Expression>";
    };
    row(before, dynamic("&amp;&amp; M0"), ":97:37: error: core 0, expression 0: ");
    row(before, dynamic("+1"), "expression 0: \"M0|M1|M2+1\" holds \"+\", \"1\"");
    row(before, dynamic(""), "");
    row("M1 &amp;", "M1\n&amp;", "expression 1: ");
    row("M1 &amp;", "M3 &amp;", "names M3, which is switched off");
    row("\"R01000110\"", "\"r01000110\"", "core 0, M0: ");
    row("AoCore index=\"0\"", "AoCore index=\"7\"", "");
}

void TestOxaCheck::whatCannotBeBuiltIsRefused()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, error);
    const QString file = changed("c.oxa", from, to);
    const QString work = m_dir.filePath("refused");
    const QString wave = writeFile(m_dir.filePath("w.vcd"), "no waveform");
    const QStringList calls[] = {
        {"generate",    "--work-dir", work,       "--no-synthesis"},
        {"simulate",             "--keep-work",                work, "--stimulus", wave},
        {"simulate", "--model",         "-o",                   work + ".csv", "--stimulus", wave},
        {"target",    "--stimulus",    wave},
    };
    for (const QStringList& call : calls) {
        const Result result = oxa(call + QStringList {file, "--part", "QX1N-9LV-QFN88-C6"});
        // What can be built ends at the waveform.
        QCOMPARE(result.status, !error.isEmpty() ? 1 : call.first() == "generate" ? 0 : 2);
        QVERIFY2(result.err.contains(error), qPrintable(result.err));
        QCOMPARE(result.err.contains("\n    "), !error.isEmpty()); // what to do
        QCOMPARE(QDir(work).exists(), error.isEmpty() && call.first() == "generate");
        QDir(work).removeRecursively();
    }
}

void TestOxaCheck::estimates()
{
    const Result result = oxa({"estimate", kUart, "--part", "QX1N-9LV-QFN88-C6"});
    QCOMPARE(result.status, 0);
    // How many they are is held to synthesis by the checks of tests/ip/cores.
    static const QRegularExpression estimated("(look-up tables +|registers +)\\d\\d\\d ");
    QCOMPARE(QString(result.out).replace(estimated, "\\1### "),
        kUart
            + " on QX1N-9LV-QFN88-C6 (QX1N-9)\n"
              "\n"
              "CORE               RESOURCE        TAKES   HAS  SHARE\n"
              "0: 18 bits x 1024  block SRAM          1    26    4 %\n"
              "                   (registers)     18432  6912  267 %  does not fit\n"
              "                   (shadow SRAM)     320   270  119 %  does not fit\n"
              "analyzer           look-up tables    ###  9216    5 %\n"
              "                   registers         ###  6912    5 %\n"
              "                   block SRAM          1    26    4 %\n"
              "                   shadow SRAM         0   270    0 %\n");
}

void TestOxaCheck::estimatesAsJson()
{
    const QJsonObject json
        = jsonOf(oxa({"estimate", kUart, "--part", "QX3A-10ALV-QFN88-C8", "--json"}));
    const QJsonObject available {
        {"blockSram",  30   },
        {"luts",       10240},
        {"registers",  7680 },
        {"shadowSram", 640  }
    };
    QCOMPARE(json.value("available").toObject(), available);
    const QJsonObject core = json.value("cores").toArray().first().toObject();
    const QJsonObject takes {
        {"blockSram",  2    },
        {"registers",  18432},
        {"shadowSram", 320  }
    };
    QCOMPARE(core.value("takes").toObject(), takes); // blocks of 9 kbit, so two
    QCOMPARE(core.value("memory").toString(), QString("block SRAM"));
    QCOMPARE(json.value("total").toObject().value("blockSram").toInt(), 2);
    QVERIFY(json.value("fits").toBool());
}

void TestOxaCheck::whatDoesNotFit()
{
    const QString registers = changed("r.oxa", "implementation=\"0\"", "implementation=\"1\"");
    const Result result = oxa({"estimate", registers, "--part", "QX1N-9LV-QFN88-C6"});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.out.count("does not fit\n"), 4); // of the memory, and of the analyzer
    // Shadow SRAM that a device lacks is built as block SRAM.
    const QString shadow = changed("s.oxa", "implementation=\"0\"", "implementation=\"2\"");
    const Result lacking = oxa({"estimate", shadow, "--part", "QX1N-1LV-CSP30-C6", "--json"});
    QCOMPARE(lacking.status, 0);
    QCOMPARE(jsonOf(lacking).value("total").toObject().value("blockSram").toInt(), 1);
    const QString huge = changed("h.oxa", "storage_depth=\"1024\"", "storage_depth=\"2147483647\"");
    QCOMPARE(oxa({"estimate", huge, "--part", "QX1N-9LV-QFN88-C6"}).status, 1);
}

void TestOxaCheck::liteMemories()
{
    const Result result = oxa({"estimate", kUartLite, "--part", "QX1N-9LV-QFN88-C6"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.contains("\n0: 8 bits x 512  block SRAM"), qPrintable(result.out));
}

QTEST_GUILESS_MAIN(TestOxaCheck)
#include "test_oxa_check.moc"
