// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/design_script.h"

#include "files/fail.h"
#include "oxautils/model/shown_text.h"

#include "engine/engine_process.h"
#include "engine/engine_run.h"
#include "engine/engine_words.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace OXA {

namespace {

constexpr char kCommands[] = "commands.tcl";
constexpr char kLog[] = "log.txt";
constexpr char kFromVhdl[] = "vhdl.v";
constexpr int kVhdlSeconds = 600;

bool endsIn(const QString& path, std::initializer_list<const char*> endings)
{
    return std::any_of(endings.begin(), endings.end(), [&](const char* ending) {
        return path.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    });
}

bool canBeRead(const QStringList& files, QString* error)
{
    for (const QString& path : files) {
        QFile file(path);
        if (!DesignScript::isReadable(path, error))
            return false;
        if (QFileInfo(path).isDir())
            return fail(error, shownText(path) + ": is a directory, not a source file");
        if (!file.open(QIODevice::ReadOnly))
            return fail(
                error, QString("%1: cannot be read: %2").arg(shownText(path), file.errorString()));
    }
    return true;
}

}

DesignScript::DesignScript(const DesignHooks& hooks)
    : m_hooks(hooks)
    , m_directory(QDir::tempPath() + "/oxa-design-XXXXXX")
{
}

bool DesignScript::isValid(QString* error) const
{
    return m_directory.isValid()
        || fail(error,
            QString("cannot create a directory for Yosys: %1").arg(m_directory.errorString()));
}

// Yosys quotes file names in the text that it parses.
bool DesignScript::isReadable(const QString& path, QString* error)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    const bool breaksQuotes = std::any_of(whole.begin(), whole.end(),
        [](QChar c) { return c == '"' || c == '\\' || c.category() == QChar::Other_Control; });
    return !breaksQuotes
        || fail(error,
            shownText(path)
                + ": Yosys cannot read a file with a quote, a backslash or a control character in "
                  "its path");
}

QString DesignScript::fileWord(const QString& path)
{
    return OXA_ENGINE::withoutWildcards(QFileInfo(path).absoluteFilePath());
}

void DesignScript::add(const char* command, const QStringList& words)
{
    m_commands += QStringList(command) + words;
}

void DesignScript::addStage(int percent, const char* text)
{
    add("log", {QString("@stage %1 %2").arg(QString::number(percent), text)});
}

bool DesignScript::addSources(const DesignSources& sources, QString* error)
{
    if (sources.files.isEmpty())
        return fail(error, "the design has no sources");
    if (!canBeRead(sources.files, error))
        return false;
    for (const QString& directory : sources.includeDirs) {
        if (!isReadable(directory, error))
            return false;
    }
    QStringList verilog;
    QStringList vhdl;
    QStringList json;
    bool systemVerilog = false;
    for (const QString& file : sources.files) {
        (endsIn(file, {".json"}) ? json : endsIn(file, {".vhd", ".vhdl"}) ? vhdl : verilog) += file;
        systemVerilog |= endsIn(file, {".sv", ".svh"});
    }
    if (!vhdl.isEmpty()) {
        if (!translate(vhdl, sources.top, error))
            return false;
        verilog.prepend(path(kFromVhdl));
    }
    addStage(0, "reading the design");
    for (const QString& file : json)
        add("read_json", {fileWord(file)});
    if (!verilog.isEmpty()) {
        QStringList words;
        if (systemVerilog)
            words += "-sv";
        for (const QString& define : sources.defines)
            words += "-D" + define;
        for (const QString& directory : sources.includeDirs)
            words += "-I" + QFileInfo(directory).absoluteFilePath();
        for (const QString& file : verilog)
            words += fileWord(file);
        add("read_verilog", words);
    }
    return true;
}

void DesignScript::addHierarchy(const DesignSources& sources)
{
    QStringList words
        = sources.top.isEmpty() ? QStringList("-auto-top") : QStringList {"-top", sources.top};
    for (const QString& parameter : sources.parameters)
        words += {"-chparam", parameter.section('=', 0, 0), parameter.section('=', 1)};
    addStage(20, "elaborating the design");
    add("hierarchy", words);
    add("proc");
}

void DesignScript::addUnkeeping()
{
    add("setattr", {"-mod", "-unset", "keep_hierarchy", "*"});
    add("setattr", {"-unset", "keep_hierarchy", "*"});
}

// The newest VHDL standard, with names as in the source.
bool DesignScript::translate(const QStringList& vhdl, const QString& top, QString* error)
{
    if (top.isEmpty())
        return fail(error, "a VHDL design needs the name of its top");
    OXA_ENGINE::EngineCommand command;
    command.program = "ghdl";
    command.name = "GHDL, which reads VHDL,";
    command.arguments = QStringList {"--synth", "--std=08", "--out=verilog"};
    for (const QString& file : vhdl)
        command.arguments += QFileInfo(file).absoluteFilePath();
    command.arguments += {"-e", top};
    command.directory = m_directory.path();
    command.environment = QProcessEnvironment::systemEnvironment();
    command.outputFile = path(kFromVhdl);
    command.timeLimit = kVhdlSeconds;
    QStringList lines;
    const OXA_ENGINE::EngineResult result = OXA_ENGINE::runEngine(
        command, [this] { return m_hooks.stopAsked && m_hooks.stopAsked(); },
        [&](const QByteArray& line) { lines += shownText(QString::fromUtf8(line)); });
    if (result.end == OXA_ENGINE::EngineEnd::Done)
        return true;
    return fail(error, (QStringList(result.problem) + lines.mid(0, 20)).join('\n'));
}

bool DesignScript::run(QString* error)
{
    QByteArray commands;
    for (const QStringList& command : m_commands)
        commands += "yosys" + OXA_ENGINE::tclWords(command) + '\n';
    QFile file(path(kCommands));
    if (!file.open(QIODevice::WriteOnly) || file.write(commands) != commands.size()
        || !file.flush())
        return fail(error,
            QString("%1: cannot be written: %2")
                .arg(shownText(file.fileName()), file.errorString()));
    OXA_ENGINE::EngineRun run;
    run.directory = QDir::currentPath();
    run.script = file.fileName();
    run.temporary = m_directory.path();
    run.logFile = path(kLog);
    run.stopAsked = [this] { return m_hooks.stopAsked && m_hooks.stopAsked(); };
    run.progress = [this](const QString& text, int percent) {
        if (m_hooks.progress)
            m_hooks.progress(text, percent);
    };
    m_warnings.clear();
    if (OXA_ENGINE::runScript(run, m_warnings))
        return true;
    QStringList errors;
    for (const QString& line : m_warnings) {
        if (!line.contains("warning: "))
            errors += line;
    }
    return fail(error, errors.join('\n'));
}

// Words end at spaces, and quotes do not join a path in all versions.
bool DesignScript::plainText(QByteArray& text, QString* error) const
{
    static const QRegularExpression special(R"([^\w./:,+=@%*$\[\]\\-])");
    for (const QStringList& command : m_commands) {
        if (command.first() == "log")
            continue;
        for (const QString& word : command) {
            if (special.match(word).hasMatch())
                return fail(error,
                    QString("\"%1\" cannot be in a script of Yosys: only letters, digits and "
                            "./:,+=@%_- can")
                        .arg(shownText(word)));
        }
        text += command.join(' ').toUtf8() + '\n';
    }
    return true;
}

}
