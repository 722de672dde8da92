// SPDX-License-Identifier: Apache-2.0
#include "files/input_guard.h"
#include "files/replace_file.h"
#include "support/files.h"
#include "support/patience.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace OXA_FILES;

namespace {

/// The entries of the test's directory: a name with a slash at its end is a directory, one with
/// "->" a link, one with "=" another name of the file.
constexpr const char* kTree[] = {"work/sub/", "work/sub/a.oxa", "outside/b.oxa", "work.oxa",
    "ip/OXA/core.v", "alias->work", "work/link.oxa->../outside/b.oxa", "work/way->../outside",
    "other->outside", "out/twin.v=ip/OXA/core.v", "out/b.vcd=outside/b.oxa",
    "out/link.vcd->../outside/b.oxa", "out/dangling.vcd->new.vcd"};

struct Row {
    const char *what, *written; ///< a directory to be emptied, or a file to be written
    const char *path, *source; ///< an input of either kind
    bool isLost;
};

constexpr Row kEmptied[] = {
    {"a file below",                         "work",           "work/sub/a.oxa",        "",                true },
    {"by another name of the directory",     "work",           "alias/sub/a.oxa",       "",                true },
    {"a directory by another name",          "alias/./",       "work/sub/a.oxa",        "",                true },
    {"a link that leads out",                "work",           "work/link.oxa",         "",                true },
    {"a link on the way",                    "work",           "alias/way/b.oxa",       "",                true },
    {"everything",                           "/",              "outside/b.oxa",         "",                true },
    {"behind a link, as the system sees it", "work/way/..",    "outside/b.oxa",         "",                true },
    {"behind a link, as it reads",           "work/way/..",    "work/sub/a.oxa",        "",                true },
    {"what is not there yet",                "work",           "work/new/c.oxa",        "",                true },
    {"a file outside",                       "work",           "outside/b.oxa",         "",                false},
    {"a name that begins alike",             "work",           "work.oxa",              "",                false},
    {"past the directory",                   "work",           "work/../outside/b.oxa", "",                false},
    {"a directory that has to stay",         "work",           "work/",                 "",                true },
    {"below one that has to stay",           "work/sub",       "work",                  "",                false},
    {"sources below",                        "ip",             "",                      "ip/OXA",          true },
    {"below sources",                        "ip/OXA/new/dir", "",                      "alias/../ip/OXA", true },
    {"beside sources",                       "ip/work",        "",                      "ip/OXA",          false},
};

constexpr Row kWritten[] = {
    {"the same file",          "other/b.oxa",          "outside/b.oxa",    "",       true },
    {"a link to it",           "out/link.vcd",         "outside/b.oxa",    "",       true },
    {"another name of it",     "out/b.vcd",            "outside/b.oxa",    "",       true },
    {"a link to another",      "out/dangling.vcd",     "outside/b.oxa",    "",       false},
    {"the target of a link",   "out/new.vcd",          "out/dangling.vcd", "",       true },
    {"a new file",             "outside/c.vcd",        "outside/b.oxa",    "",       false},
    {"one of the sources",     "ip/OXA/../OXA/core.v", "",                 "ip/OXA", true },
    {"a name of a source",     "out/twin.v",           "",                 "ip/OXA", true },
    {"a name of another file", "out/b.vcd",            "",                 "ip/OXA", false},
};

struct stat statOf(const QString& path)
{
    struct stat info { };
    ::stat(QFile::encodeName(path).constData(), &info);
    return info;
}

}

class TestFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { QDir::setCurrent("/"); }
    void inputs();
    void fileKeepsNamesOwnerAndMode();
    void fileThatCannotBeFilledStays();
    void streamsAreWritten();

private:
    QScopedPointer<QTemporaryDir> m_dir;
};

void TestFiles::init()
{
    m_dir.reset(new QTemporaryDir);
    QDir::setCurrent(m_dir->path());
    for (const QString entry : kTree) {
        const QString name = entry.section(QRegularExpression("->|="), 0, 0);
        QVERIFY(QDir().mkpath(QFileInfo(name).path()) || name.isEmpty());
        const QString target = entry.section(QRegularExpression("->|="), 1);
        if (entry.contains("->"))
            QCOMPARE(::symlink(qPrintable(target), qPrintable(name)), 0);
        else if (entry.contains('='))
            QCOMPARE(::link(qPrintable(target), qPrintable(name)), 0);
        else if (!entry.endsWith('/'))
            ::writeFile(name, "old");
    }
}

