#include "oxautils/generate/remembered_builds.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace OXA;

class TestRememberedBuilds : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoProgramsAtOnce();
    void damagedAndForeignEntries();
};

// Each build has its own fingerprint; the names are those of one of two configurations.
static void rememberBuilds(quint32 first, quint32 end)
{
    for (quint32 i = first; i < end; i += 2) {
        RememberedBuild build;
        build.original = QString("/%1.oxa").arg(i);
        build.time = QDateTime::fromSecsSinceEpoch(i);
        rememberBuild(build, "content",
            {
                {7,          i     },
                {{1, i % 2}, {2, 3}}
        });
    }
}

void TestRememberedBuilds::twoProgramsAtOnce()
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    rememberBuilds(0, 20);
    QVERIFY(rememberedBuilds().isEmpty()); // as tests are run
    qputenv("OXA_REMEMBER", "1");
    std::thread other([] { rememberBuilds(1, 120); });
    rememberBuilds(0, 120);
    other.join();
    const QList<RememberedBuild> builds = rememberedBuilds();
    QCOMPARE(builds.size(), 100);
    for (int i = 0; i < builds.size(); ++i)
        QCOMPARE(builds.at(i).original, QString("/%1.oxa").arg(119 - i));

    QCOMPARE(rememberedBuilds({
                                  {7,      50    },
                                  {{1, 0}, {2, 3}}
    })
                 .value(0)
                 .original,
        QString("/50.oxa"));
    QVERIFY(rememberedBuilds({
                                 {7,      50    },
                                 {{1, 1}, {2, 3}}
    })
                .isEmpty());
    QVERIFY(rememberedBuilds({
                                 {50,     7     },
                                 {{1, 0}, {2, 3}}
    })
                .isEmpty());
    QCOMPARE(rememberedBuilds({
                                  {7,  50    },
                                  {{}, {2, 3}}
    })
                 .size(),
        1); // no names in the chip
}

void TestRememberedBuilds::damagedAndForeignEntries()
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    rememberBuilds(0, 200);
    const QString damaged = QFileInfo(rememberedBuilds().at(3).configuration).path();
    writeFile(damaged + "/build.json", "{\"original\": ");
    QVERIFY(QDir(rememberedBuildsDir()).mkdir("mine"));
    QCOMPARE(rememberedBuilds().size(), 99);
    rememberBuilds(0, 2); // older than all others
    QVERIFY(QDir(rememberedBuildsDir()).exists("mine"));
    QCOMPARE(rememberedBuilds().size(), 99);
}

QTEST_GUILESS_MAIN(TestRememberedBuilds)
#include "test_remembered_builds.moc"
