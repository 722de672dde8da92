// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/checksum.h"
#include "oxautils/config/crc16.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace OXA;

namespace {

const QString kExamples = OXA_SOURCE_DIR "/examples/uart/";

/// A change of a configuration.
struct Variant {
    const char *from, *to;
    bool counts; // in the checksum
};

// A text of more than four characters counts as 0, a unit only with a port, and the name of a bus
// only in a port.
constexpr Variant kStandard[] = {
    {"",                                     "",                                                false},
    {"<AoCore index=\"0\"",                  "<AoCore index=\"-1\"",                            true },
    {"clock=\"uart_tx/clk\"",                "clock=\"four\"",                                  true },
    {"clock=\"uart_tx/clk\"",                "clock=\"five5\"",                                 false},
    {"trig_type=\"0\"",                      "trig_type=\"1\"",                                 true },
    {"storage_depth=\"1024\"",               "storage_depth=\"512\"",                           true },
    {"window_num=\"1\"",                     "window_num=\"4\"",                                false},
    {"capture_amount=\"256\"",               "capture_amount=\"128\"",                          false},
    {"implementation=\"0\"",                 "implementation=\"2\"",                            false},
    {"trigger_pos=\"32\"",                   "trigger_pos=\"7\"",                               false},
    {"module_name=\"uart_tx\"",              "module_name=\"top&amp;u\"",                       false},
    {"falling_edge=\"false\"",               "falling_edge=\"true\"",                           false},
    {"data_enabled=\"false\"",               "data_enabled=\"true\"",                           false},
    {">uart_tx/busy",                        ">é€",                                          true },
    {"\"true\">uart_tx/busy",                "\"false\" text=\"shown\">uart_tx/busy",           false},
    {"<Signal>uart_tx/state[1]",             "<Signal text=\"high\">s1",                        true },
    {"true\" name=\"uart_tx/state\"",        "true\" name=\"b\"",                               false},
    {"true\" name=\"uart_tx/state\"",        "true\" name=\"b\" restorename=\"uart_tx/state\"", false},
    {"true\" restorename=\"uart_tx/state\"", "true\" restorename=\"b\"",                        true },
    {"true\" restorename=\"uart_tx/state\"", "true\" name=\"b\" restorename=\"uart_tx/state\"",
     false                                                                                           },
    {"match_type=\"1\"",                     "match_type=\"5\"",                                true },
    {"counter_enable=\"0\"",                 "counter_enable=\"1\"",                            true },
    {"counter_width=\"2\"",                  "counter_width=\"12\"",                            true },
    {"counter=\"2\"",                        "counter=\"9\"",                                   false},
    {"countinuous=\"0\"",                    "countinuous=\"1\"",                               false},
    {"func=\"0\"",                           "func=\"6\"",                                      false},
    {"value0=\"R01000110\"",                 "value0=\"F\"",                                    false},
    {"value1=\"10111\"",                     "value1=\"1\"",                                    false},
    {" trigger=\"2\"/>",                     "/>",                                              true },
    {" trigger=\"2\"/>",                     " trigger=\"3\"/>",                                true },
    {"enabled=\"0\"",                        "enabled=\"1\"",                                   false},
    {">M0<",                                 ">M1<",                                            true },
    {"type=\"Static\"",                      "type=\"Dynamic\" ex_implementation=\"2\"",        true },
};

constexpr Variant kLite[] = {
    {"",                              "",                                                false},
    {"<AoCore_Lite index=\"0\"",      "<AoCore_Lite index=\"2\"",                        true },
    {"clock=\"uart_tx/clk\"",         "clock=\"c\"",                                     true },
    {"trig_type=\"0\"",               "trig_type=\"1\"",                                 true },
    {"capture_amount=\"512\"",        "capture_amount=\"1024\"",                         true },
    {"implemention=\"0\"",            "implemention=\"2\"",                              true },
    {"input_register_enabled=\"0\"",  "input_register_enabled=\"1\"",                    true },
    {"data_enabled=\"0\"",            "data_enabled=\"1\"",                              true },
    {"module_name=\"uart_tx\"",       "module_name=\"mod\"",                             true },
    {"\"true\">uart_tx/busy",         "\"false\" text=\"A\">a",                          true },
    {"true\" name=\"uart_tx/state\"", "true\" name=\"b\" restorename=\"uart_tx/state\"", false},
};

/// The attributes of a core's element that is not always there, read and written again.
struct ElementRow {
    const char *read, *written;
    bool counts; // its checksum is not that of the row before
};

// clang-format off
constexpr ElementRow kStorages[] = {
    {R"(keep="changes")",
        R"(keep="changes" gap_bits="16" limit="0")", true},
    {R"(limit="0" gap_bits="16" keep="changes")",
        R"(keep="changes" gap_bits="16" limit="0")", false},
    {R"(keep="changes" watch="b[0]")",
        R"(keep="changes" gap_bits="16" watch="b[0]" limit="0")", true},
    {R"(keep="changes" watch="b[0] c" limit="4294967295")",
        R"(keep="changes" gap_bits="16" watch="b[0] c" limit="4294967295")", true},
    {R"(keep="changes" watch=" b[0]&#9;c" when="M0" limit="4294967295")",
        R"(keep="changes" gap_bits="16" watch="b[0] c" limit="4294967295")", false},
    {R"(keep="changes" watch="\a+b  c")",
        R"(keep="changes" gap_bits="16" watch="\a+b  c" limit="0")", true},
    {R"(keep="changes" gap_bits="-2" watch="\a+b")",
        R"(keep="changes" gap_bits="-2" watch="\a+b " limit="0")", true},
    {R"(keep="when" when="match[0] &amp;&amp; !m1" watch="a" gap_bits="0" limit="x")",
        R"(keep="when" when="M0 &amp;&amp; !M1" gap_bits="0" limit="0")", true},
    {R"(keep="when" when="M0" gap_bits="0")",
        R"(keep="when" when="M0" gap_bits="0" limit="0")", true},
    {R"(keep="all" when="M1" gap_bits="9")",
        "", true},
    {R"(keep="never" gap_bits="9" limit="2")",
        "", false},
};

constexpr ElementRow kEvents[] = {
    {R"(forced_by="0")",
        R"(forced_by="0")", true},
    {R"(stamps="true" forced_by=" 30  4&#9;30 x")",
        R"(forced_by="4 30" stamps="true")", true},
    {R"(forced_by="4 30" trigger_out="yes" stamps="true")",
        R"(forced_by="4 30" stamps="true")", false},
    {R"(trigger_out="true" stamps="false")",
        R"(trigger_out="true")", true},
    {R"(stamps="true")",
        R"(stamps="true")", true},
    {R"(forced_by="x" stamps="1")",
        "", true},
    {"stamps=\"true\"/>\n        <Storage keep=\"changes\" gap_bits=\"16\" limit=\"0\"",
        "stamps=\"true\"/>\n        <Storage keep=\"changes\" gap_bits=\"16\" limit=\"0\"", true},
};
// clang-format on

struct VersionRow {
    const char *a, *b;
    int result; // 0: throws
};

constexpr VersionRow kVersions[] = {
    {"1.5",   "2.0", 1},
    {"3.1",   "3.0", 4},
    {"3.0.1", "3.0", 4},
    {"3..0",  "3.0", 2},
    {"2.10",  "2.9", 4},
    {"",      "0.1", 1},
    {"3.a",   "3.0", 0},
    {"4.a",   "3.0", 4}, // the first part decides before the second is looked at
    {"3.0",   "3.?", 0},
};

struct ModeRow {
    const char* content;
    OxaMode mode;
};

constexpr ModeRow kModes[] = {
    {"<A><Mode>Standard</Mode></A>",                Standard},
    {"<A><Mode>Lite</Mode></A>",                    Lite    },
    {"<A/>",                                        Standard},
    {"<A><B><Mode>Lite</Mode></B></A>",             Standard},
    {"<A><Mode>lite</Mode></A>",                    Invalid },
    {"<A><Mode>Lite</A>",                           Invalid },
    {"",                                            Invalid },
    {"<!DOCTYPE A><A><Mode>Lite</Mode></A>",        Lite    },
    {"<?xml version='1'?><A><Mode>Lite</Mode></A>", Lite    },
};

template <typename Core> struct Cores : QList<Core*> {
    Cores(const QList<Core*>& cores)
        : QList<Core*>(cores)
    {
    }
    ~Cores() { qDeleteAll(*this); }
};

QByteArray changed(const QByteArray& text, const Variant& row)
{
    const int at = text.indexOf(row.from);
    if (at < 0)
        qFatal("no %s to change", row.from);
    return QByteArray(text).replace(at, int(strlen(row.from)), row.to);
}

QByteArray standardFile(const QByteArray& body, const QByteArray& version = "3.0")
{
    return "<?xml version=\"1\" encoding=\"UTF-8\"?>\n<OXA_CONFIG><Version>" + version
        + "</Version>" + body + "</OXA_CONFIG>";
}

}

