// SPDX-License-Identifier: Apache-2.0
#include "oxa_calls.h"

#include "support/rows.h"
#include "support/waveforms.h"

namespace {

struct Row {
    const char* what;
    const char* words; ///< a tilde stands for a blank in a word
    int status;
    const char* text;
};

// clang-format off
// Calls one after the other, of which all but the last succeed, and what the last one says. FILE is
// a file that does not exist at first, TRAPS names the design, WAVE a waveform.
constexpr Row kCalls[] = {
    {"new file", "add FILE --clock top/clk --data b --data m/off z --trigger b[7:4] sized"
        " --trigger n TRAPS", 0,
        "core 0: 13 data signals, T0 of 7, T1 of 1, clock top/clk\n"},
    {"ports", "add FILE --clock top/clk --data b --trigger b[7:4] sized --trigger n TRAPS"
        " | show FILE", 0, "\n  T0       7 bits: top/b[7:4] (4), top/sized (3)\n"
           "  T1       1 bit: top/m/always_there/n\n"
           "  M0       Basic: T0 == XXXXXXX\n"
           "  M1       Basic: T1 == X\n  trigger  static, M0 && M1\n"},
    {"no port", "add FILE --clock top/clk --data b TRAPS | show FILE", 0,
        "trigger  static, 1'B1\n"},
    {"no file", "check FILE TRAPS", 2, "[unreadable]"},
    {"remembered", "add FILE --clock top/clk --data z TRAPS | add FILE --clock clk2 --data *state*",
        0, "core 1: 2 data signals, clock top/clk2\n"},
    {"passes", "add FILE --clock top/clk --data *rev z --trigger rev TRAPS | check FILE", 0,
        "no problems\n"},
    {"windows", "add FILE --clock top/clk --data b --samples 100 --position 7 --windows 4 TRAPS"
        " | show FILE", 0, "x 512 samples in block SRAM: top/b (8)\n"
        "  windows  4 of 100 samples, 7 before the trigger\n"},
    {"json", "add FILE --clock top/clk --data z b --trigger z TRAPS --json", 0,
        "\"ports\":[{\"index\":0,\"width\":1}],\"position\":0,\"problems\":[],\"sampleClock\":\"top/clk\","},
    {"storage as JSON", "add FILE --clock top/clk --data z TRAPS"
        " | set FILE --store changes~of~top/z | show FILE --json", 0,
        R"("stores":{"gapBits":16,"keep":"changes","limit":0,"text":"changes of top/z, gap 16",)"
        R"("watch":["top/z"]})"},
    {"forced core", "add FILE --clock top/clk --data b TRAPS | add FILE --clock clk2 --data *state*"
        " | add FILE --clock clk2 --data *state* | set FILE --forced-by 2=1,~0 --stamps 2=on"
        " | show FILE", 0, "\n  events   forced by 0,1; stamps\n"},
    {"forced core as JSON", "add FILE --clock top/clk --data b TRAPS"
        " | add FILE --clock clk2 --data *state* | set FILE --forced-by 1=0 --trigger-out 1=on"
        " | show FILE --json", 0,
        R"("events":{"forcedBy":[0],"stamps":false,"text":"forced by 0; trigger out","triggerOut":true})"},
    {"not forced", "add FILE --clock top/clk --data b TRAPS | add FILE --clock clk2 --data *state*"
        " | set FILE --forced-by 1=0 | set FILE --forced-by 1=none | show FILE", 0,
        "before the trigger\n  trigger  static, 1'B1\n"},
    {"forced twice", "add FILE --clock top/clk --data b TRAPS | add FILE --clock clk2 --data *state*"
        " | set FILE --forced-by 1=0,0", 2, "--forced-by 1=0,0: core 0 is there twice"},
    {"forced one", "add FILE --clock top/clk --data b TRAPS | add FILE --clock clk2 --data *state*"
        " | set FILE --forced-by 0", 2, "there are 2 cores; write the core first, 0 to 1"},
    {"lite", "add FILE --lite --falling --clock top/clk --data z --samples 64 TRAPS | show FILE", 0,
        "clock top/clk, falling edge, module top\n  data     1 bit x 64 samples in block SRAM: "},
    {"lite again", "new FILE --lite | add FILE --clock top/clk --data z TRAPS | show FILE", 0,
        "Lite"},
    {"lite trigger", "add FILE --lite --clock top/clk --data z --trigger z TRAPS", 2,
        "Lite cores have no --trigger"},
    {"not lite", "new FILE | add FILE --lite --clock top/clk --data z TRAPS", 2,
        "leave out --lite"},
    {"no design", "add FILE --clock top/clk --data z", 2, "no design; name its sources"},
    {"missing", "add FILE --clock top/clkk --data b stat --trigger mm/* TRAPS", 2,
        "error: the clock \"top/clkk\" is not in the design; the nearest names are top/clk, "
        "top/clk2, top/m/clk\nerror: data \"stat\" is not in the design; the nearest names are "
        "top/state[1:0]\nerror: trigger port T0 \"mm/*\" is not in the design; "},
    {"clock of bits", "add FILE --clock b --data z TRAPS", 2,
        "the clock \"b\" has 8 bits; choose one"},
    {"memory", "add FILE --clock top/clk --data m/w* TRAPS", 2, "cannot be watched: top/m/words\n"},
    {"other clock", "add FILE --clock clk2 --data *state z TRAPS", 0,
        ": warning: core 0: the register \"top/z\" has clock \"top/clk\", the core samples it with "
        "\"top/clk2\" [other-clock]\n"},
    {"short window", "add FILE --clock top/clk --data z --samples 8 --position 7 TRAPS", 1,
        "not written, because of these new errors\n"},
    {"too long", "add FILE --clock top/clk --data z --windows 3 TRAPS", 1, "[window-count]"},
    {"wave", "add FILE --clock ck --data n[1:0] ab --wave WAVE | show FILE", 0,
        "3 bits x 1024 samples in block SRAM: top/n[1:0] (2), top/ab\n"},
    {"wave's names", "add FILE --clock ck --data n --wave WAVE | check FILE TRAPS", 1,
        ": error: core 0: \"top/ck\" is not in the design; the nearest names are top/clk, "},
    {"other wave", "add FILE --clock top/clk --data z TRAPS | check FILE --wave WAVE", 1,
        ": error: core 0: \"top/z\" is not in the waveform; the nearest names are top/n[2:0] ["},
    {"not a word", "add FILE --clock ck --data a`b --wave WAVE", 1, "[unusable-name]"},
    {"value's name", "add FILE --clock clk2 --data state --trigger state TRAPS"
        " | set FILE --unit M0=T0~==~STOP", 0, "core 0, M0: Basic: T0 == STOP\n"},
    {"no such value", "add FILE --clock clk2 --data state --trigger state TRAPS"
        " | set FILE --unit M0=T0~==~STOPP", 2,
        "; or a name, of which the nearest are STOP, "},
    {"no value of two", "add FILE --clock clk2 --data state --trigger state z TRAPS"
        " | set FILE --unit M0=T0~==~STOP", 2, "\"STOP\": write 3 digits"},
    {"constants", "add FILE --clock top/clk --data b --trigger b TRAPS --enum b=B_*"
        " | set FILE --unit M0=T0~in~B_RUN..0b00101010 | show FILE", 0, "T0 in B_RUN..B_IDLE\n"},
    {"list of names", "add FILE --clock top/clk --data b --trigger b TRAPS"
        " | set FILE --enum b=NAMES --unit M0=DONE", 0, "core 0, M0: Basic: T0 == DONE\n"},
    {"no constants", "add FILE --clock top/clk --data b TRAPS | set FILE --enum b=C_*", 2,
        "--enum b=C_*: the sources have no constant C_*"},
    {"no such signal", "add FILE --clock top/clk --data b TRAPS | set FILE --enum c=NAMES", 2,
        "the configuration has no such signal"},
    {"of the call", "add FILE --clock top/state[0] --data top/state[1] top/state[0] --trigger state"
        " --wave STATE | set FILE TRAPS --unit M0=T0~==~RUN", 0, "T0 == 10\n"},
    {"parameter of the call", "add FILE --clock top/clk --data sized TRAPS | check FILE -P N=2", 1,
        "\"top/sized[2]\" is not in the range [1:0] of top/sized"},
    {"top of no design", "add FILE --clock ck --data n --wave WAVE | check FILE --top x", 2,
        "--top, -I, -D and -P need a design"},
};

// Options of `oxa set`, and a text of what `oxa show` prints then, or of the messages.
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
    {"changes", "--store 0=changes,~limit~9", 0, "\n  stores   changes, gap 16, limit 9\n"},
    {"some changes", "--store CHANGES~of~uart_tx/busy~uart_tx/state,gap~5", 0,
        "\n  stores   changes of uart_tx/busy uart_tx/state, gap 5\n"},
    {"by expression", "--store 0~=when~m0~&&~!m2,~limit~4,~gap~0", 0,
        "\n  stores   when M0 && !M2, gap 0, limit 4\n"},
    {"dynamic storage", "--expression-type dynamic --expression 1=M1 --store when~m0~&~!m2", 0,
        "\n  stores   when M0&!M2, gap 16\n"},
    {"gap and limit stay", "--store changes,~limit~9,~gap~5 --store when~M0", 0,
        "\n  stores   when M0, gap 5, limit 9\n"},
    {"new after all", "--store changes,~limit~9,~gap~5 --store all --store changes", 0,
        "\n  stores   changes, gap 16\n"},
    {"no limit", "--store changes,~limit~9,~gap~5 --store changes,~limit~0", 0,
        "\n  stores   changes, gap 5\n"},
    {"all", "--store changes --store all", 0, "before the trigger\n  T0"},
    {"no store", "--store when", 2, "--store when: write \"all\", \"changes\", \"changes of NAME"},
    {"no names", "--store changes~offset", 2, "write \"all\", "},
    {"comma", "--store changes~of~a,~b,~gap~9", 2, "\"b\" after a comma is neither \"gap BITS\""},
    {"no gap", "--store changes,~gap~x", 2, "\"gap x\": write a number from 0 to 32"},
    {"large limit", "--store changes,~limit~4294967296", 2, "from 0 to 4294967295"},
    {"gap twice", "--store changes,~gap~4,~gap~4", 2, "\"gap\" is there twice"},
    {"gap of all", "--store all,~gap~4", 2, "\"all\" has no gap and no limit"},
    {"no such watch", "--store changes~of~uart_tx/stat", 1,
        "core 0, storage: it captures no \"uart_tx/stat\"; the nearest names are uart_tx/start, uart_tx/state"},
    {"events", "--trigger-out on --stamps 0=on", 0, "\n  events   trigger out; stamps\n"},
    {"events off", "--stamps on --stamps off --forced-by none", 0, "before the trigger\n  T0"},
    {"forced by itself", "--forced-by 0=0", 2, "--forced-by 0=0: core 0 cannot force itself"},
    {"forced by no core", "--forced-by 0=1", 2, "there is no core 1; the last is 0"},
    {"forced by nothing", "--forced-by 0=", 2, "write the cores that force it, as in 1=0,2, or"},
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
    {"Lite, words", "--samples 64 --memory shadow~SRAM --edge falling", 0,
        "falling edge, module uart_tx\n  data     8 bits x 64 samples in shadow SRAM: "},
    {"Lite, flags", "--power-up on --input-register on", 0, "after an input register\n  armed "},
    {"Lite, no trigger", "--unit M0=off", 2, "--unit M0=off: Lite cores have no trigger"},
    {"Lite, no storage", "--store changes", 2, "Lite cores have no choice of samples"},
    {"Lite, not forced", "--forced-by none", 2, "Lite cores have no trigger"},
    {"Lite, no windows", "--windows 2", 2, "Lite cores do not have it"},
    {"Lite, refused", "--samples 0", 1, "core 0: it captures 0 samples"},
};
// clang-format on

}

