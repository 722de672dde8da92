// SPDX-License-Identifier: Apache-2.0
#include "killed_child.h"
#include "small_disk.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/work_dir.h"
#include "support/files.h"
#include "support/oxa_program.h"
#include "support/rows.h"
#include "support/signals.h"
#include "support/waveforms.h"

#include <QtTest>

#include <unistd.h>

namespace {

const QString kUart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";
constexpr char kOld[] = "old\n";
bool ownMounts = false;

constexpr char kNoDisk[]
    = "this machine gives neither root nor user name spaces: no disk of our own";

enum class Disk { Full, NearlyFull, ReadOnly, Sound };

bool makeFail(const SmallDisk& disk, Disk state)
{
    if (state == Disk::Sound)
        return true;
    return state == Disk::ReadOnly ? disk.makeReadOnly()
                                   : disk.fill(state == Disk::NearlyFull ? 40000 : 0);
}

/// A call of oxa with things on a disk that fails; DISK and WORK stand for directories.
struct Row {
    Disk disk;
    const char* what; // the call, with GENERATE and SIMULATE for the beginnings below
    int status;
    const char* message;
};

constexpr Row kRows[] = {
    {Disk::Full,     "new DISK/new.oxa",                     2, "new.oxa: cannot be written: No space left" },
    {Disk::ReadOnly, "new DISK/new.oxa",                     2, "new.oxa: cannot be written: Read-only"     },
    {Disk::Full,     "GENERATE DISK/w --no-synthesis",       1, "failed to generate qx_con_top_define.v"    },
    {Disk::ReadOnly, "GENERATE DISK/w --no-synthesis",       2, "cannot be written: Read"                   },
    {Disk::ReadOnly, "GENERATE DISK --force --no-synthesis", 2, "cannot be written: Read"                   },
    {Disk::Full,     "GENERATE WORK/w -o DISK/old.v",        1, "old.v: cannot be written: No space left"   },
    {Disk::ReadOnly, "GENERATE WORK/w -o DISK/old.v",        1, "old.v: cannot be written: Read-only"       },
    {Disk::Sound,    "GENERATE WORK/w -o DISK",              1, "is a directory: "                          },
    {Disk::Full,     "SIMULATE -o DISK/old.vcd",             1, "old.vcd: cannot be written: No space left" },
    {Disk::ReadOnly, "SIMULATE -o DISK/old.vcd",             2, "cannot be written: no permission to change"},
};

const QString kPart = " --part QX1N-9LV-QFN88-C6 ";
const QString kGenerate = "generate " + kUart + kPart + "--work-dir";
const QString kSimulate = "simulate WORK/c.oxa" + kPart + "--model --stimulus WORK/wave.vcd";

/// Kills `work` at every `step`-th of its system calls, before and behind it, each time after
/// `prepare`, and counts what `look` finds there: 0 or 1. False when nobody may trace a child.
bool killEverywhere(int step, const std::function<void()>& prepare,
    const std::function<void()>& work, const std::function<int()>& look, int (&found)[2])
{
    ChildEnd end = ChildEnd::Killed;
    for (int call = 0; end == ChildEnd::Killed; call += step) {
        prepare();
        end = killAtCall(call, work);
        if (end != ChildEnd::NotTraced)
            ++found[look()];
    }
    return end != ChildEnd::NotTraced;
}

}

class TestFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void savesThatAreKilled();
    void runsThatAreKilled();
    void savesThatFail();
    void calls_data() { addRows(kRows); }
    void calls();
};

