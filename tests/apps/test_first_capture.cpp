// SPDX-License-Identifier: Apache-2.0
#include "support/files.h"
#include "support/processes.h"

#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A command of the page, and what it prints.
struct Step {
    QString command;
    QRegularExpression output;
};

// What the page shows as a pattern: "..." stands for any lines, and how long something took is no
// part of it.
QRegularExpression patternOf(const QString& shown)
{
    QString pattern = QRegularExpression::escape(shown).replace("\\\n", "\n");
    pattern.replace("\\.\\.\\.\n", "(.*\n)*?");
    static const QRegularExpression seconds("\\d+\\\\\\.\\d\\\\ s\n");
    return QRegularExpression("\\A" + pattern.replace(seconds, "\\d+\\.\\d s\n"));
}

// The steps are in those blocks between lines of three backquotes that begin with a command, which
// has "$ " in front.
QList<Step> stepsOf(const QString& page)
{
    static const QRegularExpression blocks("(?s)```\\n(\\$ .*?)```");
    QList<Step> steps;
    for (auto block = blocks.globalMatch(page); block.hasNext();) {
        const QStringList commands = ('\n' + block.next().captured(1)).split("\n$ ").mid(1);
        for (const QString& command : commands) {
            const QString shown = command.section('\n', 1);
            const bool last = shown.endsWith('\n') || shown.isEmpty();
            steps += Step {command.section('\n', 0, 0), patternOf(last ? shown : shown + '\n')};
        }
    }
    return steps;
}

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

}

// What docs/first-capture.md says, command by command, the README, which shows the same example,
// docs/co-simulation.md, docs/on-a-board.md, and pages of boards.
class TestFirstCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePages();

private:
    void run(Service& service, const Step& step);
    void run(const QList<Step>& steps);
    void leaves(const QString& name, const QByteArray& content);
    QString here(QString text) const;
    QString there(QString text);

    const QTemporaryDir m_directory;
    // Another program may use the ports of the pages.
    const QString m_jtag = QString::number(freePort());
    const QString m_tcl = QString::number(freePort());
    QString m_serial; // the device of a target
};

// A command as it works in a build tree, beside other tests.
QString TestFirstCapture::here(QString command) const
{
    command.replace("/usr/local", OXA_BINARY_DIR);
    command.replace("tcp:9823", "tcp:" + m_jtag);
    command.replace("/tmp/uart", m_directory.filePath("uart"));
    command.replace("/dev/pts/3", m_serial);
    if (command.contains("--link uart") || command.contains("--serial"))
        return command;
    command.replace("oxa target", "oxa target --port " + m_jtag);
    command.replace("openocd -f",
        QString("openocd -c \"set OXA_PORT %1\" -c \"tcl_port %2\" -f").arg(m_jtag, m_tcl));
    command.replace("oxa probe", "oxa probe --openocd :" + m_tcl);
    return command.replace("oxa capture", "oxa capture --openocd :" + m_tcl);
}

// What it prints, as it is on the page.
QString TestFirstCapture::there(QString output)
{
    static const QRegularExpression device("/dev/pts/\\d+");
    if (const auto match = device.match(output); match.hasMatch())
        m_serial = match.captured();
    output.replace(device, "/dev/pts/3");
    output.replace(QString("-c \"set OXA_PORT %1\" ").arg(m_jtag), "");
    output.replace(m_directory.filePath("uart"), "/tmp/uart");
    output.replace("port " + m_jtag, "port 9823").replace("port " + m_tcl, "port 6666");
    return output.replace(OXA_BINARY_DIR, "/usr/local");
}

void TestFirstCapture::run(Service& service, const Step& step)
{
    const bool stays = step.command.endsWith(" &");
    service.setWorkingDirectory(m_directory.path());
    service.start("bash",
        {"-c",
            "PATH=" OXA_BINARY_DIR "/bin:$PATH; exec "
                + here(stays ? step.command.chopped(2) : step.command)});
    const QDeadlineTimer deadline(kPatience);
    QString said;
    bool over = false;
    QRegularExpressionMatch match;
    do {
        over = service.waitForFinished(50);
        said = there(service.said());
        match = step.output.match(said);
    } while (!over && !(stays && match.hasMatch()) && !deadline.hasExpired());
    QVERIFY2(over != stays && match.hasMatch(), qPrintable(step.command + '\n' + said));
    QVERIFY2(stays || match.capturedEnd() == said.size(), qPrintable(said));
}

void TestFirstCapture::run(const QList<Step>& steps)
{
    std::vector<std::unique_ptr<Service>> services; // which end with the page
    for (const Step& step : steps) {
        services.push_back(std::make_unique<Service>());
        run(*services.back(), step);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestFirstCapture::leaves(const QString& name, const QByteArray& content)
{
    QVERIFY(bytesOf(m_directory.filePath(name)).contains(content));
    QVERIFY(QFile::remove(m_directory.filePath(name)));
}

void TestFirstCapture::thePages()
{
    QVERIFY(QFile::link(OXA_SOURCE_DIR "/examples", m_directory.filePath("examples")));
    const auto page = [](const char* name) {
        return stepsOf(QString::fromUtf8(bytesOf(OXA_SOURCE_DIR + QString(name))));
    };
    const QList<Step> steps = page("/docs/first-capture.md");
    QVERIFY(steps.size() >= 5);
    const QList<Step> more = page("/README.md");
    QVERIFY(more.last().command.startsWith("oxa simulate"));
    run(steps + more);
    leaves("captured.vcd", "$enddefinitions $end");
    run(page("/docs/tutorial.md"));
    leaves("captured.csv", "\n0,0,32,1,");
    run(page("/docs/boards/ice40.md"));
    run(page("/docs/on-a-board.md"));
    leaves("captured.vcd", "$enddefinitions $end");
    leaves("counter.oxa", "counter/noise");
    run(page("/docs/boards/generic.md"));
    const QList<Step> together = page("/docs/co-simulation.md");
    QVERIFY(together.last().command.startsWith("oxa capture"));
    run(together);
    leaves("captured.vcd", "$enddefinitions $end");
}

QTEST_GUILESS_MAIN(TestFirstCapture)
#include "test_first_capture.moc"