class TestConfig : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void checksums();
    void versions();
    void modes();
    void skeletons();
    void hostileDocuments();
    void textsOfOldFiles();
    void variantsComeBackFromTheirFile();
    void elements();
    void readingOldAndOddFiles();
    void readerErrors();
    void requiredAttributes();
    void liteReading();
    void savingKeepsTheOldFileWhole();
    void aChangedFileIsParsedAnew();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    /// Reads an example with each of such elements and writes it again.
    template <size_t count>
    void verifyElements(const QByteArray& tag, const ElementRow (&rows)[count]);

    /// Reads each variant of the example and writes it again.
    template <typename Core, typename Read, typename Write, size_t count>
    void verifyVariants(
        const char* example, const Variant (&rows)[count], const Read& read, const Write& write)
    {
        const QByteArray text = bytesOf(kExamples + example);
        const QByteArray checksum = readOXACRCForXml(kExamples + example).toLatin1();
        for (const Variant& row : rows) {
            QByteArray content = changed(text, row);
            writeFile(path("variant"), content);
            const QByteArray own = computeOXACRCForXml(path("variant")).toLatin1();
            QVERIFY2((own != checksum) == row.counts, row.to);
            const Cores<Core> cores = read(path("variant"), nullptr, nullptr);
            write(cores, path("again"));
            QCOMPARE(bytesOf(path("again")), content.replace(checksum, own));
        }
    }

    QTemporaryDir m_dir;
};

