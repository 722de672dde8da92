#include "oxautils/config/crc16.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace OXA;

class TestConfigBasics : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void byteChecksums();
    void bitChecksums();
    void reflections();
    void versions_data();
    void versions();
    void modes_data();
    void modes();
    void skeletons();
    void hostileDocumentsFailAsOthersDo_data();
    void hostileDocumentsFailAsOthersDo();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestConfigBasics::byteChecksums()
{
    CRC16 crc(0x8005);
    QCOMPARE(int(crc.getCRC16_Byte({'A', 'B'})), 0); // an unfilled table only shifts
    crc.initTableCRC16();
    const QList<QPair<QByteArray, int>> rows = {
        {"",          0x0000},
        {"A",         0x0186},
        {"0",         0x00A0},
        {"123456789", 0x0265}
    };
    for (const auto& row : rows) {
        const std::vector<unsigned char> bytes(row.first.begin(), row.first.end());
        QCOMPARE(int(crc.getCRC16_Byte(bytes)), row.second);
    }
}

void TestConfigBasics::bitChecksums()
{
    CRC16 crc(0x8005);
    crc.initTableCRC16();
    QCOMPARE(int(crc.getCRC16_bit({})), 0);
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0, 1})), 0x0186); // "A", first bit highest
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0})), 0);
}

void TestConfigBasics::reflections()
{
    QCOMPARE(CRC16::reflect(0x1, 4), 0x8u);
    QCOMPARE(CRC16::reflect(0xF1, 4), 0x8u); // only the lowest bits
    QCOMPARE(CRC16::reflect(0x1, 32), 0x80000000u);
    QCOMPARE(CRC16::reflect(0xFF, 0), 0u);
    QCOMPARE(CRC16::reflect(0xFF, -3), 0u);
}

void TestConfigBasics::versions_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("result"); // 0: throws
    const struct {
        const char *a, *b;
        int result;
    } rows[] = {
        {"2.0",  "2.0", 2},
        {"1.5",  "2.0", 1},
        {"3.1",  "3.0", 4},
        {"3",    "3.0", 2},
        {"3..0", "3.0", 2},
        {"2.10", "2.9", 4},
        {"",     "",    2},
        {"",     "0.1", 1},
        {"3.a",  "3.0", 0},
        {"4.a",  "3.0", 4}, // the first part decides before the second is looked at
        {"x",    "3.0", 0},
        {"3.0",  "3.?", 0},
    };
    for (const auto& row : rows)
        QTest::addRow("%s ~ %s", row.a, row.b) << row.a << row.b << row.result;
}

void TestConfigBasics::versions()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, result);
    int got = 0;
    try {
        got = compareVersion(a, b);
    } catch (const CompareException& exception) {
        QCOMPARE(exception.message(), QString("Invalid Oxa config file."));
    }
    QCOMPARE(got, result);
}

void TestConfigBasics::modes_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("mode");
    QTest::newRow("standard") << QByteArray("<A><Mode>Standard</Mode></A>") << 10087;
    QTest::newRow("lite") << QByteArray("<A><Mode>Lite</Mode></A>") << 10088;
    QTest::newRow("no mode") << QByteArray("<A/>") << 10087;
    QTest::newRow("mode of a child") << QByteArray("<A><B><Mode>Lite</Mode></B></A>") << 10087;
    QTest::newRow("lower case") << QByteArray("<A><Mode>lite</Mode></A>") << 10086;
    QTest::newRow("blank") << QByteArray("<A><Mode/></A>") << 10086;
    QTest::newRow("malformed") << QByteArray("<A><Mode>Lite</A>") << 10086;
    QTest::newRow("empty") << QByteArray() << 10086;
    QTest::newRow("own document type")
        << QByteArray("<!DOCTYPE A><A><Mode>Lite</Mode></A>") << 10088;
    QTest::newRow("declared version 1")
        << QByteArray("<?xml version=\"1\" encoding=\"UTF-8\"?><A><Mode>Lite</Mode></A>") << 10088;
}

