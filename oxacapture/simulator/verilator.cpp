// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/simulator/verilator.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxacapture/simulator/icarus.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace OXA_CAPTURE {

namespace {

// The perl script of that name would pass the arguments to a shell.
constexpr char kVerilator[] = "verilator_bin";
constexpr char kCompiler[] = "g++";
constexpr char kRuntime[] = "#include \"verilated.cpp\"\n#include \"verilated_threads.cpp\"\n";
constexpr int kMostKept = 30; // objects of earlier runs
constexpr qint64 kShownLog = 2000; // characters

/// What a program prints at once, such as its version.
QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

/// A source that is compiled beside others.
struct Object {
    QString name; ///< of the source and of the object, without ".cpp" and ".o"
    QString kept; ///< the object of an earlier run; empty when there is no place for it
    bool isKept = false;
    QProcess compiler;
};

class Compilation {
public:
    Compilation(
        const QString& workDir, const std::function<bool()>& goesOn, const QString& verilatorRoot)
        : m_workDir(workDir)
        , m_goesOn(goesOn)
        , m_include(verilatorRoot + "/include")
        , m_versions(outputOf(kVerilator, {"--version"}) + outputOf(kCompiler, {"--version"}))
    {
    }

    bool run(const QStringList& arguments, const QByteArray& frame, QString* error)
    {
        QDir(m_workDir).mkpath("verilated");
        Object runtime; // Verilator's library, which takes longer than most designs
        Object design;
        runtime.name = "runtime";
        design.name = "design";
        const bool ok = begin(runtime, kRuntime, {}, "-O0", error) && translate(arguments, error)
            && begin(design, designText(frame), translatedText(), "-O2", error)
            && ends(design, error) && ends(runtime, error) && link(error);
        for (Object* object : {&runtime, &design}) {
            if (object->compiler.state() != QProcess::NotRunning) {
                object->compiler.kill();
                object->compiler.waitForFinished(-1);
            }
        }
        return ok;
    }

private:
    // Where the object of a source is kept; `included` is the text of what the source includes, as
    // far as it does not belong to Verilator.
    QString keptPath(const QByteArray& text, const QByteArray& included) const
    {
        const QString cache
            = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + "/oxautils";
        if (!QDir().mkpath(cache))
            return {};
        const QByteArray all
            = (m_versions + compilerArguments().join(' ')).toUtf8() + text + included;
        return cache + "/verilated-"
            + QString::fromLatin1(QCryptographicHash::hash(all, QCryptographicHash::Sha1).toHex())
            + ".o";
    }

    // Other runs may do the same. The oldest ones make room.
    void keep(const QString& object, const QString& path) const
    {
        const QString own = path + '.' + QString::number(QCoreApplication::applicationPid());
        if (QFile::copy(object, own) && !QFile::rename(own, path))
            QFile::remove(own);
        const QFileInfoList all
            = QFileInfo(path).dir().entryInfoList({"verilated-*"}, QDir::Files, QDir::Time);
        for (const QFileInfo& old : all.mid(kMostKept))
            QFile::remove(old.filePath());
    }

    QStringList compilerArguments() const
    {
        return {"-std=gnu++17", "-fPIC", "-fvisibility=hidden", "-w", "-faligned-new",
            "-DVM_COVERAGE=0", "-DVM_SC=0", "-DVM_TRACE=0", "-DVM_TRACE_FST=0", "-DVM_TRACE_VCD=0",
            "-I" + m_include, "-I" + m_include + "/vltstd", "-Iverilated"};
    }

    bool begin(Object& object, const QByteArray& text, const QByteArray& included,
        const QString& optimization, QString* error)
    {
        object.kept = keptPath(text, included);
        const QString path = m_workDir + '/' + object.name;
        object.isKept = QFile::copy(object.kept, path + ".o");
        if (object.isKept) {
            QFile used(object.kept);
            if (used.open(QIODevice::ReadWrite))
                used.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
            return true;
        }
        return OXA_FILES::writeFile(path + ".cpp", text, error)
            && start(object.compiler, object.name, kCompiler,
                compilerArguments()
                    + QStringList {optimization, "-c", "-o", object.name + ".o",
                        object.name + ".cpp"},
                error);
    }

