#include "killed_child.h"
#include "small_disk.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/work_dir.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/waveforms.h"

#include <QtTest>

#include <unistd.h>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
constexpr char kOld[] = "old\n";
bool ownMounts = false;

void addSignals(OXA::AoCore& core, int count)
{
    for (int i = 0; i < count; ++i) {
        core.signalList += OXA::SignalItem();
        core.signalList.last().name = QString("top/unit/signal_%1").arg(i);
    }
}

enum class Disk { Full, NearlyFull, ReadOnly, Sound };

/// A call of oxa with things on a disk that fails; "DISK" and "WORK" stand for directories.
struct Row {
    const char* what;
    Disk disk;
    QString call;
    int status;
    const char* message;
};

const QString kPart = " --part QX1N-9LV-QFN88-C6";
const QString kGenerate = "generate " + kUart + kPart + " --work-dir ";
const QString kSimulate
    = "simulate WORK/c.oxa --model --force-trigger-at 1 --stimulus WORK/wave.vcd -o DISK/old.vcd"
    + kPart;

const Row kRows[] = {
    {"new, full",                          Disk::Full,     "new DISK/new.oxa",                  2,
     "DISK/new.oxa: cannot be written: No space left on device"                                          },
    {"new, read-only",                     Disk::ReadOnly, "new DISK/new.oxa",                  2,
     "DISK/new.oxa: cannot be written: Read-only file system"                                            },
    {"sources, full",                      Disk::Full,     kGenerate + "DISK/w --no-synthesis", 1,
     "failed to generate qx_con_top_define.v"                                                            },
    {"sources, read-only",                 Disk::ReadOnly, kGenerate + "DISK/w --no-synthesis", 2,
     "DISK/w: nothing can be written there: Read-only file system"                                       },
    {"sources, emptying a read-only disk", Disk::ReadOnly,
     kGenerate + "DISK --force --no-synthesis",                                                 2,
     "DISK: nothing can be written there: Read-only file system"                                         },
    {"netlist, full",                      Disk::Full,     kGenerate + "WORK/w -o DISK/old.v",  1,
     "DISK/old.v: cannot be written: No space left on device"                                            },
    {"netlist, read-only",                 Disk::ReadOnly, kGenerate + "WORK/w -o DISK/old.v",  1,
     "DISK/old.v: cannot be written: Read-only file system"                                              },
    {"netlist over a directory",           Disk::Sound,    kGenerate + "WORK/w -o DISK",        1,
     "is a directory: DISK"                                                                              },
    {"capture, full",                      Disk::Full,     kSimulate,                           1,
     "DISK/old.vcd: cannot be written: No space left on device"                                          },
    {"capture, read-only",                 Disk::ReadOnly, kSimulate,                           2,
     "DISK/old.vcd: cannot be written: it may not be changed"                                            },
    {"catalogue is a directory",           Disk::Sound,    "devices --device-db DISK",          2, "DISK"},
};

}

class TestFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void savesThatAreKilled();
    void runsThatAreKilled();
    void savesThatFail_data();
    void savesThatFail();
    void calls_data();
    void calls();
};

// At each of its system calls, before and behind it: what is there is the old file or the new one.
void TestFaults::savesThatAreKilled()
{
    const QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir("there"));
    const QString path = directory.filePath("there/c.oxa");
    OXA::AoCore core(0);
    core.sampleClock = "clk";
    const auto save = [&] { OXA::writeOXAConfigToXml({&core}, path); };
    save();
    const QByteArray before = bytesOf(path);
    addSignals(core, 2000); // more than goes to the file at once
    save();
    const QByteArray after = bytesOf(path);
    QVERIFY(after.size() > 10 * before.size());

    int olds = 0;
    int news = 0;
    ChildEnd end = ChildEnd::Killed;
    for (int call = 0; end == ChildEnd::Killed; ++call) {
        // Every child draws the same temporary names: no other may have left one.
        OXA::removeDir(QFileInfo(path).path());
        writeFile(path, before);
        end = killAtCall(call, save);
        if (end == ChildEnd::NotTraced)
            QSKIP("this machine lets nobody trace a child");
        const QByteArray found = bytesOf(path);
        (found == before ? olds : news) += 1;
        QVERIFY2(found == before || found == after, qPrintable(QString("call %1").arg(call)));
    }
    QVERIFY2(olds > 10 && news > 1, "calls on both sides of the change were met");
}

