// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_SIMULATOR_STIMULUS_H
#define OXACAPTURE_SIMULATOR_STIMULUS_H

#include "oxacapture/trigger/core_plan.h"
#include "oxacapture/waveform/waveform_sampler.h"

#include <QByteArray>
#include <QStringList>

namespace OXA_CAPTURE {

/// The ports of a generated wrapper, as a simulation drives them.
struct StimulusPorts {
    QStringList values; ///< data and trigger signals, the first the most significant
    QStringList clocks; ///< sample clocks, the first the least significant
};

/// The module that connects the wrapper qx_oxa to the ports and to the target's clients. Its clocks
/// are unknown until their first edge: an initial logic level would be an edge for a core that is
/// armed from power-up on.
QByteArray testbench(const StimulusPorts& ports);

/// The same module for Verilator: it has ports for what $oxa_target gets, and bit i of its output
/// `looked` has the level of net `looked[i]`.
QByteArray verilatedTestbench(const StimulusPorts& ports, const QStringList& looked);

/// C++ that makes this module, compiled by Verilator, a library for the program oxa_verilated.
QByteArray verilatedFrame(const QStringList& looked);

/// The same module without ports, around `analyzer`: an instance u_oxa of qx_oxa and what it needs
/// beside the pads, which are nets of this module under the names of its ports.
QByteArray testbench(const QByteArray& analyzer);

/// The steps of a waveform: before every change of clocks the values that the cores sample at it.
/// Clocks are in the waveform's order. Before the waveform, there are `leadIn` periods of all
/// clocks, after it `leadOut`. Unknown values are 0.
class Stimulus {
public:
    /// The cores sample `waveform`, which has to outlive this.
    Stimulus(const StimulusPorts& ports, int leadIn, int leadOut, const SampledWaveform& waveform,
        const std::vector<CorePlan>& cores);

    /// The clocks' levels before their first edges, the first clock's first, as "10".
    QByteArray clocksBefore() const;

    /// How many there are, with two for each of the periods before and after the waveform.
    qint64 steps() const { return m_steps; }

    /// The next steps, of which there are at least `count`, as the simulator takes them
    /// (docs/simulated-target.md).
    QByteArray next(qint64 count);
    void rewind(); ///< to the first step

private:
    /// Where a bit that a core samples is in the ports' values.
    struct CoreBit {
        int word; ///< of a sample's row
        int shift; ///< in that word
        int bit; ///< of the ports' values
    };
    /// A core, and how it samples.
    struct Core {
        const SampleTable* samples = nullptr;
        int clock = 0;
        bool fallingEdge = false;
        std::vector<CoreBit> bits;
        qint64 nextSample = 0;
    };

    void showSample(const Core& core, qint64 sample);
    void toggleClocks();
    void playEdges();
    void append(QByteArray& steps);

    const std::vector<ClockEdge>& m_edges;
    const qint64 m_leadIn; // steps
    qint64 m_steps;
    std::vector<Core> m_cores;
    std::vector<quint32> m_values;
    std::vector<quint32> m_shownValues; // of the step before; empty before the first
    std::vector<quint32> m_before; // the clocks' levels before their first edges
    std::vector<quint32> m_clocks;
    std::vector<quint32> m_unknown; // clocks before their first edges
    int m_clockCount;
    size_t m_edge = 0;
    qint64 m_step = 0;
};

}

#endif
