#ifndef TESTS_IP_CORE_BENCH_H
#define TESTS_IP_CORE_BENCH_H

#include "oxautils/generate/oxa_arg.h"

#include <QByteArrayList>
#include <QStringList>
#include <QTemporaryDir>

/// What a run of the simulator gave.
struct BenchRun {
    QByteArray tdo; ///< a character for each TCK cycle of the script
    QString error; ///< of the compiler or the simulator; else empty
};

/// A generated analyzer in Icarus, driven at its pads by a script of characters:
///
///     0 1   a TCK cycle with TMS low and this TDI
///     a b   a TCK cycle with TMS high and TDI 0, 1
///     n     the next sample: its signals, then an active edge of every sample clock
///     e     an active edge of every sample clock, the signals as they are
class CoreBench {
public:
    /// The signals a sample has, most significant first, and the clocks that take it.
    QStringList signalNames;
    QStringList risingClocks;
    QStringList fallingClocks;
    OXA::OxaArg arg; ///< device, package; the rest is the bench's

    CoreBench();
    QString path(const QString& name) const { return m_dir.filePath(name); }

    /// Generates what the file at path("test.oxa") configures, and compiles it. An error or
    /// nothing.
    QString build();
    /// The same behind the sockets of the simulated target, as path("target.vvp"); a file `netlist`
    /// takes the place of the Verilog. Steps of its stimulus are samples as numbers and "1", then
    /// "- 0".
    QString buildTarget(const QString& netlist);
    /// Runs `script` with `samples`, texts of a character (0, 1, x) a signal.
    BenchRun run(const QByteArray& script, const QByteArrayList& samples) const;

private:
    QByteArray benchSource(const QByteArray& tail) const;
    bool generate(QStringList& design) const;
    QString compile(const QString& output, const QStringList& design) const;

    QTemporaryDir m_dir;
};

#endif