void TestConfig::checksums()
{
    CRC16 crc(0x8005);
    QCOMPARE(int(crc.getCRC16_Byte({'A', 'B'})), 0); // an unfilled table only shifts
    crc.initTableCRC16();
    QCOMPARE(int(crc.getCRC16_Byte({'1', '2', '3', '4', '5', '6', '7', '8', '9'})), 0x0265);
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0, 1})), 0x0186); // "A", first bit highest
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0})), 0);
    QCOMPARE(CRC16::reflect(0xF1, 4), 0x8u); // only the lowest bits
    QCOMPARE(CRC16::reflect(0x1, 32), 0x80000000u);
    QCOMPARE(CRC16::reflect(0xFF, -3), 0u);
}

void TestConfig::versions()
{
    for (const VersionRow& row : kVersions) {
        int got = 0;
        try {
            got = compareVersion(row.a, row.b);
        } catch (const CompareException& exception) {
            QCOMPARE(exception.message(), QString("Invalid Oxa config file."));
        }
        QVERIFY2(got == row.result, qPrintable(QString("%1 ~ %2").arg(row.a, row.b)));
    }
}

void TestConfig::modes()
{
    for (const ModeRow& row : kModes) {
        const OxaMode mode = oxaModeFromOxaConfigFile(writeFile(path("mode"), row.content));
        QVERIFY2(mode == row.mode, row.content);
    }
    QCOMPARE(int(oxaModeFromOxaConfigFile(path("missing"))), 10086);
    QVERIFY(Standard == 10087 && Lite == 10088); // which hosts know as numbers
}

void TestConfig::skeletons()
{
    const QList<QPair<OxaMode, QByteArray>> rows = {
        {Standard, "    <Mode>Standard</Mode>\n"},
        {Lite,     "    <Mode>Lite</Mode>\n"    }, // the old content goes
        {Invalid,  ""                           },
    };
    for (const auto& row : rows) {
        fillInfoForEmptyOxaConfig(path("s"), row.first);
        QCOMPARE(bytesOf(path("s")),
            "<?xml version=\"1\" encoding=\"UTF-8\"?>\n<OXA_CONFIG>\n"
            "    <Version>3.0</Version>\n"
                + row.second + "</OXA_CONFIG>\n");
    }
}

