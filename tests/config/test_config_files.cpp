#include "oxautils/config/checksum.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace OXA;

namespace {

SignalItem item(const QString& name, const QString& text = {}, bool captured = true)
{
    SignalItem signal;
    signal.name = name;
    signal.text = text;
    signal.captureEnable = captured;
    return signal;
}

SignalItem bus(const QString& name, const QString& text, const QList<SignalItem>& bits)
{
    SignalItem signal = item(name, text);
    signal.subItems = bits;
    return signal;
}

struct Cores : QList<AoCore*> {
    using QList::QList;
    Cores(const QList<AoCore*>& cores)
        : QList(cores)
    {
    }
    ~Cores() { qDeleteAll(*this); }
};

QString error(const QString& path)
{
    bool ok = true;
    QString message = "untouched";
    const Cores cores = readOXAConfigFromXml(path, &ok, &message);
    return ok || !cores.isEmpty() ? "read " + QString::number(cores.size()) : message;
}

QByteArray standardFile(const QByteArray& body, const QByteArray& version = "3.0")
{
    return "<?xml version=\"1\" encoding=\"UTF-8\"?>\n<OXA_CONFIG><Version>" + version
        + "</Version>" + body + "</OXA_CONFIG>";
}

// Everything that the format writes in a way of its own, in one core.
constexpr char kRichHead[] = R"(<?xml version="1" encoding="UTF-8"?>
<OXA_CONFIG>
    <Version>3.0</Version>
    <Mode>Standard</Mode>
    <AoCore index="-1" sample_clock="clk" trig_type="1" storage_depth="512" window_num="4" capture_amount="128" implementation="2" trigger_pos="7" module_name="top&amp;u" force_trigger_by_falling_edge="true" capture_init_data_enabled="false">
        <SignalList>
            <Signal capture_enable="false" text="shown">d</Signal>
            <Bus capture_enable="true" name="Bus text" restorename="bus">
                <Signal>b1</Signal>
                <Signal text="low">é€</Signal>
            </Bus>
        </SignalList>
        <Triggers>
            <Trigger index="0"/>
            <Trigger index="1"/>
            <Trigger index="2">
                <SignalList>
                    <Bus capture_enable="true" restorename="pb">
                        <Signal>p1</Signal>
                    </Bus>
                </SignalList>
            </Trigger>
)";

Cores richCores()
{
    auto* core = new AoCore(-1);
    core->sampleClock = "clk";
    core->trigType = 1;
    core->storageDepth = 512;
    core->windowNum = 4;
    core->captureAmount = 128;
    core->implementation = 2;
    core->triggerPos = 7;
    core->moduleName = "top&u";
    core->forceTriggerByFallingEdge = true;
    core->signalList = {item("d", "shown", false),
        bus("bus", "Bus text", {item("b1"), item(QString::fromUtf8("é€"), "low")})};
    core->captureSignals = {core->signalList.at(1)};
    core->triggers.at(2)->signalList = {bus("pb", "", {item("p1")})};
    MatchUnit* unit = core->matchUnits.at(3);
    unit->enabled = true;
    unit->matchType = MatchRangeEdges;
    unit->matchFunc = MatchInRange;
    unit->counterEnable = true;
    unit->counterWidth = 12;
    unit->counter = 9;
    unit->continuous = true;
    unit->value0 = "0";
    unit->value1 = "1";
    unit->trigger = core->triggers.at(2);
    core->matchUnits.at(4)->enabled = true; // unbound: neither written as bound nor in the checksum
    core->expressions = QStringList {"M3", "M3&&M4"};
    return {core};
}

}

class TestConfigFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void standardText();
    void standardRoundTrip();
    void defaultCore();
    void dynamicExpressions();
    void busNamesByList();
    void readingOldAndOddFiles();
    void readerErrors();
    void nullPointersAreLeftOut();
    void requiredAttributes();
    void whatTheChecksumCovers();
    void liteText();
    void liteReading();
    void savingKeepsTheOldFileWhole();
    void aChangedFileIsParsedAnew();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestConfigFiles::standardText()
{
    writeOXAConfigToXml(richCores(), path("rich"));
    const QByteArray text = bytesOf(path("rich"));
    QCOMPARE(text.left(int(strlen(kRichHead))), QByteArray(kRichHead));
    QCOMPARE(text.count("<Trigger index="), 16);
    QCOMPARE(text.count("<MatchUnit index="), 16);
    QVERIFY(text.contains(
        "            <MatchUnit index=\"3\" enabled=\"1\" match_type=\"5\" counter_enable=\"1\""
        " counter_width=\"12\" counter=\"9\" countinuous=\"1\" func=\"6\" value0=\"0\" value1=\"1\""
        " trigger=\"2\"/>\n"
        "            <MatchUnit index=\"4\" enabled=\"1\" match_type=\"0\" counter_enable=\"0\""
        " counter_width=\"2\" counter=\"2\" countinuous=\"0\" func=\"0\" value0=\"\" value1=\"\""
        "/>\n"));
    QVERIFY(text.endsWith("        <Expressions type=\"Static\">\n"
                          "            <Expression>M3</Expression>\n"
                          "            <Expression>M3&amp;&amp;M4</Expression>\n"
                          "        </Expressions>\n"
                          "    </AoCore>\n"
                          "    <OXA_ID>0000001001110001</OXA_ID>\n"
                          "</OXA_CONFIG>\n"));
    QCOMPARE(readOXACRCForXml(path("rich")), QString("0000001001110001"));
    QCOMPARE(computeOXACRCForXml(path("rich")), QString("0000001001110001"));
    QVERIFY(checkOXAStandardFile(path("rich")));
}