/// `oxa add`, what the other commands do with the design then, and `oxa set`.
class TestOxaEdit : public QObject, OxaCalls {
    Q_OBJECT

private Q_SLOTS:
    void init() { QFile::remove(path("f.oxa")); }
    void cleanup()
    {
        QFile::remove(path("f.oxa.names"));
        QFile::remove(path("f.oxa.design"));
    }
    void calls_data() { addRows(kCalls); }
    void calls();
    void designsThatAreGone();
    void hostileNames();
    void changes_data() { addRows(kChanges); }
    void changes();
    void writesAnew();
    void oldErrorsDoNotStop();
    void namesTheCore();

private:
    QStringList words(const QString& call) const;
};

QStringList TestOxaEdit::words(const QString& call) const
{
    QString text = call;
    text.replace(
        "TRAPS", "--design " OXA_SOURCE_DIR "/tests/design/traps.sv --top top -D GO=8'd1 -P N=3");
    text.replace("FILE", path("f.oxa")).replace("WAVE", path("w.vcd"));
    text.replace("STATE", path("state.vcd"));
    text.replace("NAMES", writeFile(path("states"), "# of b\n DONE = 0x1f # 31\nGO 2'd1\n"));
    return text.split(' ', Qt::SkipEmptyParts).replaceInStrings("~", " ");
}