// All readers refuse each of them with the same message.
void TestConfig::hostileDocuments()
{
    const auto nested = [](int levels) {
        return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
    };
    const QString wide = QChar(0xFEFF) + QString(nested(50000));
    QList<QPair<QByteArray, QString>> rows = {
        {"</a><a/>",                      "error occurred while parsing element at 1:2"               },
        {"<a b='",                        "unexpected end of file at 1:7"                             },
        {"<a b='<'/>",                    "unexpected character at 1:7"                               },
        {"<a b/>",                        "unexpected character at 1:5"                               },
        {"<a><!-- -- --></a>",            "error occurred while parsing comment at 1:11"              },
        {"<a>]]></a>",                    "error occurred while parsing content at 1:6"               },
        {"<a>&b</a>",                     "error occurred while parsing reference at 1:6"             },
        {"<a>&#xffffffffff;</a>",         "error occurred while parsing reference at 1:17"            },
        {"<a>\n&& ",                      "error occurred while parsing reference at 2:2"             },
        {"<a/><b/>",                      "unexpected character at 1:6"                               },
        {" <?xml version='1'?><a/>",      "invalid name for processing instruction at 1:7"            },
        {"<?xml encoding='UTF-8'?>",      "version expected while reading the XML declaration at 1:23"},
        {"<a>\n  <b></c>",                "tag mismatch at 2:9"                                       },
        {"<!DOCTYPE a [ ]><a/>",          "declarations in the document type are not accepted at 1:1" },
        {"<O><Version>3.1</Version></O>", "The version of Oxa config file is too high."               },
    };
    rows.append({nested(64), "Unknown Oxa version."});
    const QString tooDeep = "elements are nested deeper than 64 levels at ";
    rows.append({nested(65), tooDeep + "1:193"});
    rows.append({QByteArray("<a>").repeated(50000), tooDeep + "1:193"});
    rows.append({QByteArray(reinterpret_cast<const char*>(wide.utf16()), 2 * wide.size()),
        tooDeep + "1:193"});
    rows.append({"<!DOCTYPE a SYSTEM '<!--'>\n" + nested(50000), tooDeep + "2:193"});
    rows.append({QByteArray("<a><!--></a>-->").repeated(50000), tooDeep + "1:961"});
    for (const auto& row : rows) {
        const QString file = writeFile(path("hostile"), row.first);
        bool ok = true;
        QString message;
        QVERIFY(readOXAConfigFromXml(file, &ok, &message).isEmpty() && !ok);
        QVERIFY2(message.contains(row.second), qPrintable(message));
        QString liteMessage;
        QVERIFY(readOXAConfigFromXml_Lite(file, &ok, &liteMessage).isEmpty());
        QCOMPARE(liteMessage, message);
        const bool parses = message.endsWith('.');
        QCOMPARE(oxaModeFromOxaConfigFile(file) == Invalid, !parses);
        QCOMPARE(checkOXAStandardFile(file), parses);
        QCOMPARE(checkOXALiteFile(file), parses);
        QCOMPARE(readOXACRCForXml(file), QString());
    }
}

// Files of older programs are read as the parsers of their time read them.
void TestConfig::textsOfOldFiles()
{
    const QPair<const char*, QString> rows[] = {
        {"<a c='&lt;' c='2'><OXA_ID>1&amp;2&#51;&#x34;</OXA_ID></a>",                  "1&234"      },
        {"<a c='&b;'><OXA_ID>&b;1 &b; 2</OXA_ID></a>",                                 "1  2"       },
        {"<a>\x01<OXA_ID> \n<b>1</b> <!-- 2 --> 3<?c?></OXA_ID></a><!-- -->",          "1 3"        },
        {"<!DOCTYPE a SYSTEM 'b'>\n<a><OXA_ID><![CDATA[ <]]> &#32; ]]c></OXA_ID></a>", " <   ]]c>"  },
        {"<?xml version='9' encoding='GBK'?><a><OXA_ID>\xc4\xe3</OXA_ID></a>",         QChar(0x4f60)},
        {"<?xml version='1' encoding='?'?><a><OXA_ID>\xc3\xa4</OXA_ID></a>",           QChar(0xe4)  },
    };
    for (const auto& row : rows)
        QCOMPARE(readOXACRCForXml(writeFile(path("old"), row.first)), row.second);
}