void TestConfigFiles::standardRoundTrip()
{
    writeOXAConfigToXml(richCores(), path("first"));
    bool ok = false;
    const Cores cores = readOXAConfigFromXml(path("first"), &ok);
    QVERIFY(ok);
    QCOMPARE(cores.size(), 1);
    const AoCore& core = *cores.first();
    QCOMPARE(core.dataSignals(), QList<QString>({"b1", QString::fromUtf8("é€")}));
    QVERIFY(!core.signalList.at(0).captureEnable);
    QCOMPARE(core.matchUnits.at(3)->trigger, core.triggers.at(2));
    QVERIFY(!core.matchUnits.at(4)->trigger);
    writeOXAConfigToXml(cores, path("second"));
    QCOMPARE(bytesOf(path("second")), bytesOf(path("first")));
}

void TestConfigFiles::defaultCore()
{
    const Cores cores = {new AoCore(0)};
    writeOXAConfigToXml(cores, path("default"));
    const QByteArray text = bytesOf(path("default"));
    QVERIFY(text.contains("        <SignalList/>\n"));
    QCOMPARE(text.count("<Trigger index=\"15\"/>"), 1);
    QVERIFY(!text.contains(" trigger="));
    QVERIFY(text.contains("<Expressions type=\"Static\"/>"));
    const Cores read = readOXAConfigFromXml(path("default"));
    QCOMPARE(read.size(), 1);
    QCOMPARE(read.first()->storageDepth, 1024);
    QCOMPARE(read.first()->matchUnits.at(15)->counterWidth, 2);
}

void TestConfigFiles::dynamicExpressions()
{
    const Cores cores = richCores();
    cores.first()->expressionType = 1;
    cores.first()->exImplementation = 2;
    writeOXAConfigToXml(cores, path("dynamic"));
    const QByteArray text = bytesOf(path("dynamic"));
    QVERIFY(text.contains("<Expressions type=\"Dynamic\" ex_implementation=\"2\">"));
    QVERIFY(text.contains("<OXA_ID>1000000111000110</OXA_ID>")); // counts them, not their texts
    const Cores read = readOXAConfigFromXml(path("dynamic"));
    QCOMPARE(read.first()->expressionType, 1);
    QCOMPARE(read.first()->exImplementation, 2);
}

void TestConfigFiles::busNamesByList()
{
    const struct {
        const char *text, *inCore, *inPort;
    } rows[] = {
        {"",  "name=\"n\">",                   "restorename=\"n\">"           },
        {"t", "name=\"t\" restorename=\"n\">", "name=\"t\" restorename=\"n\">"},
    };
    for (const auto& row : rows) {
        const Cores cores = {new AoCore(0)};
        cores.first()->signalList = {bus("n", row.text, {item("x")})};
        cores.first()->triggers.at(0)->signalList = {bus("n", row.text, {item("x")})};
        writeOXAConfigToXml(cores, path("bus"));
        const QByteArray text = bytesOf(path("bus"));
        const QByteArray start = "<Bus capture_enable=\"true\" ";
        const int first = text.indexOf(start) + start.size();
        const int second = text.indexOf(start, first) + start.size();
        QVERIFY(text.mid(first).startsWith(row.inCore));
        QVERIFY(text.mid(second).startsWith(row.inPort));
        const Cores read = readOXAConfigFromXml(path("bus"));
        for (const SignalItem& got :
            {read.first()->signalList.at(0), read.first()->triggers.at(0)->signalList.at(0)}) {
            QCOMPARE(got.name, QString("n"));
            QCOMPARE(got.text, QString(row.text));
        }
    }
}

void TestConfigFiles::readingOldAndOddFiles()
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
            <Expression>match[3] &amp;&amp; m12</Expression></Expressions>
    </AoCore><AoCore index="x"/>)";
    for (const char* version : {"1.5", "2.0", "3.0", "3"}) {
        bool ok = false;
        const Cores cores
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
        QCOMPARE(core.expressions, QStringList({"M0|M1", "M3 && M12"}));
    }
}

