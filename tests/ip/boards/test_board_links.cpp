#include "board_target.h"

#include "support/files.h"
#include "support/rows.h"
#include "support/scan_noise.h"

#include <QtTest>

namespace {

struct Link {
    const char *what, *family, *link;
    int irLength;
    unsigned er1;
};

constexpr Link kLinks[] = {
    {"four pins", "generic", "pins", 5, 0x08},
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
    BoardTarget target;
    ScanNoise noise(1, row.irLength, row.er1);
    target.wires.rewrite = [&noise](const QByteArray& commands) { return noise.among(commands); };
    QCOMPARE(target.attach(64, {"--for", row.family, "--link", row.link, "--as", "hierarchical"}),
        QString());
    QCOMPARE(target.start("counter_with_analyzer", {"-c", "list"}), QString());
    const int captures = std::max(24, qEnvironmentVariableIntValue("OXA_BOARD_CAPTURES"));
    for (int i = 0; i < captures; ++i)
        QCOMPARE(target.capture(97 * i & 0xff), QString());
    qInfo("%d captures, %d pauses, %d scans of others, %d resets, %d spoiled scans", captures,
        noise.pauses, noise.strangers, noise.resets, noise.spoiled);
    QVERIFY(noise.pauses && noise.strangers && noise.resets && noise.spoiled);
}

QTEST_GUILESS_MAIN(TestBoardLinks)
#include "test_board_links.moc"
