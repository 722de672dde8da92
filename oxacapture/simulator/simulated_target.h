// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_SIMULATED_TARGET_H
#define OXACAPTURE_SIMULATOR_SIMULATED_TARGET_H

#include "oxacapture/target/remote_bitbang_link.h"
#include "oxautils/generate/name_sums.h"
#include "oxautils/generate/oxa_arg.h"

#include <QProcess>
#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <thread>

namespace OXA_CAPTURE {

class ProcessPatience;
class SerialPads;
class Stimulus;
struct CorePlan;

/// Where the files that a simulation needs are installed.
struct SimulatorDirs {
    QString models; ///< of the pads and the JTAG port
    QString cells; ///< of netlists
    QString plugin; ///< of what plays the waveform in the simulators
    QString uart = {}; ///< of the UART link; not needed without one
};

/// The simulators that can run an analyzer.
enum class Simulator {
    Auto, ///< Verilator for long stimuli when it is installed, else Icarus
    Icarus,
    Verilator,
};

/// A generated analyzer in a simulator: a waveform drives its ports or a design in its bench, and a
/// socket its JTAG pads.
///
/// Simulation time advances only in `play` and, without a bench, when the pads are driven. It ends
/// with the object.
class OXACAPTURE_EXPORT SimulatedTarget {
public:
    /// What it is built from.
    struct Design {
        /// Of `cores`, generated below the directory `workDir`, which takes all other files.
        Design(const SimulatorDirs& dirs, const OXA::OxaArg& arg, const QString& workDir,
            const std::vector<CorePlan>& cores);

        SimulatorDirs dirs; ///< of the installation
        OXA::OxaArg arg; ///< of the generation, into its own work directory
        QList<OXA::NameSums> names; ///< sums of names of its cores; clocks in `arg` may differ
        QString netlist; ///< used instead of the generated Verilog; may be empty
        QStringList bench; ///< arguments of iverilog for a design with its own bench; may be empty
        QString workDir; ///< for all files but the generated ones
        bool overUart = false; ///< its link is a UART, not JTAG
    };

    SimulatedTarget();
    ~SimulatedTarget();

    /// Called during a wait for the simulator; when it returns false, the call fails.
    void setGoesOn(const std::function<bool()>& goesOn);

    /// Generates and compiles with Icarus, with the module oxa_testbench of the text `testbench`;
    /// stops, without an error, when `goesOn` returns false.
    bool build(
        const Design& design, const QByteArray& testbench, const std::function<bool()>& goesOn);
    /// The same with Verilator, and with C++ text `frame` around the module. Not for netlists,
    /// whose unknown values Verilator does not have, and for benches.
    bool buildVerilated(const Design& design, const QByteArray& testbench, const QByteArray& frame,
        const std::function<bool()>& goesOn);

    /// What `play` plays; not for a bench.
    void setStimulus(std::unique_ptr<Stimulus> stimulus);

    /// Starts the simulator, and connects to the pads.
    bool start();

    /// The same, but other programs connect to the pads at `port`; 0 takes any free port.
    bool serve(int port);
    int port() const { return m_port; } ///< that `serve` took

    /// Starts the simulator, and a pseudo-terminal for programs that connect to the UART link.
    bool serveSerial();
    /// Its device, such as "/dev/pts/3".
    QString serialDevice() const;

    /// Plays the next `steps` steps, which are a bench's next moments in which something happens;
    /// for a bench at most as many, until a net that was looked at changes.
    bool play(qint64 steps);
    /// Goes back to the first step of the stimulus.
    void rewind();
    /// The levels of a net.
    enum Level {
        Low,
        High,
        HighAgain, ///< high, and it was low since the previous `look`
    };
    /// The logic levels of nets of the design, by their hierarchical names.
    bool look(const QStringList& names, std::vector<Level>& levels);

    /// The lines that were printed in the simulation since the previous call.
    QString printed();

    JtagLink& jtag() { return m_jtag; } ///< drives the pads after `start`

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    bool fail(const QString& error);
    bool generate(const Design& design, const QByteArray& testbench, QStringList& sources);
    bool connectTo(const QString& name, const std::function<bool(const QString&)>& connect);
    bool run(const QString& jtag);
    bool order(const QByteArray& bytes, QByteArray& answer);
    bool mayAnswer(int looks);
    QString lastWords();
    QString log() const;

    QString m_workDir;
    QString m_plugin;
    QStringList m_options; // of the plugin
    QTemporaryDir m_sockets;
    QProcess m_simulator;
    std::unique_ptr<ProcessPatience> m_patience; // with m_simulator
    RemoteBitbangLink m_jtag;
    StreamSocket m_control;
    bool m_hasBench = false;
    bool m_isVerilated = false;
    std::unique_ptr<Stimulus> m_stimulus; // none with a bench
    int m_port = 0;
    qint64 m_printed = 0; // what `printed` has returned of the log
    std::unique_ptr<SerialPads> m_serial;
    std::atomic<bool> m_servesSerial {false};
    std::thread m_serialThread;
    std::function<bool()> m_goesOn;
    QString m_error;
};

}

#endif
