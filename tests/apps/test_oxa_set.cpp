#include "support/files.h"
#include "support/oxa_program.h"
#include "support/rows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
const QString kUartLite = OXA_SOURCE_DIR "/examples/uart/uart_lite.oxa";

// Options are separated by blanks; a tilde stands for one within an option.
struct Row {
    const char* what;
    const char* options;
    int status;
    const char* text; ///< of what `show` prints then, or of the messages
};

// clang-format off
constexpr Row kChanges[] = {
    {"new unit", "--unit M3=T0~==~0x43 --expression 0=m3", 0, "\n  M3       Basic: T0 == 0x043\n"},
    {"cheaper type", "--unit 0.M1=T1~>~3", 0, "\n  M1       Extended: T1 > 00011\n"},
    {"unit off", "--unit M0=off --expression 0=M2", 0, "before the trigger\n  T0"},
    {"expression", "--expression 1=m1|m2", 0, "static, M0, then M1|M2\n"},
    {"one more", "--expression 0.2=M2", 0, "M1 && M2, then M2\n"},
    {"one less", "--expression 0=none --expression 1=M0&M1&M2", 0, "static, M0&M1&M2\n"},
    {"none left", "--expression 0=none --expression 1=none", 0, "static, by force only\n"},
    {"dynamic", "--expression 1=M1~&~M2 --expression-type dynamic --table-memory registers", 0,
        "dynamic, M0, then M1&M2; tables in registers\n"},
    {"windows", "--windows 0=4 --samples 200 --position 7", 0,
        "windows  4 of 200 samples, 7 before the trigger\n"},
    {"memory", "--depth 2048 --memory shadow~sram", 0, "x 2048 samples in shadow SRAM: "},
    {"edges", "--edge FALLING --force-falling on", 0, "; forced by the falling edge\n"},
    {"power-up", "--power-up on", 0, "\n  armed    from power-up on; "},
    {"port", "--port T3=uart_tx/busy,~uart_tx/state~(2) --unit M3=T3~==~6", 0,
        "\n  T3       3 bits: uart_tx/busy, uart_tx/state (2)\n"},
    {"port of a bit", "--port T2=uart_tx/data[7]", 0, "\n  T2       1 bit: uart_tx/data[7]\n"},
    {"port's names", "--port T3=uart_tx/busy,uart_tx/stat", 2, "character 14, \"uart_tx/stat\": "},
    {"refused port", "--port T2=none", 1, "M2: it is switched on, but its port T2 has no signals"},
    {"no such unit", "--unit M16=T0~==~1", 2, "--unit M16=T0 == 1: write it like M3="},
    {"unit's text", "--unit M3=T0~=~1", 2, "--unit M3=T0 = 1: character 4, \"= 1\": write one"},
    {"no such core", "--unit 1.M3=off", 2, "there is no core 1; the last is 0"},
    {"nor below", "--samples -1=5", 2, "there is no core -1; the last is 0"},
    {"no such level", "--expression 3=M0", 2, "--expression 3=M0: the core has 2 expressions, "},
    {"no number", "--windows four", 2, "\"four\" is not an integer of 32 bits"},
    {"no such word", "--edge both", 2, "\"both\" is not one of \"rising\", \"falling\""},
    {"only Lite", "--input-register on", 2, "Standard cores do not have it"},
    {"refused unit", "--unit M1=T1~in~5..3", 1, "core 0, M1: its range begins at 00101 and ends"},
    {"refused level", "--expression 1=M5", 1, "expression 1: \"M5\" names M5, which is switched"},
    {"refused window", "--samples 10", 1, "the trigger is at position 32 of a window of 10 sam"},
};

constexpr Row kLiteChanges[] = {
    {"words", "--samples 64 --memory shadow~SRAM --edge falling", 0,
        "falling edge, module uart_tx\n  data     8 bits x 64 samples in shadow SRAM: "},
    {"flags", "--power-up on --input-register on", 0, "after an input register\n  armed "},
    {"no trigger", "--unit M0=off", 2, "--unit M0=off: Lite cores have no trigger"},
    {"no windows", "--windows 2", 2, "Lite cores do not have it"},
    {"refused", "--samples 0", 1, "core 0: it captures 0 samples"},
};
// clang-format on

}

/// `oxa set`.
class TestOxaSet : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changes_data() { addRows(kChanges); }
    void changes() { change(kUart, rowOf(kChanges)); }
    void liteChanges_data() { addRows(kLiteChanges); }
    void liteChanges() { change(kUartLite, rowOf(kLiteChanges)); }
    void writesAnew();
    void takesWhatShowPrints();
    void oldErrorsDoNotStop();
    void namesTheCore();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    void change(const QString& file, const Row& row);

    QTemporaryDir m_dir;
};