    bool ends(Object& object, QString* error) const
    {
        if (object.isKept)
            return true;
        if (!ends(object.compiler, error))
            return false;
        if (!object.kept.isEmpty())
            keep(m_workDir + '/' + object.name + ".o", object.kept);
        return true;
    }

    // Verilator writes the names of its sources into the C++, which should not depend on the
    // directory.
    bool translate(QStringList arguments, QString* error)
    {
        arguments.replaceInStrings(m_workDir + '/', QString());
        return execute("verilator", kVerilator,
            QStringList {"--cc", "--prefix", kVerilatedPrefix, "--top-module", "oxa_testbench",
                "--Mdir", "verilated", "-O3", "-Wno-fatal", "-Wno-lint", "-Wno-style", "--x-assign",
                "fast", "--x-initial", "fast"}
                + arguments,
            error);
    }

    // One source compiles faster than many.
    QByteArray designText(const QByteArray& frame) const
    {
        QByteArray text = frame;
        const QStringList sources = QDir(m_workDir + "/verilated").entryList({"*.cpp"});
        for (const QString& source : sources)
            text += "#include \"" + source.toUtf8() + "\"\n";
        return text;
    }

    QByteArray translatedText() const
    {
        QByteArray text;
        const QFileInfoList sources
            = QDir(m_workDir + "/verilated").entryInfoList({"*.cpp", "*.h"});
        for (const QFileInfo& source : sources) {
            QFile file(source.filePath());
            file.open(QIODevice::ReadOnly);
            text += file.readAll();
        }
        return text;
    }

    bool link(QString* error)
    {
        return execute("link", kCompiler,
            {"-shared", "-Wl,-z,defs", "-o", "design.so", "design.o", "runtime.o", "-pthread"},
            error);
    }

    bool start(QProcess& process, const QString& name, const QString& program,
        const QStringList& arguments, QString* error)
    {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setObjectName(logOf(name)); // its own: several run at the same time
        process.setStandardOutputFile(process.objectName());
        workIn(m_workDir, process);
        process.start(program, arguments);
        return process.waitForStarted(-1)
            || OXA::fail(error, program + " does not start: " + process.errorString());
    }

    bool ends(QProcess& process, QString* error) const
    {
        if (!finishes(process, m_goesOn))
            return OXA::fail(error, {});
        return (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
            || OXA::fail(error, process.program() + " fails:\n" + firstWords(process.objectName()));
    }

    bool execute(
        const QString& name, const QString& program, const QStringList& arguments, QString* error)
    {
        QProcess process;
        return start(process, name, program, arguments, error) && ends(process, error);
    }

    QString logOf(const QString& name) const { return m_workDir + '/' + name + ".log"; }

    static QString firstWords(const QString& log)
    {
        QFile file(log);
        file.open(QIODevice::ReadOnly);
        return QString::fromLocal8Bit(file.read(kShownLog)).trimmed();
    }

    const QString m_workDir;
    const std::function<bool()>& m_goesOn;
    const QString m_include;
    const QString m_versions;
};

}

bool hasVerilator()
{
    return !QStandardPaths::findExecutable(kVerilator).isEmpty()
        && !QStandardPaths::findExecutable(kCompiler).isEmpty();
}

bool compileVerilated(const QStringList& arguments, const QByteArray& frame, const QString& workDir,
    const std::function<bool()>& goesOn, QString* error)
{
    if (!hasVerilator())
        return OXA::fail(error,
            QString("Verilator needs the programs %1 and %2 (packages verilator and g++)")
                .arg(QLatin1String(kVerilator), QLatin1String(kCompiler)));
    return Compilation(workDir, goesOn, outputOf(kVerilator, {"--getenv", "VERILATOR_ROOT"}))
        .run(arguments, frame, error);
}

}