// A save is killed before and after each of its system calls: the file is the old or the new one.
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
    core.signalList = signalsOf("top/unit/signal", 2000); // more than goes to the file at once
    save();
    const QByteArray after = bytesOf(path);
    QVERIFY(after.size() > 10 * before.size());

    int found[2] = {};
    const auto prepare = [&] {
        // All children use the same temporary names: files of an earlier one have to go.
        OXA::removeDir(QFileInfo(path).path());
        writeFile(path, before);
    };
    const auto isNew = [&] {
        const QByteArray content = bytesOf(path);
        if (content != before && content != after)
            qFatal("neither the old file nor the new one");
        return int(content == after);
    };
    if (!killEverywhere(1, prepare, save, isNew, found))
        QSKIP("this machine lets nobody trace a child");
    QVERIFY2(found[0] > 10 && found[1] > 1, "calls on both sides of the change were met");
}

// A killed run leaves the directory unchanged, or marked as one that the next run may empty.
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
    int found[2] = {};
    const auto prepare = [&] {
        QDir().mkpath(arg.workDir + "/sub");
        OXA::removeDir(arg.workDir);
        writeFile(arg.workDir + "/a", kOld);
        writeFile(arg.workDir + "/z", kOld);
    };
    const auto isMarked = [&] {
        const bool marked = !OXA::holdsForeignFiles(arg.workDir);
        if (!marked && (bytesOf(arg.workDir + "/a") != kOld || bytesOf(arg.workDir + "/z") != kOld))
            qFatal("it is neither whole nor marked");
        return int(marked);
    };
    if (!killEverywhere(3, prepare, run, isMarked, found))
        QSKIP("this machine lets nobody trace a child");
    QVERIFY2(found[0] > 1 && found[1] > 10, "calls on both sides of the mark were met");
}

// A file with one name is replaced; one with two names is overwritten, and restored on failure.
void TestFaults::savesThatFail()
{
    if (!ownMounts)
        QSKIP(kNoDisk);
    OXA::AoCore core(0);
    core.signalList = signalsOf("top/unit/signal", 2000);
    for (const Disk state : {Disk::Full, Disk::NearlyFull, Disk::ReadOnly}) {
        for (const bool isLinked : {false, true}) {
            const SmallDisk disk;
            QVERIFY(disk.isMounted());
            const QString path = disk.path("c.oxa");
            QVERIFY(QFile::copy(kUart, path));
            if (isLinked)
                QCOMPARE(::link(qPrintable(path), qPrintable(disk.path("twin"))), 0);
            QVERIFY(makeFail(disk, state));
            QTest::ignoreMessage(QtCriticalMsg,
                QRegularExpression("c.oxa: cannot be written: "
                                   "(No space left on device|Read-only file system)$"));
            OXA::writeOXAConfigToXml({&core}, path);
            QCOMPARE(bytesOf(path), bytesOf(kUart));
            QCOMPARE(QDir(disk.path(".")).entryList(QDir::Files).filter("c.oxa").size(), 1);
        }
    }
}

void TestFaults::calls()
{
    if (!ownMounts)
        QSKIP(kNoDisk);
    const Row& row = rowOf(kRows);
    const SmallDisk disk;
    const QTemporaryDir work;
    QVERIFY(disk.isMounted());
    writeFile(disk.path("old.v"), kOld);
    writeFile(disk.path("old.vcd"), kOld);
    const QString engine
        = writeProgram(work.filePath("engine"), "echo 'module qx_oxa; endmodule' >netlist.v\n");
    writeFile(work.filePath("wave.vcd"), vcdOf({"a"}, {"0", "1", "0"}));
    const auto core = coreOf(0, {signalOf("a")}, signalOf("a"), "1", 2, 0);
    OXA::writeOXAConfigToXml({core.get()}, work.filePath("c.oxa"));
    QVERIFY(makeFail(disk, row.disk));

    QString call = row.what;
    call.replace("GENERATE", kGenerate).replace("SIMULATE", kSimulate);
    call.replace("DISK", disk.path(".").chopped(2)).replace("WORK", work.path());
    const Result result = oxa(call.split(' '), {"OXA_SYNTHESIS_ENGINE=" + engine});
    QVERIFY2(result.err.contains(row.message), qPrintable(result.err));
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