void TestOxaSet::change(const QString& file, const Row& row)
{
    const QString copy = writeFile(path("changed.oxa"), bytesOf(file));
    const QStringList options = QString(row.options).split(' ').replaceInStrings("~", " ");
    const Result result = oxa(QStringList {"set", copy} + options);
    QCOMPARE(result.status, row.status);
    const QString text = row.status == 0 ? oxa({"show", copy}).out : result.err;
    QVERIFY2(text.contains(row.text), qPrintable(text));
    if (row.status != 0)
        QCOMPARE(bytesOf(copy), bytesOf(file));
    else
        QVERIFY(text.contains(" matches\n"));
}

void TestOxaSet::writesAnew()
{
    QByteArray damaged = bytesOf(kUart).replace("<OXA_ID>0", "<OXA_ID>1");
    damaged.replace("<Triggers>", "<Trigers/><Triggers>");
    const QString file = writeFile(path("damaged.oxa"), damaged);
    const Result result = oxa({"set", file, "-o", path("anew.oxa")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, path("anew.oxa") + ": written\n");
    QVERIFY2(result.err.count('\n') == 1 && result.err.contains("Trigers"), qPrintable(result.err));
    QCOMPARE(bytesOf(path("anew.oxa")), bytesOf(kUart));
    QCOMPARE(bytesOf(file), damaged);
    QCOMPARE(oxa({"set", file, "-o", path("no/such.oxa")}).status, 1);

    // What a port's mark captures in files of an older layout stays captured.
    QByteArray marked = bytesOf(kUart);
    const int port = marked.indexOf("<SignalList", marked.indexOf("<Trigger index=\"2\""));
    marked.replace(port, marked.indexOf("\"true\"", port) - port,
        "<SignalList capture_from_trigger=\"1\"><Signal capture_enable=");
    marked.replace(marked.indexOf("true", port), 4, "false");
    writeFile(path("marked.oxa"), marked);
    QCOMPARE(oxa({"set", path("marked.oxa")}).status, 0);
    QVERIFY(oxa({"show", path("marked.oxa")}).out.contains("  18 bits x "));
}

void TestOxaSet::takesWhatShowPrints()
{
    const QString file = writeFile(
        path("same.oxa"), bytesOf(kUart).replace("counter_width=\"2\"", "counter_width=\"5\""));
    QCOMPARE(oxa({"set", file}).status, 0); // for the checksum
    const QByteArray before = bytesOf(file);
    const QJsonObject shown
        = QJsonDocument::fromJson(oxa({"show", file, "--json"}).out.toUtf8()).object();
    const QJsonValue core = shown["cores"].toArray().at(0);
    QStringList call {"set", file, "--json"};
    for (const QJsonValue port : core["ports"].toArray())
        call += {"--port", QString("T%1=").arg(port["index"].toInt()) + port["text"].toString()};
    for (const QJsonValue unit : core["units"].toArray())
        call += {"--unit", QString("M%1=").arg(unit["index"].toInt()) + unit["text"].toString()};
    for (int i = 0; i < core["expressions"].toArray().size(); ++i)
        call += {"--expression", QString("%1=").arg(i) + core["expressions"][i].toString()};
    const Result result = oxa(call);
    const QJsonObject json = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QVERIFY2(json["written"].toBool(), qPrintable(result.err));
    QCOMPARE(json["units"].toArray().size(), 3);
    QCOMPARE(json["units"].toArray().at(1)["text"], core["units"][1]["text"]);
    QCOMPARE(bytesOf(file), before);
}

void TestOxaSet::oldErrorsDoNotStop()
{
    const QString file = writeFile(
        path("old.oxa"), bytesOf(kUart).replace("window_num=\"1\"", "window_num=\"3\""));
    const Result result = oxa({"set", file, "--expression", "0=M1"});
    QCOMPARE(result.status, 0);
    QVERIFY2(!result.err.contains("power of two"), qPrintable(result.err));
    QVERIFY(result.err.contains("warning: core 0, M0: it is switched on, but no expression"));
    QCOMPARE(oxa({"set", file, "--windows", "5"}).status, 1);
}

void TestOxaSet::namesTheCore()
{
    QByteArray content = bytesOf(kUart);
    const int begin = content.indexOf("    <AoCore ");
    const int end = content.indexOf("    <OXA_ID>");
    content.insert(end, content.mid(begin, end - begin));
    const QString file = writeFile(path("two.oxa"), content);
    const Result result = oxa({"set", file, "--samples", "5"});
    QVERIFY2(result.err.contains("there are 2 cores; write the core first, 0 to 1"),
        qPrintable(result.err));
    QCOMPARE(oxa({"set", file, "--samples", "1=100", "--unit", "1.M0=T2 falls"}).status, 0);
    const QString second = oxa({"show", file}).out.section("\ncore 1 ", 1);
    QVERIFY(second.contains("1 of 100 samples") && second.contains("Basic w/edges: T2 falls"));
}

QTEST_GUILESS_MAIN(TestOxaSet)
#include "test_oxa_set.moc"
