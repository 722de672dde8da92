// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_SCAN_NOISE_H
#define TESTS_SUPPORT_SCAN_NOISE_H

#include "support/tap.h"

#include <QByteArray>

#include <random>

/// Inserts TCK cycles between the commands of a remote_bitbang client, which a test access port has
/// to accept: pauses in shifts; between scans, scans of other instructions, empty scans and
/// resets with the client's instruction loaded again; now and then a reset in the middle of a
/// shift, which spoils that scan. The client sees none of it but the spoiled scans.
class ScanNoise {
public:
    /// `er1` is the client's instruction, in a register of `irLength` bits.
    ScanNoise(unsigned seed, int irLength, unsigned er1)
        : m_random(seed)
        , m_irLength(irLength)
        , m_er1(er1)
    {
    }

    QByteArray among(const QByteArray& commands)
    {
        m_out.clear();
        for (const char command : commands) {
            const bool isPads = command >= '0' && command <= '7';
            if (isPads && command & 4 && !m_tck)
                rise(command & 2, command & 1);
            else
                m_out += command;
            if (isPads)
                m_tck = command & 4;
        }
        return m_out;
    }

    int pauses = 0, strangers = 0, resets = 0, spoiled = 0; ///< how many of each

private:
    bool once(unsigned in) { return m_random() / 16 % in == 0; }

    // The client's next rising edge, perhaps with others before it
    void rise(bool tms, bool tdi)
    {
        const bool shifts = m_state == ShiftDr || m_state == ShiftIr;
        if (m_state == TapIdle && tms && !once(4))
            disturb();
        if (m_state == ShiftDr && !tms && once(20000)) {
            ++spoiled;
            reset();
            clocks({1, 0, 0}); // to Shift-DR again, of another instruction
        }
        if (!shifts || tms || !once(50)) {
            clock(tms, tdi);
            return;
        }
        ++pauses;
        clock(true, tdi);
        for (clock(false, once(2)); !once(3);)
            clock(false, once(2));
        clocks({1, 0});
    }

    // From Run-Test/Idle to Run-Test/Idle
    void disturb()
    {
        const unsigned loaded = m_instruction;
        if (once(4)) {
            ++resets;
            reset();
        } else if (once(4)) {
            clocks({1, 0, 1, 1, 0}); // a scan of the client's instruction that shifts nothing
        } else {
            ++strangers;
            unsigned other = m_er1;
            while (other == m_er1)
                other = m_random() / 16 % (1u << m_irLength);
            loadInstruction(other);
            clocks({1, 0, 0});
            while (!once(20))
                clock(false, once(2));
            clocks({1, 1, 0});
        }
        if (m_instruction != loaded && loaded == kOfReset)
            reset();
        else if (m_instruction != loaded)
            loadInstruction(loaded);
    }

    void reset() { clocks({1, 1, 1, 1, 1, 0}); }

    void loadInstruction(unsigned code)
    {
        clocks({1, 1, 0, 0});
        for (int i = 0; i < m_irLength; ++i)
            clock(i == m_irLength - 1, code >> i & 1);
        clocks({1, 0});
    }

    void clocks(std::initializer_list<int> tms)
    {
        for (const int bit : tms)
            clock(bit, once(2));
    }

    void clock(bool tms, bool tdi)
    {
        const char pads = char('0' + 2 * tms + tdi);
        m_out += pads;
        m_out += char(pads + 4);
        if (m_state == ShiftIr)
            m_shifted = m_shifted >> 1 | unsigned(tdi) << (m_irLength - 1);
        if (m_state == UpdateIr)
            m_instruction = m_shifted;
        if (m_state == TapReset)
            m_instruction = kOfReset;
        m_state = nextTapState(m_state, tms);
    }

    static constexpr unsigned kOfReset = ~0u; // what a reset selects: IDCODE or BYPASS

    std::minstd_rand m_random;
    const int m_irLength;
    const unsigned m_er1;
    QByteArray m_out;
    TapState m_state = TapReset;
    bool m_tck = false;
    unsigned m_shifted = 0;
    unsigned m_instruction = kOfReset;
};

#endif