void TestConfig::variantsComeBackFromTheirFile()
{
    verifyVariants<AoCore>("uart.oxa", kStandard, readOXAConfigFromXml, writeOXAConfigToXml);
    verifyVariants<AOCore_Lite>(
        "uart_lite.oxa", kLite, readOXAConfigFromXml_Lite, writeOXAConfigToXml_Lite);
    writeOXAConfigToXml_Lite({}, path("none"));
    QCOMPARE(readOXACRCForXml(path("none")), QString("0000001001111000"));
}

template <size_t count>
void TestConfig::verifyElements(const QByteArray& tag, const ElementRow (&rows)[count])
{
    const QByteArray text = bytesOf(kExamples + "uart.oxa");
    const auto with = [&](const QByteArray& attributes) {
        const QByteArray end = "\n        <" + tag + ' ' + attributes + "/>";
        return QByteArray(text).replace(
            "</Expressions>", "</Expressions>" + (attributes.isEmpty() ? QByteArray() : end));
    };
    QByteArray before;
    for (const ElementRow& row : rows) {
        const QString file = writeFile(path("element"), with(row.read));
        const Cores<AoCore> cores = readOXAConfigFromXml(file);
        const QByteArray sum = checksumOf(cores).toLatin1();
        QVERIFY2((sum != before) == row.counts, row.read);
        writeOXAConfigToXml(cores, path("again"));
        const QByteArray stored = readOXACRCForXml(kExamples + "uart.oxa").toLatin1();
        QCOMPARE(bytesOf(path("again")), with(row.written).replace(stored, sum));
        before = sum;
    }
}

void TestConfig::elements()
{
    verifyElements("Storage", kStorages);
    verifyElements("Events", kEvents);
}

void TestConfig::readingOldAndOddFiles()
{
    const QByteArray body = R"(<Mode>Standard</Mode><AoCore index="x" storage_depth="512">
        <SignalList><Signal capture_enable="yes">a</Signal><Signal capture_enable="">b</Signal>
            <Signal>c</Signal><Group/></SignalList>
        <Triggers>
            <Trigger index="0"><SignalList capture_from_trigger="1">
                <Signal capture_enable="false">p</Signal></SignalList></Trigger>
            <Trigger index="16"><SignalList><Signal>lost</Signal></SignalList></Trigger>
            <Trigger index="0"><SignalList><Signal>q</Signal></SignalList></Trigger>
        </Triggers>
        <MatchUnits><MatchUnit index="99" enabled="1"/>
            <MatchUnit index="1" enabled="2" trigger="16"/>
            <MatchUnit index="2" enabled="1" trigger=""/>
            <MatchUnit index="3" enabled="1" func="5"/>
            <MatchUnit index="3" enabled="yes" trigger="0"/></MatchUnits>
        <Expressions type="dynamic" ex_implementation=""><Expression>Match[0]|match[1]</Expression>
            <Expression>match[3] &amp;&amp; m12</Expression>
            <Expression>m3</Expression></Expressions>
    </AoCore><AoCore index="x"/>)";
    for (const char* version : {"1.5", "2.0", "3.0", "3"}) {
        bool ok = false;
        const Cores<AoCore> cores
            = readOXAConfigFromXml(writeFile(path("odd"), standardFile(body, version)), &ok);
        QVERIFY(ok);
        QCOMPARE(cores.size(), 2); // equal indexes are both kept
        const AoCore& core = *cores.first();
        QCOMPARE(core.index, 0);
        QCOMPARE(core.captureAmount, 0); // absent, not the default of a new core
        QCOMPARE(core.dataSignals(), QList<QString>({"b", "c", "p"}));
        QCOMPARE(core.signalList.size(), 3);
        QCOMPARE(core.triggers.at(0)->singleSignals(), QList<QString>({"p", "q"}));
        QVERIFY(core.matchUnits.at(1)->enabled && !core.matchUnits.at(1)->trigger);
        QVERIFY(!core.matchUnits.at(2)->trigger);
        QVERIFY(!core.matchUnits.at(3)->enabled); // the later element holds, whole
        QCOMPARE(int(core.matchUnits.at(3)->matchFunc), 0);
        QCOMPARE(core.matchUnits.at(3)->trigger, core.triggers.at(0));
        QCOMPARE(core.expressionType, 0);
        QCOMPARE(core.expressions, QStringList({"M0|M1", "M3 && M12", "M3"}));
        QVERIFY(computeOXACRCForXml(path("odd")) != checksumOf(cores)); // of "m3", as written
    }
}