void TestConfigBasics::modes()
{
    QFETCH(QByteArray, content);
    QFETCH(int, mode);
    QCOMPARE(int(oxaModeFromOxaConfigFile(writeFile(path("mode"), content))), mode);
    QCOMPARE(int(oxaModeFromOxaConfigFile(path("missing"))), 10086);
}

void TestConfigBasics::skeletons()
{
    const QByteArray head = "<?xml version=\"1\" encoding=\"UTF-8\"?>\n"
                            "<OXA_CONFIG>\n"
                            "    <Version>3.0</Version>\n";
    fillInfoForEmptyOxaConfig(path("s"), Standard);
    QCOMPARE(bytesOf(path("s")), head + "    <Mode>Standard</Mode>\n</OXA_CONFIG>\n");
    fillInfoForEmptyOxaConfig(path("s"), Lite); // the old content goes
    QCOMPARE(bytesOf(path("s")), head + "    <Mode>Lite</Mode>\n</OXA_CONFIG>\n");
    fillInfoForEmptyOxaConfig(path("s"), Invalid);
    QCOMPARE(bytesOf(path("s")), head + "</OXA_CONFIG>\n");
    fillInfoForEmptyOxaConfig(path("no/such/dir"), Standard);
    QVERIFY(!QFile::exists(path("no")));
}

void TestConfigBasics::hostileDocumentsFailAsOthersDo_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    const auto nested = [](int levels) {
        return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
    };
    const QString deep = "elements are nested deeper than 64 levels at 1:193";
    QTest::newRow("deep") << nested(50000) << deep;
    QTest::newRow("one too deep") << nested(65) << deep;
    QTest::newRow("deep and never closed") << QByteArray("<a>").repeated(50000) << deep;
    QTest::newRow("deep behind a comment in quotes") << "<!DOCTYPE a SYSTEM '<!--'>\n"
            + nested(50000) << QString("elements are nested deeper than 64 levels at 2:193");
    QTest::newRow("deep among comments that seem to end where they begin")
        << QByteArray("<a><!--></a>-->").repeated(50000)
        << QString("elements are nested deeper than 64 levels at 1:961");
    const QString wide = QChar(0xFEFF) + QString(nested(50000));
    QTest::newRow("deep in two-byte characters")
        << QByteArray(reinterpret_cast<const char*>(wide.utf16()), 2 * wide.size()) << deep;
    QTest::newRow("entities") << QByteArray("<!DOCTYPE a [<!ENTITY b 'c'>]>\n<a>&b;</a>")
                              << QString(
                                     "declarations in the document type are not accepted at 1:1");
    QTest::newRow("closed before it was opened") << "</a>" + nested(3) << QString();
    QTest::newRow("unclosed quote") << QByteArray("<a b='") << QString();
    QTest::newRow("unclosed comment") << QByteArray("<a><!-- ") << QString();
    QTest::newRow("deepest that is accepted") << nested(64) << QString("Unknown Oxa version.");
}

void TestConfigBasics::hostileDocumentsFailAsOthersDo()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    const QString file = writeFile(path("hostile"), content);
    bool ok = true;
    QString message;
    QVERIFY(readOXAConfigFromXml(file, &ok, &message).isEmpty());
    QVERIFY(!ok);
    if (error.isEmpty())
        QVERIFY(!message.isEmpty());
    else
        QCOMPARE(message, error);
    QString liteMessage;
    QVERIFY(readOXAConfigFromXml_Lite(file, &ok, &liteMessage).isEmpty());
    QCOMPARE(liteMessage, message);
    const bool parses = error == "Unknown Oxa version.";
    QCOMPARE(oxaModeFromOxaConfigFile(file) == Invalid, !parses);
    QCOMPARE(checkOXAStandardFile(file), parses);
    QCOMPARE(checkOXALiteFile(file), parses);
    QCOMPARE(readOXACRCForXml(file), QString());
}

QTEST_GUILESS_MAIN(TestConfigBasics)
#include "test_config_basics.moc"