// By relative and by absolute paths.
void TestFiles::inputs()
{
    const auto verify = [](const Row& row, QString (*guard)(const QString&, const Inputs&)) {
        const Inputs inputs {{row.path}, {row.source}};
        const QString lost = row.isLost ? QString(row.path) + row.source : QString();
        QVERIFY2(guard(row.written, inputs) == lost, row.what);
        QVERIFY2(guard(QDir::current().filePath(row.written), inputs) == lost, row.what);
    };
    for (const Row& row : kEmptied)
        verify(row, lostByEmptying);
    for (const Row& row : kWritten)
        verify(row, lostByWriting);
}

void TestFiles::fileKeepsNamesOwnerAndMode()
{
    QString error;
    QVERIFY(replaceFile("out/link.vcd", "linked", &error));
    QVERIFY(QFileInfo("out/link.vcd").isSymLink());
    for (const char* name : {"outside/b.oxa", "out/b.vcd"}) // it is one file still
        QCOMPARE(bytesOf(name), QByteArray("linked"));

    QVERIFY(::chmod("work.oxa", 0640) == 0);
    const bool isRoot = ::geteuid() == 0; // nobody else can give a file away
    QVERIFY(!isRoot || ::chown("work.oxa", 4711, 4712) == 0);
    for (const QByteArray& text : {QByteArray(100000, 'x'), QByteArray("short")}) {
        QVERIFY2(replaceFile("work.oxa", text, &error), qPrintable(error));
        QCOMPARE(bytesOf("work.oxa"), text);
        QCOMPARE(int(statOf("work.oxa").st_mode & 07777), 0640);
        QVERIFY(
            !isRoot || (statOf("work.oxa").st_uid == 4711 && statOf("work.oxa").st_gid == 4712));
    }
    QVERIFY(replaceFile("out/dangling.vcd", "new", &error));
    QCOMPARE(bytesOf("out/new.vcd"), QByteArray("new"));
    QCOMPARE(QDir("out").entryList(QDir::Files | QDir::Hidden).size(), 5); // nothing beside them
}

void TestFiles::fileThatCannotBeFilledStays()
{
    const auto fill = [](QIODevice& out, QString* reason) {
        out.write("half");
        *reason = "no more";
        return false;
    };
    for (const QString name : {"work.oxa", "out/b.vcd"}) {
        QString error;
        QVERIFY(!replaceFile(name, fill, &error));
        QCOMPARE(error, name + ": cannot be written: no more");
        QCOMPARE(bytesOf(name), QByteArray("old"));
    }
    QString error;
    QVERIFY(!replaceFile("no/such/file", "x", &error));
    QCOMPARE(error, QString("no/such/file: cannot be written: No such file or directory"));
    QVERIFY(!replaceFile("out", "x", &error));
    QCOMPARE(error, QString("out: cannot be written: it is a directory"));
}

void TestFiles::streamsAreWritten()
{
    QCOMPARE(::mkfifo("pipe", 0600), 0);
    QVERIFY(QFile::link("pipe", "link"));
    QVERIFY(isStream("link") && !isStream("work.oxa") && !isStream("none") && !isStream("out"));
    QProcess reader;
    reader.start("cat", {"link"});
    QString error;
    QVERIFY2(replaceFile("link", "through", &error), qPrintable(error));
    QVERIFY(finished(reader));
    QCOMPARE(reader.readAll(), QByteArray("through"));
    QVERIFY(!QFileInfo("pipe").isFile());

    reader.start("sh", {"-c", "exec <pipe"}); // it leaves at once
    const QByteArray more(1 << 20, 'x'); // than a pipe holds
    QVERIFY(!replaceFile("pipe", more, &error));
    QCOMPARE(error, QString("pipe: cannot be written: Broken pipe"));
    QVERIFY(finished(reader));
}

QTEST_APPLESS_MAIN(TestFiles)
#include "test_files.moc"
