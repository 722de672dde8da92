// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_OPENOCD_LINK_H
#define OXACAPTURE_TARGET_OPENOCD_LINK_H

#include "oxacapture/target/jtag_link.h"
#include "oxacapture/target/stream_socket.h"

#include <QStringList>

namespace OXA_CAPTURE {

/// OpenOCD's Tcl server, unless a user names another one.
constexpr char kOpenOcdAddress[] = "127.0.0.1:6666";

/// One device of a chain that OpenOCD drives, through OpenOCD's Tcl server.
///
/// OpenOCD manages the chain: it has the instruction's length, and keeps the other devices in
/// BYPASS. A scan is one command. Other programs that use the same OpenOCD may scan the chain too.
/// Two links of this class to one OpenOCD exclude each other: the second is refused while the first
/// is in use.
class OXACAPTURE_EXPORT OpenOcdLink : public JtagLink {
public:
    OpenOcdLink();
    ~OpenOcdLink() override;
    OpenOcdLink(const OpenOcdLink&) = delete;
    OpenOcdLink& operator=(const OpenOcdLink&) = delete;

    /// Called during a wait for OpenOCD, as by a `StreamSocket`.
    void setGoesOn(const std::function<bool()>& goesOn) { m_socket.setGoesOn(goesOn); }

    /// Divides scans of more than `bits` into parts, between which the TAP pauses; 0: none, until
    /// an answer is damaged. For adapters that cut long scans off. Only for a chain of one device:
    /// OpenOCD shifts a bit for each other device in every part.
    void setScanBits(int bits) { m_scanBits = bits; }
    bool divideScans(int bits) override;

    /// Connects to the Tcl server at "HOST:PORT", and lists the chain. A missing host, or a missing
    /// port with its colon, is taken from `kOpenOcdAddress`.
    bool connectTo(const QString& address);

    /// The names of OpenOCD's TAPs, in the chain's order.
    const QStringList& taps() const { return m_taps; }

    /// The identification code that OpenOCD read from the TAP, as "0x10a0affd"; empty without one.
    QString idCode(const QString& tap) const;

    /// The TAPs that may have an analyzer: those with an entry in OpenOCD's variable oxautils_er1,
    /// or the only one.
    QStringList candidates() const;

    /// Selects the TAP for all scans; false when the chain has none of this name.
    bool selectTap(const QString& tap);
    const QString& tap() const { return m_tap; } ///< the selected one

    /// The instruction that selects the cores in the chosen TAP: its entry in OpenOCD's variable
    /// oxautils_er1, else that of the simulated target.
    BitString instruction() const;

    /// Takes the device, without a reset: OpenOCD resets the chain when it starts, and the devices
    /// that other programs use keep their state.
    bool reset() override;
    bool scanIr(const BitString& out) override;
    bool scanDr(const BitString& out, BitString* in) override;
    bool scanDrAfter(const BitString& first, const BitString& out, BitString* in) override;

    /// Commands sent to OpenOCD so far.
    int commandCount() const { return m_commands; }

private:
    bool listTaps();
    bool run(const QByteArray& script, int bits = 0);
    QByteArray ours(const char* script) const;
    bool isDivided(const BitString& bits) const;
    QByteArray drscan(const BitString& bits) const;
    QByteArray dividedDrscan(const BitString& bits) const;
    bool scan(const QByteArray& before, const BitString& out, BitString* in);
    bool readAnswer(const BitString& out, BitString& in);

    StreamSocket m_socket;
    QString m_address;
    QByteArray m_client; // the name of this link in OpenOCD
    QStringList m_taps;
    QStringList m_idCodes; // of the TAPs, as numbers; 0 without one
    QStringList m_instructions; // of the TAPs; empty where it is not known
    QString m_tap;
    QByteArray m_irscan; // loads the instruction, with every scan
    QByteArray m_result; // of the last command
    bool m_owns = false;
    int m_scanBits = 0;
    int m_commands = 0;
};

}

#endif