// Where the readers of the two modes differ; hostileDocuments tests what both refuse.
void TestConfig::readerErrors()
{
    QVERIFY(readOXAConfigFromXml(path("missing")).isEmpty());
    QString message;
    readOXAConfigFromXml(path("missing"), nullptr, &message);
    QCOMPARE(message, path("missing") + " open file failed.");
    readOXAConfigFromXml(writeFile(path("f"), ""), nullptr, &message);
    QCOMPARE(message, QString("unexpected end of file at 1:1"));
    readOXAConfigFromXml(writeFile(path("f"), standardFile("", "3.x")), nullptr, &message);
    QCOMPARE(message, QString("Invalid Oxa config file."));

    readOXAConfigFromXml_Lite(path("missing"), nullptr, &message);
    QCOMPARE(message, QString("Open file failed"));
    bool ok = false;
    QVERIFY(readOXAConfigFromXml_Lite(writeFile(path("f"), ""), &ok, &message).isEmpty());
    QVERIFY(ok);
    QVERIFY_EXCEPTION_THROWN(
        readOXAConfigFromXml_Lite(writeFile(path("f"), standardFile("", "3.x"))), CompareException);
}

void TestConfig::requiredAttributes()
{
    const QByteArray whole = bytesOf(kExamples + "uart.oxa");
    const Variant rows[] = {
        {" sample_clock=\"uart_tx/clk\"", "",         true },
        {" window_num=\"1\"",             "",         true },
        {" enabled=\"0\"",                "",         true },
        {" value1=\"10111\"",             "",         true },
        {"<Trigger index=\"9\"",          "<Trigger", true },
        {" implementation=\"0\"",         "",         false},
        {" trigger=\"2\"",                "",         false},
    };
    for (const Variant& row : rows) {
        const QString file = writeFile(path("part"), changed(whole, row));
        QVERIFY2(checkOXAStandardFile(file) != row.counts, row.from);
    }
    QVERIFY(!checkOXAStandardFile(path("missing")));
}

void TestConfig::liteReading()
{
    const QByteArray core = "<Mode>Standard</Mode><AoCore_Lite index=\"1\" trig_type=\"1\""
                            " input_register_enabled=\"2\" capture_init_data_enabled=\"true\"/>";
    const QString file = writeFile(path("l"), standardFile(core, "2.0"));
    QVERIFY(!checkOXALiteFile(file));
    const Cores<AOCore_Lite> cores = readOXAConfigFromXml_Lite(file);
    QCOMPARE(cores.size(), 1);
    QVERIFY(cores.first()->inputRegisterEnabled);
    QVERIFY(!cores.first()->captureInitDataEnabled); // digits here, words in the other mode
}

void TestConfig::savingKeepsTheOldFileWhole()
{
    AoCore core(0);
    writeFile(path("unspeakable"), "old");
    for (const QString& name : {QString("a\x01"), QString(QChar(0xd800))}) {
        core.moduleName = name;
        const QRegularExpression message("unspeakable: cannot be written: a text contains");
        QTest::ignoreMessage(QtCriticalMsg, message);
        writeOXAConfigToXml({&core}, path("unspeakable"));
        QCOMPARE(bytesOf(path("unspeakable")), QByteArray("old"));
    }
}

// A file is so large that the reader keeps its document, and changes by one letter.
void TestConfig::aChangedFileIsParsedAnew()
{
    const auto writtenAndRead = [this](const QString& module) {
        AoCore core(0);
        core.moduleName = module + QString(1 << 20, 'x');
        writeOXAConfigToXml({&core}, path("large"));
        const Cores<AoCore> read = readOXAConfigFromXml(path("large"));
        return read.isEmpty() ? QString() : read.first()->moduleName.left(1);
    };
    {
        const ParseOnce once;
        QCOMPARE(writtenAndRead("a"), QString("a"));
        QCOMPARE(writtenAndRead("b"), QString("b"));
    }
    QCOMPARE(writtenAndRead("c"), QString("c"));
}

QTEST_GUILESS_MAIN(TestConfig)
#include "test_config.moc"
