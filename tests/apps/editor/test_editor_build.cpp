#include "window_driver.h"

#include "oxa-editor/build_panel.h"
#include "oxa-editor/file_viewer.h"
#include "oxa-editor/part_choice.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>

namespace {

constexpr char kPart[] = "QX1N-9LV-QFN88-C6|QX1N-9";

}

class TestEditorBuild : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { BuildJob::installLog(); }
    void generates();
    void foreignFolderIsAskedFor();
    void needsAPartAndCores();
    void namesThatWouldBeCode();
    void whatCannotBeBuiltIsNot();
    void synthesisIsStopped();
    void failuresLeadToTheirFile();
    void netlistThatDoesNotFit();
    void closingStopsARun();
    void placesInMessages();

private:
    struct Run;

    TestFolder m_folder;
};

/// A script that stands in for the synthesis engine.
class Engine {
public:
    Engine(const TestFolder& folder, const QByteArray& script)
    {
        const QString path = writeFile(folder.path("yosys"), "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
        qputenv("OXA_SYNTHESIS_ENGINE", path.toUtf8());
    }
    ~Engine() { qunsetenv("OXA_SYNTHESIS_ENGINE"); }
};

/// A window with a configuration, a part and a work folder.
struct TestEditorBuild::Run : WindowDriver {
    BuildPanel& panel = *window.findChild<BuildPanel*>();

    Run(const TestFolder& folder, const QString& workDir)
        : WindowDriver(folder.example("uart.oxa"))
    {
        window.findChild<PartChoice*>()->setKey(kPart);
        panel.setWorkDir(folder.path(workDir));
    }