// What a killed run leaves is as it was, or marked for the next run to empty.
void TestFaults::runsThatAreKilled()
{
    const QTemporaryDir directory;
    OXA::OxaArg arg;
    arg.configFile = kUart;
    arg.ipDir = directory.path();
    arg.workDir = directory.filePath("work");
    const auto run = [&] {
        OXA::WorkDir workDir;
        QString error;
        if (workDir.claim(arg.workDir, &error))
            OXA::OxaPrepare().prepare(arg);
    };
    int kept = 0;
    int marked = 0;
    ChildEnd end = ChildEnd::Killed;
    for (int call = 0; end == ChildEnd::Killed; call += 3) {
        QVERIFY(QDir().mkpath(arg.workDir + "/sub"));
        OXA::removeDir(arg.workDir);
        writeFile(arg.workDir + "/a", kOld);
        writeFile(arg.workDir + "/z", kOld);
        end = killAtCall(call, run);
        if (end == ChildEnd::NotTraced)
            QSKIP("this machine lets nobody trace a child");
        const bool isMarked = !OXA::holdsForeignFiles(arg.workDir);
        const bool isWhole
            = bytesOf(arg.workDir + "/a") == kOld && bytesOf(arg.workDir + "/z") == kOld;
        (isMarked ? marked : kept) += 1;
        QVERIFY2(isMarked || isWhole, qPrintable(QString("call %1").arg(call)));
    }
    QVERIFY2(kept > 1 && marked > 10, "calls on both sides of the mark were met");
}

void TestFaults::savesThatFail_data()
{
    QTest::addColumn<int>("disk");
    QTest::addColumn<bool>("isLinked");
    for (const bool isLinked : {false, true}) {
        const char* name = isLinked ? "a file of two names" : "a file";
        QTest::addRow("%s, full", name) << int(Disk::Full) << isLinked;
        QTest::addRow("%s, nearly full", name) << int(Disk::NearlyFull) << isLinked;
        QTest::addRow("%s, read-only", name) << int(Disk::ReadOnly) << isLinked;
    }
}

void TestFaults::savesThatFail()
{
    if (!ownMounts)
        QSKIP("this machine gives neither root nor user name spaces: no disk of our own");
    QFETCH(int, disk);
    QFETCH(bool, isLinked);
    const SmallDisk small;
    QVERIFY(small.isMounted());
    const QString path = small.path("c.oxa");
    QVERIFY(QFile::copy(kUart, path));
    if (isLinked) // it is written over, and put back
        QCOMPARE(::link(qPrintable(path), qPrintable(small.path("twin"))), 0);
    if (disk == int(Disk::ReadOnly))
        QVERIFY(small.makeReadOnly());
    else
        QVERIFY(small.fill(disk == int(Disk::NearlyFull) ? 40000 : 0));
    OXA::AoCore core(0);
    addSignals(core, 2000);
    QTest::ignoreMessage(QtCriticalMsg,
        QRegularExpression(QRegularExpression::escape(path)
            + ": cannot be written: "
              "(No space left on device|Read-only file system)$"));
    OXA::writeOXAConfigToXml({&core}, path);
    QCOMPARE(bytesOf(path), bytesOf(kUart));
    QCOMPARE(QDir(small.path(".")).entryList(QDir::Files).filter("c.oxa").size(), 1);
}

void TestFaults::calls_data()
{
    QTest::addColumn<int>("index");
    for (size_t i = 0; i < std::size(kRows); ++i)
        QTest::newRow(kRows[i].what) << int(i);
}

void TestFaults::calls()
{
    QFETCH(int, index);
    const Row& row = kRows[index];
    if (!ownMounts)
        QSKIP("this machine gives neither root nor user name spaces: no disk of our own");
    const SmallDisk disk;
    const QTemporaryDir work;
    QVERIFY(disk.isMounted());
    writeFile(disk.path("old.v"), kOld);
    writeFile(disk.path("old.vcd"), kOld);
    const QString engine = writeFile(
        work.filePath("engine"), "#!/bin/sh\necho 'module qx_oxa; endmodule' >netlist.v\n");
    QFile::setPermissions(engine, QFile::ReadOwner | QFile::ExeOwner);
    writeFile(work.filePath("wave.vcd"), vcdOf({"a"}, {"0", "1", "0"}));
    OXA::AoCore core(0);
    core.sampleClock = "clk";
    core.storageDepth = core.captureAmount = 2;
    core.signalList = core.captureSignals = QList<OXA::SignalItem>() << OXA::SignalItem();
    core.signalList[0].name = "a";
    OXA::writeOXAConfigToXml({&core}, work.filePath("c.oxa"));
    if (row.disk != Disk::Sound)
        QVERIFY(row.disk == Disk::Full ? disk.fill() : disk.makeReadOnly());

    const auto place = [&](const QString& text) {
        return QString(text)
            .replace("DISK", disk.path(".").chopped(2))
            .replace("WORK", work.path());
    };
    const Result result = oxa(place(row.call).split(' '), {"OXA_SYNTHESIS_ENGINE=" + engine});
    QVERIFY2(result.err.contains(place(row.message)), qPrintable(result.err));
    QCOMPARE(result.status, row.status);
    QCOMPARE(bytesOf(disk.path("old.v")), QByteArray(kOld));
    QCOMPARE(bytesOf(disk.path("old.vcd")), QByteArray(kOld));
    QVERIFY2(!QFile::exists(disk.path("new.oxa")), "no half of a file stays");
}

int main(int argc, char** argv)
{
    ownMounts = makeOwnMounts(); // QtTest makes a thread
    QCoreApplication application(argc, argv);
    TestFaults test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_faults.moc"