void TestOxaEdit::calls()
{
    writeFile(path("w.vcd"), vcdOf({"ck", "n[2]", "n[1]", "n[0]", "ab", "a`b"}, {}));
    writeFile(path("state.vcd"),
        "$scope module top $end $var wire 2 ! state [1:0] $end $upscope $end "
        "$enddefinitions $end\n");
    const Row& row = rowOf(kCalls);
    const QStringList calls = QString(row.words).split(" | ");
    Result result;
    for (const QString& call : calls) {
        result = oxa(words(call));
        QCOMPARE(result.status, call == calls.last() ? row.status : 0);
    }
    QVERIFY2(saidBy(result).contains(row.text), qPrintable(result.out + result.err));
    if (row.status != 0 && calls.size() == 1)
        QVERIFY(!QFile::exists(path("f.oxa")) && !QFile::exists(path("f.oxa.design")));
}

void TestOxaEdit::designsThatAreGone()
{
    writeFile(path("gone.v"),
        "module gone(input c, output reg q); always @(posedge c) q <= ~q; "
        "endmodule\n");
    QCOMPARE(oxa({"add", path("f.oxa"), "--clock", "c", "--data", "q", "--design", path("gone.v")})
                 .status,
        0);
    QFile::remove(path("gone.v"));
    const Result result = oxa({"check", path("f.oxa")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, path("f.oxa") + ": no problems\n");
    QVERIFY2(result.err.contains("gone.v") && result.err.contains("f.oxa.design\n"),
        qPrintable(result.err));
    QCOMPARE(oxa({"set", path("f.oxa"), "--position", "5"}).status, 0);
}

// Text from outside is neither an option nor a command, and stays in its line.
void TestOxaEdit::hostileNames()
{
    const QString name = path("a \"b\"; touch owned\nerror: forged $(touch owned) .oxa");
    const QString shown = QString(name).replace('\n', "\\n");
    writeFile(path("h.vcd"), vcdOf({"ck", "a;b", "c\"d", "$(touch owned)", "--top"}, {}));
    const QStringList add {"add", name, "--clock", "ck", "--wave", path("h.vcd"), "--data"};
    Result result = oxa(add + QStringList {"a;b", "c\"d", "*top"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.contains('\n' + shown + ": written\n"), qPrintable(result.out));
    result = oxa({"check", name, "--wave", path("h.vcd")});
    QCOMPARE(result.out, shown + ": no problems\n");
    result = oxa(add + QStringList {"x\nerror: y; touch owned"});
    QCOMPARE(
        result.err, QString("error: data \"x\\nerror: y; touch owned\" is not in the waveform\n"));
    result = oxa({"add", name, "--clock", "top/clk", "--data", "top/z", "--top", "top", "-D",
        "GO=8'd1", "--design", OXA_SOURCE_DIR "/tests/design/traps.sv"});
    QCOMPARE(result.status, 0);
    QCOMPARE(oxa({"check", name}).status, 1);
    QVERIFY(!QFile::exists("owned") && !QFile::exists(path("owned")));
}

void TestOxaEdit::changes()
{
    const Row& row = rowOf(kChanges);
    const QString file = QString(uart).replace(
        "uart.oxa", QByteArray(row.what).startsWith("Lite") ? "uart_lite.oxa" : "uart.oxa");
    const QString copy = writeFile(path("changed.oxa"), bytesOf(file));
    const QStringList options = QString(row.words).split(' ').replaceInStrings("~", " ");
    const Result result = oxa(QStringList {"set", copy} + options);
    QCOMPARE(result.status, row.status);
    const QString text = row.status == 0 ? oxa({"show", copy}).out : result.err;
    QVERIFY2(text.contains(row.text), qPrintable(text));
    if (row.status != 0)
        QCOMPARE(bytesOf(copy), bytesOf(file));
    else
        QVERIFY(text.contains(" matches\n"));
}

void TestOxaEdit::writesAnew()
{
    QByteArray damaged = bytesOf(uart).replace("<OXA_ID>0", "<OXA_ID>1");
    damaged.replace("<Triggers>", "<Trigers/><Triggers>");
    const QString file = writeFile(path("damaged.oxa"), damaged);
    const Result result = oxa({"set", file, "-o", path("anew.oxa")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, path("anew.oxa") + ": written\n");
    QVERIFY2(result.err.count('\n') == 1 && result.err.contains("Trigers"), qPrintable(result.err));
    QCOMPARE(bytesOf(path("anew.oxa")), bytesOf(uart));
    QCOMPARE(bytesOf(file), damaged);
    QCOMPARE(oxa({"set", file, "-o", path("no/such.oxa")}).status, 1);
}

void TestOxaEdit::oldErrorsDoNotStop()
{
    const QString file
        = writeFile(path("old.oxa"), bytesOf(uart).replace("window_num=\"1\"", "window_num=\"3\""));
    const Result result = oxa({"set", file, "--expression", "0=M1"});
    QCOMPARE(result.status, 0);
    QVERIFY2(!result.err.contains("power of two"), qPrintable(result.err));
    QVERIFY(result.err.contains("warning: core 0, M0: it is switched on, but no expression"));
    QCOMPARE(oxa({"set", file, "--windows", "5"}).status, 1);
}

void TestOxaEdit::namesTheCore()
{
    QByteArray content = bytesOf(uart);
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

QTEST_GUILESS_MAIN(TestOxaEdit)
#include "test_oxa_edit.moc"