    QStringList log() const { return textsIn(*panel.log()).split('\n'); }
    QString stage() const { return labelsIn(panel); }
    bool says(const QString& text) const { return stage().contains(text); }
    void finish() { QTRY_VERIFY_WITH_TIMEOUT(!panel.isRunning(), kPatience); }
};

void TestEditorBuild::generates()
{
    Run run(m_folder, "generated");
    run.enter("Module:", "unsaved");
    run.keys("F7");
    QVERIFY(run.panel.isRunning());
    run.finish();
    QVERIFY2(run.says("Done"), qPrintable(run.stage()));
    QVERIFY(QFile::exists(m_folder.path("generated/qx_oxa_top.v")));
    QVERIFY(run.window.isWindowModified());
    run.press("Generate"); // into the same folder, without a question
    run.finish();
    QVERIFY(run.says("Done"));
}

void TestEditorBuild::foreignFolderIsAskedFor()
{
    QDir(m_folder.path(".")).mkdir("foreign");
    writeFile(m_folder.path("foreign/thesis.txt"), "precious");
    Run run(m_folder, "foreign");
    const QString question
        = WindowDriver::answering(QMessageBox::No, [&] { run.press("Generate"); });
    QVERIFY(question.contains("foreign"));
    QVERIFY(!run.panel.isRunning());
    QCOMPARE(bytesOf(m_folder.path("foreign/thesis.txt")), QByteArray("precious"));
    run.panel.setWorkDir(QFileInfo(m_folder.path("uart.oxa")).path()); // what is open
    run.press("Generate");
    QVERIFY(!run.panel.isRunning());
    QVERIFY2(run.says("it holds or lies in"), qPrintable(run.stage()));
}

void TestEditorBuild::needsAPartAndCores()
{
    Run run(m_folder, "empty");
    run.window.findChild<PartChoice*>()->setKey({});
    run.press("Generate");
    QVERIFY(!run.panel.isRunning());
    QVERIFY(run.says("part"));
    run.window.findChild<PartChoice*>()->setKey(kPart);
    run.panel.setWorkDir({});
    run.press("Generate");
    QVERIFY(run.says("work folder"));
    run.panel.setWorkDir(m_folder.path("empty"));
    run.press("Remove the core");
    run.press("Generate");
    run.finish();
    QVERIFY(run.says("Nothing was generated"));
}

void TestEditorBuild::namesThatWouldBeCode()
{
    Run run(m_folder, "hostile");
    QByteArray content = bytesOf(m_folder.example("uart.oxa"));
    content.replace("module_name=\"uart_tx\"", "module_name=\"m&#x202e;\"");
    content.replace("sample_clock=\"uart_tx/clk\"", "sample_clock=\"clk`define\"");
    run.window.open(writeFile(m_folder.path("hostile.oxa"), content));
    run.panel.setWorkDir(m_folder.path("hostile"));
    for (const char* button : {"Generate", "Synthesize"}) {
        run.press(button);
        QVERIFY(!run.panel.isRunning());
        QVERIFY2(run.says("correct the signal names"), qPrintable(run.stage()));
        QVERIFY(run.log().value(0).contains("\"clk`define\" holds a backquote"));
    }
    QVERIFY(!QFile::exists(m_folder.path("hostile")));
    // What does not show is shown, where a name is not edited.
    QStringList texts;
    for (const QListWidget* list : run.window.findChildren<QListWidget*>())
        texts += textsIn(*list);
    QVERIFY(!texts.filter("m\\u202e").isEmpty());
    QVERIFY(texts.filter(QChar(0x202e)).isEmpty());
}

void TestEditorBuild::whatCannotBeBuiltIsNot()
{
    QDir(m_folder.path(".")).mkdir("kept");
    writeFile(m_folder.path("kept/thesis.txt"), "precious");
    Run run(m_folder, "kept");
    run.core().expressions = QStringList {"M0 &&\nM1"};
    for (const char* key : {"F7", "F8"}) {
        run.keys(key); // without a question
        QVERIFY(!run.panel.isRunning());
        QVERIFY2(run.says("Nothing was generated"), qPrintable(run.stage()));
        QVERIFY(run.log().join(' ').startsWith("core 0, expression 0: "));
    }
    QCOMPARE(QDir(m_folder.path("kept")).count(), 3u);
}

void TestEditorBuild::synthesisIsStopped()
{
    Run run(m_folder, "stopped");
    run.keys("F8");
    auto* progress = run.panel.findChild<QProgressBar*>();
    QTRY_VERIFY_WITH_TIMEOUT(progress->value() > 0 || !run.panel.isRunning(), kPatience);
    QVERIFY(run.panel.isRunning());
    run.enter("Module:", "usable"); // meanwhile
    QCOMPARE(run.core().moduleName, QString("usable"));
    run.press("Stop");
    run.finish();
    QVERIFY2(run.says("Stopped"), qPrintable(run.stage()));
    QVERIFY(!QFile::exists(m_folder.path("stopped/qx_oxa_netlist.v")));
}

void TestEditorBuild::failuresLeadToTheirFile()
{
    Run run(m_folder, "failed");
    // An engine that finds fault with a file.
    const Engine engine(m_folder,
        "echo '" + m_folder.path("failed/qx_oxa_top.v").toUtf8()
            + ":3: ERROR: syntax error'\nexit 1\n");
    run.keys("F8");
    run.finish();
    QVERIFY2(run.says("Failed"), qPrintable(run.stage()));
    int row = -1;
    const QStringList log = run.log();
    for (int i = 0; i < log.size() && row < 0; ++i)
        row = placeIn(log.at(i), m_folder.path("failed")).line > 0 ? i : -1;
    QVERIFY2(row >= 0, qPrintable(log.join('\n')));
    run.panel.log()->setFocus();
    run.panel.log()->setCurrentRow(row);
    QTest::keyClick(run.panel.log(), Qt::Key_Return);
    auto* viewer = run.panel.findChild<FileViewer*>();
    QVERIFY(viewer);
    const auto* text = viewer->findChild<QPlainTextEdit*>();
    QCOMPARE(
        text->textCursor().blockNumber() + 1, placeIn(log.at(row), m_folder.path("failed")).line);
}

void TestEditorBuild::netlistThatDoesNotFit()
{
    Run run(m_folder, "large");
    const Engine engine(m_folder,
        "{ echo 'module qx_oxa;'; for i in $(seq 9999); do printf '  QX_LUT4 l (\\n  );\\n'; done;"
        " echo endmodule; } >netlist.v\n");
    run.keys("F8");
    run.finish();
    QVERIFY2(run.says("does not fit"), qPrintable(run.stage()));
    QVERIFY(run.log().value(0).startsWith("the netlist takes 9999 look-up tables, QX1N-9LV"));
}

void TestEditorBuild::closingStopsARun()
{
    Run run(m_folder, "closed");
    run.keys("F8");
    const QString question = WindowDriver::answering(QMessageBox::Yes, [&] { run.window.close(); });
    QVERIFY(question.contains("run"));
    QVERIFY(!run.window.isVisible());
}

void TestEditorBuild::placesInMessages()
{
    const QString path = writeFile(m_folder.path("a.v"), "module a;\n");
    const QString folder = m_folder.path(".");
    QCOMPARE(placeIn(path + ":12: syntax error", "/").line, 12);
    QCOMPARE(placeIn("error: a.v:3: oops", folder).line, 3);
    QCOMPARE(placeIn("read \"" + path + "\"", "/").path, path);
    QCOMPARE(placeIn("see b.v:3 and 1.0", folder).path, QString());
}

QTEST_MAIN(TestEditorBuild)
#include "test_editor_build.moc"
