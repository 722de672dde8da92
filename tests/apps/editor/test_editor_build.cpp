// SPDX-License-Identifier: Apache-2.0
#include "window_driver.h"

#include "oxa-editor/build_panel.h"
#include "oxa-editor/core_list.h"
#include "oxa-editor/part_choice.h"

#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>

namespace {

constexpr char kPart[] = "QX1N-9LV-QFN88-C6|QX1N-9";

/// A window with a configuration, a part and a work directory.
struct Run : PanelDriver<BuildPanel> {
    PartChoice& part = *window.findChild<PartChoice*>();

    Run(const TestFolder& folder, const QString& workDir)
        : PanelDriver(folder.example("uart.oxa"))
    {
        part.setKey(kPart);
        panel.setWorkDir(folder.path(workDir));
    }

    QString log() const { return textsIn(*panel.log()); }
    void finish() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isRunning(), kPatience); }

    /// Starts a run by `key`, and waits for its end, which the panel tells by `text`.
    void runs(const char* key, const QString& text)
    {
        keys(key);
        QVERIFY(panel.isRunning());
        finish();
        QVERIFY2(state().contains(text), qPrintable(state()));
    }

    /// What the panel and the log say of a run by `key` that does not start.
    QString refusal(const char* key)
    {
        keys(key);
        return panel.isRunning() ? QString() : state() + log();
    }
};

}

class TestEditorBuild : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { BuildJob::installLog(); }
    void generates();
    void foreignFolderIsAskedFor();
    void whatCannotBeBuiltIsNot();
    void synthesisIsStopped();
    void failuresLeadToTheirFile();
    void closingStopsARun();

private:
    TestFolder m_folder;
};

void TestEditorBuild::generates()
{
    Run run(m_folder, "generated");
    run.enter("Module:", "unsaved");
    run.runs("F7", "Done");
    QVERIFY(QFile::exists(m_folder.path("generated/qx_oxa_top.v")));
    QVERIFY(run.window.isWindowModified());
    run.runs("F7", "Done"); // into the same folder, without a question
}

void TestEditorBuild::foreignFolderIsAskedFor()
{
    QDir(m_folder.path(".")).mkdir("foreign");
    writeFile(m_folder.path("foreign/thesis.txt"), "precious");
    Run run(m_folder, "foreign");
    const QString question
        = run.answering(QMessageBox::No, [&] { QVERIFY(!run.refusal("F7").isEmpty()); });
    QVERIFY(question.contains("foreign"));
    run.panel.setWorkDir(QFileInfo(m_folder.path("uart.oxa")).path()); // what is open
    QVERIFY(run.refusal("F7").contains("it contains, or is in"));

    run.panel.setWorkDir(m_folder.path("foreign"));
    run.core().expressions = QStringList {"M0 &&\nM1"};
    for (const char* key : {"F7", "F8"}) { // without a question
        const QString text = run.refusal(key);
        QVERIFY2(text.contains("Nothing was generated"), qPrintable(text));
        QVERIFY(run.log().startsWith("core 0, expression 0: "));
    }
    QCOMPARE(bytesOf(m_folder.path("foreign/thesis.txt")), QByteArray("precious"));
    QCOMPARE(QDir(m_folder.path("foreign")).count(), 3u);
}

void TestEditorBuild::whatCannotBeBuiltIsNot()
{
    Run run(m_folder, "empty");
    run.part.setKey({});
    QVERIFY(run.refusal("F7").contains("part"));
    run.part.setKey(kPart);
    run.panel.setWorkDir({});
    QVERIFY(run.refusal("F7").contains("work directory"));
    run.panel.setWorkDir(m_folder.path("empty"));

    run.core().sampleClock = "clk`define";
    run.core().moduleName = QString("m") + QChar(0x202e);
    for (const char* key : {"F7", "F8"}) {
        const QString text = run.refusal(key);
        QVERIFY2(text.contains("correct the signal names"), qPrintable(text));
        QVERIFY(text.contains("\"clk`define\" contains a backquote"));
    }
    // Where a name is not edited, invisible characters are shown as escapes.
    run.window.findChild<CoreList*>()->refresh();
    const QString cores = textsIn(*run.window.findChild<CoreList*>()->list());
    QVERIFY2(cores.contains("m\\u202e"), qPrintable(cores));

    run.press("Remove the core");
    QVERIFY(run.refusal("F7").contains("Nothing was generated"));
    QVERIFY(!QFile::exists(m_folder.path("empty")));
}

void TestEditorBuild::synthesisIsStopped()
{
    Run run(m_folder, "stopped");
    run.keys("Ctrl+9"); // which covers the panel
    run.keys("F8");
    QVERIFY(run.panel.isVisible());
    auto* progress = run.panel.findChild<QProgressBar*>();
    QTRY_VERIFY_WITH_TIMEOUT(progress->value() > 0 || !run.panel.isRunning(), kPatience);
    QVERIFY(run.panel.isRunning());
    run.enter("Module:", "usable"); // meanwhile
    QCOMPARE(run.core().moduleName, QString("usable"));
    run.press("Stop");
    run.finish();
    QVERIFY2(run.state().contains("Stopped"), qPrintable(run.state()));
    QCOMPARE(run.window.statusBar()->currentMessage(), QString("Stopped"));
    QVERIFY(!QFile::exists(m_folder.path("stopped/qx_oxa_netlist.v")));
}

void TestEditorBuild::failuresLeadToTheirFile()
{
    Run run(m_folder, "failed");
    const QString engine = writeProgram(m_folder.path("yosys"),
        "echo '" + m_folder.path("failed/qx_oxa_top.v").toUtf8()
            + ":3: ERROR: syntax error'\nexit 1\n");
    qputenv("OXA_SYNTHESIS_ENGINE", engine.toUtf8());
    run.runs("F8", "Failed");
    qunsetenv("OXA_SYNTHESIS_ENGINE");
    QListWidget& log = *run.panel.log();
    const QListWidgetItem* line = log.findItems(":3: ERROR", Qt::MatchContains).value(0);
    QVERIFY2(line, qPrintable(run.log()));
    log.setCurrentRow(log.row(line));
    QTest::keyClick(&log, Qt::Key_Return);
    auto* text = run.panel.findChild<QPlainTextEdit*>();
    QVERIFY(text);
    QCOMPARE(text->textCursor().blockNumber() + 1, 3);
}

void TestEditorBuild::closingStopsARun()
{
    Run run(m_folder, "closed");
    run.keys("F8");
    const QString question = run.answering(QMessageBox::Yes, [&] { run.window.close(); });
    QVERIFY(question.contains("run"));
    QVERIFY(!run.window.isVisible());
}

QTEST_MAIN(TestEditorBuild)
#include "test_editor_build.moc"