void TestConfigFiles::readerErrors()
{
    QCOMPARE(error(path("missing")), path("missing") + " open file failed.");
    QCOMPARE(error(writeFile(path("f"), standardFile("", "3.1"))),
        QString("The version of Oxa config file is too high."));
    QCOMPARE(
        error(writeFile(path("f"), standardFile("", "3.x"))), QString("Invalid Oxa config file."));
    QCOMPARE(error(writeFile(path("f"), "<OXA_CONFIG/>")), QString("Unknown Oxa version."));
    QCOMPARE(
        error(writeFile(path("f"), "<OXA_CONFIG>\n  <a></b>")), QString("tag mismatch at 2:9"));
    QCOMPARE(error(writeFile(path("f"), "")), QString("unexpected end of file at 1:1"));
}

void TestConfigFiles::nullPointersAreLeftOut()
{
    QVERIFY(readOXAConfigFromXml(path("missing")).isEmpty());
    QVERIFY(readOXAConfigFromXml_Lite(path("missing")).isEmpty());
    QString message;
    readOXAConfigFromXml(path("missing"), nullptr, &message);
    QVERIFY(!message.isEmpty());
}

void TestConfigFiles::requiredAttributes()
{
    writeOXAConfigToXml(richCores(), path("whole"));
    const QByteArray whole = bytesOf(path("whole"));
    const struct {
        const char* attribute;
        bool required;
    } rows[] = {
        {" sample_clock=\"clk\"",      true },
        {" window_num=\"4\"",          true },
        {" trigger_pos=\"7\"",         true },
        {" implementation=\"2\"",      false},
        {" module_name=\"top&amp;u\"", false},
        {" enabled=\"0\"",             true },
        {" countinuous=\"0\"",         true },
        {" value1=\"1\"",              true },
        {" trigger=\"2\"",             false},
    };
    for (const auto& row : rows) {
        QByteArray text = whole;
        const int at = text.indexOf(row.attribute);
        QVERIFY2(at > 0, row.attribute);
        text.remove(at, int(strlen(row.attribute)));
        QCOMPARE(checkOXAStandardFile(writeFile(path("part"), text)), !row.required);
    }
    QByteArray noIndex = whole;
    noIndex.replace("<Trigger index=\"9\"/>", "<Trigger/>");
    QVERIFY(!checkOXAStandardFile(writeFile(path("part"), noIndex)));
    QVERIFY(!checkOXAStandardFile(path("missing")));
}

void TestConfigFiles::whatTheChecksumCovers()
{
    const Cores cores = richCores();
    AoCore& core = *cores.first();
    const QString before = checksumOf(cores);
    core.windowNum = 1;
    core.captureAmount = 5;
    core.implementation = 0;
    core.triggerPos = 0;
    core.moduleName = "m";
    core.forceTriggerByFallingEdge = false;
    core.matchUnits.at(3)->counter = 1;
    core.matchUnits.at(3)->continuous = false;
    core.matchUnits.at(3)->matchFunc = MatchEqual;
    core.matchUnits.at(3)->value0 = "1";
    core.matchUnits.at(4)->counterWidth = 9;
    core.signalList[1].name = "other"; // a bus's own name, in the core's list
    QCOMPARE(checksumOf(cores), before);

    core.triggers.at(2)->signalList[0].name = "qb"; // in a port's list it counts
    QVERIFY(checksumOf(cores) != before);
    core.triggers.at(2)->signalList[0].name = "pb";
    core.sampleClock = "clj";
    QVERIFY(checksumOf(cores) != before);
    core.sampleClock = "clock";
    const QString fiveLetters = checksumOf(cores);
    core.sampleClock = "other"; // what has no room counts as 0
    QCOMPARE(checksumOf(cores), fiveLetters);

    // Expressions count as the file has them, which reading changes.
    const QByteArray file = standardFile(
        "<AoCore index=\"0\"><Expressions><Expression>m[0]</Expression></Expressions></AoCore>");
    writeFile(path("raw"), file);
    const Cores read = readOXAConfigFromXml(path("raw"));
    QVERIFY(computeOXACRCForXml(path("raw")) != checksumOf(read));
}

