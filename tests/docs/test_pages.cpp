// SPDX-License-Identifier: Apache-2.0
#include "support/files.h"
#include "support/processes.h"

#include <QDirIterator>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A command of a page, and what the page shows that it prints.
struct Step {
    QString command;
    QString shown;
};

QString textOf(const QString& page)
{
    return QString::fromUtf8(bytesOf(OXA_SOURCE_DIR "/" + page));
}

// Pages with commands, and those that README.md has to lead to.
QStringList pages()
{
    QStringList found {"README.md", "CONTRIBUTING.md"};
    for (const char* directory : {"docs", "examples"}) {
        QDirIterator files(QString(OXA_SOURCE_DIR "/") + directory, {"*.md"}, QDir::Files,
            QDirIterator::Subdirectories);
        while (files.hasNext())
            found += QDir(OXA_SOURCE_DIR).relativeFilePath(files.next());
    }
    return found;
}

// In the blocks of a page, a line with "$ " in front is a command, and the lines below are its
// output.
QList<Step> stepsOf(const QString& page)
{
    QList<Step> steps;
    bool inBlock = false;
    bool isOutput = false;
    for (const QString& line : textOf(page).split('\n')) {
        if (line.trimmed().startsWith("```")) {
            inBlock = !inBlock;
            isOutput = false;
        } else if (inBlock && line.trimmed().startsWith("$ ")) {
            steps += Step {line.section("$ ", 1), {}};
            isOutput = true;
        } else if (isOutput) {
            steps.last().shown += line + '\n';
        }
    }
    return steps;
}

// The line "..." stands for any lines, and a time in seconds at the end of a line for any time.
QString patternOf(const QString& shown)
{
    static const QRegularExpression seconds("\\d+\\\\\\.\\d\\\\ s\n");
    QString pattern = QRegularExpression::escape(shown).replace("\\\n", "\n");
    pattern.replace("\\.\\.\\.\n", "(.*\n)*?").replace(seconds, "\\d+\\.\\d s\n");
    return "\\A" + pattern;
}

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

// Runs the commands of a page one after the other, in a directory of their own with the examples.
// Those that end in " &" run until the page ends.
class PageRun {
public:
    PageRun() { QFile::link(OXA_SOURCE_DIR "/examples", m_directory.filePath("examples")); }
    void run(const Step& step);

private:
    QString here(QString command) const;
    QString there(QString output);

    const QTemporaryDir m_directory;
    // Another program may use the ports of the pages.
    const QString m_jtag = QString::number(freePort());
    const QString m_tcl = QString::number(freePort());
    QString m_serial; // the device of a target
    std::vector<std::unique_ptr<Service>> m_services;
};

// A command as it works in a build tree, beside other tests.
QString PageRun::here(QString command) const
{
    command.replace("/usr/local", OXA_BINARY_DIR);
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
QString PageRun::there(QString output)
{
    static const QRegularExpression device("/dev/pts/\\d+");
    static const QRegularExpression spaces(" +\n");
    if (const auto match = device.match(output); match.hasMatch())
        m_serial = match.captured();
    output.replace(device, "/dev/pts/3").replace(spaces, "\n");
    output.replace(QString("-c \"set OXA_PORT %1\" ").arg(m_jtag), "");
    output.replace("port " + m_jtag, "port 9823").replace("port " + m_tcl, "port 6666");
    return output.replace(OXA_BINARY_DIR, "/usr/local");
}

void PageRun::run(const Step& step)
{
    const bool stays = step.command.endsWith(" &");
    const QString command = stays ? "exec " + step.command.chopped(2) : step.command;
    m_services.push_back(std::make_unique<Service>());
    Service& service = *m_services.back();
    service.setWorkingDirectory(m_directory.path());
    service.start("bash", {"-c", "PATH=" OXA_BINARY_DIR "/bin:$PATH; " + here(command)});
    const QRegularExpression pattern(patternOf(step.shown) + (stays ? "" : "\\z"));
    const QDeadlineTimer deadline(kPatience);
    QString said;
    bool over = false;
    bool asShown = false;
    do {
        over = service.waitForFinished(20);
        said = there(service.said());
        asShown = pattern.match(said).hasMatch();
    } while (!over && !(stays && asShown) && !deadline.hasExpired());
    QVERIFY2(over != stays && asShown, qPrintable(step.command + '\n' + said));
}

// The parts of a page that links can name.
QStringList anchorsOf(const QString& page)
{
    static const QRegularExpression headings("\n#+ (.*)");
    static const QRegularExpression dropped("[^\\w -]");
    QStringList anchors;
    for (auto heading = headings.globalMatch(textOf(page)); heading.hasNext();)
        anchors += heading.next().captured(1).toLower().remove(dropped).replace(' ', '-');
    return anchors;
}

}

// The pages of the documentation: what their commands print, and where their links lead.
class TestPages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commands_data();
    void commands();
    void links();
};

void TestPages::commands_data()
{
    QTest::addColumn<QString>("page");
    for (const QString& page : pages()) {
        if (!stepsOf(page).isEmpty())
            QTest::newRow(qPrintable(page)) << page;
    }
}

void TestPages::commands()
{
    QFETCH(const QString, page);
    PageRun run;
    for (const Step& step : stepsOf(page)) {
        run.run(step);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestPages::links()
{
    static const QRegularExpression pattern("\\]\\(([^)#:]*)#?([^)#:]*)\\)");
    QStringList reached {"README.md"};
    for (int i = 0; i < int(reached.size()); ++i) {
        const QString page = reached.at(i);
        for (auto links = pattern.globalMatch(textOf(page)); links.hasNext();) {
            const QRegularExpressionMatch link = links.next();
            const QString path = link.captured(1).isEmpty()
                ? page
                : QDir::cleanPath(QFileInfo(page).path() + '/' + link.captured(1));
            const bool leads = QFile::exists(OXA_SOURCE_DIR "/" + path)
                && (link.captured(2).isEmpty() || anchorsOf(path).contains(link.captured(2)));
            QVERIFY2(leads, qPrintable(page + ": " + link.captured()));
            if (path.endsWith(".md") && !reached.contains(path))
                reached += path;
        }
    }
    for (const QString& page : pages())
        QVERIFY2(reached.contains(page), qPrintable("no link leads to " + page));
}

QTEST_GUILESS_MAIN(TestPages)
#include "test_pages.moc"
