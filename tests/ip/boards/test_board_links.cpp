// SPDX-License-Identifier: Apache-2.0
#include "board_target.h"

#include "support/files.h"
#include "support/rows.h"
#include "support/scan_noise.h"

#include <QtTest>

namespace {

// A device's primitive has a model, from what its maker says; where that leaves something open, it
// is tried both ways.
struct Link {
    const char *what, *family, *link;
    int irLength;
    unsigned er1;
    const char* models; // options of Icarus for models of the primitive
    const char* openOcd; // what OpenOCD's configuration is to know of the device
};

constexpr Link kLinks[] = {
    {"four pins",                                 "generic", "pins", 5,  0x08,  "",                   ""                                   },
    {"ECP5, skewed",                              "ecp5",    "jtag", 8,  0x32,  "-DNO_PADS -DSKEWED", ""                                   },
    {"ECP5, strobes for ER1 only",                "ecp5",    "jtag", 8,  0x32,  "-DNO_PADS -DGATED",  ""                                   },
    {"7 series",                                  "xilinx",  "jtag", 6,  0x02,  "-DNO_PADS",          ""                                   },
    {"two dies, strobes for USER1 only and late", "xilinx",  "jtag", 12, 0x924,
     "-DNO_PADS -DTWO_DIES -DGATED -DFALLING",                                                        "set OXA_IRLEN 12; set OXA_ER1 0x924"},
};

}

// Captures through each family's JTAG access, among pauses, scans of other instructions and resets.
// OXA_BOARD_CAPTURES: how many.
class TestBoardLinks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void captures_data() { addRows(kLinks); }
    void captures();
};

void TestBoardLinks::captures()
{
    const Link& row = rowOf(kLinks);
    ScanNoise noise(1, row.irLength, row.er1);
    BoardTarget target; // its wires use the noise until they end
    target.wires.rewrite = [&noise](const QByteArray& commands) { return noise.among(commands); };
    QCOMPARE(target.attach(64, {"--for", row.family, "--link", row.link, "--as", "hierarchical"}),
        QString());
    target.script = row.openOcd;
    const QStringList models {"-y", target.here, "-y", OXA_BINARY_DIR "/share/oxautils/sim"};
    QCOMPARE(target.start("counter_with_analyzer",
                 models + QString(row.models).split(' ', Qt::SkipEmptyParts)
                     + QStringList {"-c", "list"}),
        QString());
    QCOMPARE(target.probe(), QString());
    const int captures = std::max(5, qEnvironmentVariableIntValue("OXA_BOARD_CAPTURES"));
    for (int i = 0; i < captures; ++i)
        QCOMPARE(target.capture(97 * i & 0xff), QString());
    QCOMPARE(target.bypass(row.irLength), QString());
    qInfo("%d captures, %d pauses, %d scans of others, %d resets, %d spoiled scans", captures,
        noise.pauses, noise.strangers, noise.resets, noise.spoiled);
    QVERIFY(noise.pauses && noise.strangers && noise.resets);
}

QTEST_GUILESS_MAIN(TestBoardLinks)
#include "test_board_links.moc"