void TestConfigFiles::liteText()
{
    AOCore_Lite core;
    core.index = 2;
    core.sampleClock = "c";
    core.trigType = 1;
    core.captureAmount = 1024;
    core.implementation = 2;
    core.inputRegisterEnabled = true;
    core.moduleName = "mod";
    core.signalList = {item("a", "A"), bus("b", "", {item("b1"), item("b0")})};
    writeOXAConfigToXml_Lite({&core}, path("lite"));
    QCOMPARE(bytesOf(path("lite")), QByteArray(R"(<?xml version="1" encoding="UTF-8"?>
<OXA_CONFIG>
    <Version>3.0</Version>
    <Mode>Lite</Mode>
    <AoCore_Lite index="2" sample_clock="c" trig_type="1" capture_amount="1024" implemention="2" input_register_enabled="1" capture_init_data_enabled="0" module_name="mod">
        <SignalList>
            <Signal capture_enable="true" text="A">a</Signal>
            <Bus capture_enable="true" name="b">
                <Signal>b1</Signal>
                <Signal>b0</Signal>
            </Bus>
        </SignalList>
    </AoCore_Lite>
    <OXA_ID>0000000011000101</OXA_ID>
</OXA_CONFIG>
)"));
    QCOMPARE(computeOXACRCForXml(path("lite")), QString("0000000011000101"));
    const QList<AOCore_Lite*> read = readOXAConfigFromXml_Lite(path("lite"));
    writeOXAConfigToXml_Lite(read, path("again"));
    qDeleteAll(read);
    QCOMPARE(bytesOf(path("again")), bytesOf(path("lite")));

    writeOXAConfigToXml_Lite({}, path("none"));
    QCOMPARE(readOXACRCForXml(path("none")), QString("0000001001111000"));
}

void TestConfigFiles::liteReading()
{
    bool ok = false;
    QString message = "untouched";
    QVERIFY(readOXAConfigFromXml_Lite(writeFile(path("l"), ""), &ok, &message).isEmpty());
    QVERIFY(ok);
    QCOMPARE(message, QString("untouched"));

    const QList<QPair<QByteArray, QString>> failures = {
        {"<OXA_CONFIG/>", "Unknown Oxa version."},
        {standardFile("", "3.1"),                 "The version of Oxa config file is too high."},
        {"<a></b>",               "tag mismatch at 1:7"                            },
    };
    for (const auto& failure : failures) {
        readOXAConfigFromXml_Lite(writeFile(path("l"), failure.first), &ok, &message);
        QVERIFY(!ok);
        QCOMPARE(message, failure.second);
    }
    readOXAConfigFromXml_Lite(path("missing"), &ok, &message);
    QCOMPARE(message, QString("Open file failed")); // without the path, unlike the other mode
    QVERIFY_EXCEPTION_THROWN(
        readOXAConfigFromXml_Lite(writeFile(path("l"), standardFile("", "3.x"))), CompareException);

    const QByteArray core = "<Mode>Standard</Mode><AoCore_Lite index=\"1\" trig_type=\"1\""
                            " input_register_enabled=\"2\" capture_init_data_enabled=\"true\"/>";
    const QString file = writeFile(path("l"), standardFile(core, "2.0"));
    QVERIFY(!checkOXALiteFile(file));
    const QList<AOCore_Lite*> cores = readOXAConfigFromXml_Lite(file, &ok);
    QCOMPARE(cores.size(), 1);
    QVERIFY(cores.first()->inputRegisterEnabled);
    QVERIFY(!cores.first()->captureInitDataEnabled); // digits here, words in the other mode
    QVERIFY(cores.first()->signalList.isEmpty());
    qDeleteAll(cores);
}

void TestConfigFiles::savingKeepsTheOldFileWhole()
{
    const QString nowhere = path("no/such/dir: cannot be written: No such file or directory");
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(nowhere));
    writeOXAConfigToXml(richCores(), path("no/such/dir"));
    QVERIFY(!QFile::exists(path("no")));
    writeFile(path("unspeakable"), "old");
    for (const QString& name : {QString("a\x01"), QString(QChar(0xd800))}) {
        Cores cores = richCores();
        cores.first()->moduleName = name;
        const QRegularExpression message("unspeakable: cannot be written: a text holds");
        QTest::ignoreMessage(QtCriticalMsg, message);
        writeOXAConfigToXml(cores, path("unspeakable"));
        QCOMPARE(bytesOf(path("unspeakable")), QByteArray("old"));
    }
}

// Also one that is kept because of its size, and of which nothing but a letter changed.
void TestConfigFiles::aChangedFileIsParsedAnew()
{
    const auto writtenAndRead = [this](const QString& module) {
        AoCore core(0);
        core.moduleName = module + QString(1 << 20, 'x');
        writeOXAConfigToXml({&core}, path("large"));
        const Cores read = readOXAConfigFromXml(path("large"));
        return read.isEmpty() ? QString() : read.first()->moduleName.left(1);
    };
    {
        const ParseOnce once;
        QCOMPARE(writtenAndRead("a"), QString("a"));
        QCOMPARE(writtenAndRead("b"), QString("b"));
    }
    QCOMPARE(writtenAndRead("c"), QString("c"));
}

QTEST_GUILESS_MAIN(TestConfigFiles)
#include "test_config_files.moc"
