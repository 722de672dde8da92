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
    void checksums();
    void versions();
    void modes();
    void skeletons();
    void hostileDocumentsFailAsOthersDo_data();
    void hostileDocumentsFailAsOthersDo();

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestConfigBasics::checksums()
{
    CRC16 crc(0x8005);
    QCOMPARE(int(crc.getCRC16_Byte({'A', 'B'})), 0); // an unfilled table only shifts
    crc.initTableCRC16();
    QCOMPARE(int(crc.getCRC16_Byte({})), 0);
    QCOMPARE(int(crc.getCRC16_Byte({'1', '2', '3', '4', '5', '6', '7', '8', '9'})), 0x0265);
    QCOMPARE(int(crc.getCRC16_bit({})), 0);
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0, 1})), 0x0186); // "A", first bit highest
    QCOMPARE(int(crc.getCRC16_bit({0, 1, 0, 0, 0, 0, 0})), 0);
    QCOMPARE(CRC16::reflect(0xF1, 4), 0x8u); // only the lowest bits
    QCOMPARE(CRC16::reflect(0x1, 32), 0x80000000u);
    QCOMPARE(CRC16::reflect(0xFF, -3), 0u);
}

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

void TestConfigBasics::versions()
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

void TestConfigBasics::modes()
{
    for (const ModeRow& row : kModes) {
        const OxaMode mode = oxaModeFromOxaConfigFile(writeFile(path("mode"), row.content));
        QVERIFY2(mode == row.mode, row.content);
    }
    QCOMPARE(int(oxaModeFromOxaConfigFile(path("missing"))), 10086);
    QVERIFY(Standard == 10087 && Lite == 10088); // which hosts know as numbers
}

void TestConfigBasics::skeletons()
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

void TestConfigBasics::hostileDocumentsFailAsOthersDo_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* what, const QByteArray& content, const char* error) {
        QTest::newRow(what) << content << QString(error);
    };
    const auto nested = [](int levels) {
        return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
    };
    const char* const deep = "elements are nested deeper than 64 levels at 1:193";
    const QString wide = QChar(0xFEFF) + QString(nested(50000));
    row("deep", nested(50000), deep);
    row("one too deep", nested(65), deep);
    row("deep and never closed", QByteArray("<a>").repeated(50000), deep);
    row("deep in two-byte characters",
        QByteArray(reinterpret_cast<const char*>(wide.utf16()), 2 * wide.size()), deep);
    row("deep behind a comment in quotes", "<!DOCTYPE a SYSTEM '<!--'>\n" + nested(50000),
        "elements are nested deeper than 64 levels at 2:193");
    row("deep among comments that seem to end where they begin",
        QByteArray("<a><!--></a>-->").repeated(50000),
        "elements are nested deeper than 64 levels at 1:961");
    row("entities", "<!DOCTYPE a [<!ENTITY b 'c'>]>\n<a>&b;</a>",
        "declarations in the document type are not accepted at 1:1");
    row("closed before it was opened", "</a>" + nested(3), "");
    row("unclosed quote", "<a b='", "");
    row("unclosed comment", "<a><!-- ", "");
    row("another end", "<a>\n  <b></c>", "tag mismatch at 2:9");
    row("deepest that is accepted", nested(64), "Unknown Oxa version.");
    row("a later version", "<O><Version>3.1</Version></O>",
        "The version of Oxa config file is too high.");
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
    const bool parses = error.endsWith('.');
    QCOMPARE(oxaModeFromOxaConfigFile(file) == Invalid, !parses);
    QCOMPARE(checkOXAStandardFile(file), parses);
    QCOMPARE(checkOXALiteFile(file), parses);
    QCOMPARE(readOXACRCForXml(file), QString());
}

QTEST_GUILESS_MAIN(TestConfigBasics)
#include "test_config_basics.moc"
