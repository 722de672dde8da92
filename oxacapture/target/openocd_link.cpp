// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/openocd_link.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>

namespace OXA_CAPTURE {

namespace {

constexpr char kEnd = 0x1a; // of a command, and of its answer
constexpr int kTimeout = 10000; // ms, for a command without scan
constexpr int kSlowestBits = 1; // for each ms: adapters at 1 kHz
constexpr int kOtherBytes = 1 << 16; // of an answer, beside the scanned digits
constexpr int kMostTaps = 256; // of a chain; each may be tried
constexpr int kLongestQuote = 200; // characters of an unknown answer

// A scan consists of fields. OpenOCD reads a field's digits in quadratic time, but needs only one
// digit for a run of zeros.
constexpr int kFieldBits = 256;
constexpr int kLongZeros = 64;

constexpr int kUsualScanBits = 255; // of adapters that cut long scans off

constexpr int kReleaseTime = 1000; // ms

// The parts of a scan but the last one: how many times a part of so many bits with this value.
constexpr char kParts[] = R"(set oxautils_bits {}
foreach {count bits value} {%1} {
    for {set i 0} {$i < $count} {incr i} {
        append oxautils_bits [drscan %2 $bits $value -endstate DRPAUSE] { }
    }
}
append oxautils_bits [drscan %2%3])";

constexpr quint64 kDefaultEr1 = 0x08; // of the simulated target
constexpr int kMostInstructionBits = 32;

// After 3 seconds without a scan, another link can take the target.
constexpr char kTake[] = R"(if {[info exists ::oxautils_client] && $::oxautils_client ne "%1"
    && [clock seconds] - $::oxautils_time < 3} {
    error "another program captures from this target"
}
set ::oxautils_client %1
set ::oxautils_time [clock seconds])";

constexpr char kGuard[] = R"(if {![info exists ::oxautils_client] || $::oxautils_client ne "%1"} {
    error "another program took the target over"
}
set ::oxautils_time [clock seconds]
)";

constexpr char kRelease[]
    = R"(if {[info exists ::oxautils_client] && $::oxautils_client eq "%1"} {unset ::oxautils_client})";

// A line for each TAP: its name, its instruction, if it is set in OpenOCD, and its IDCODE.
constexpr char kListTaps[] = R"(set oxautils_list {}
foreach tap [jtag names] {
    set er1 {}
    if {[info exists ::oxautils_er1($tap)]} {set er1 $::oxautils_er1($tap)}
    set id {}
    catch {set id [jtag cget $tap -idcode]}
    append oxautils_list $tap { } $er1 { } $id \n
}
set oxautils_list)";

// The address with a host and a port.
QString serverAddress(const QString& text)
{
    const QString usual = kOpenOcdAddress;
    if (text.startsWith(':'))
        return usual.section(':', 0, 0) + text;
    const QString behindHost = text.startsWith('[') ? text.section(']', 1) : text; // IPv6
    return behindHost.contains(':') ? text : text + ':' + usual.section(':', 1);
}

QByteArray fieldText(const BitString& bits, int from, int size)
{
    QByteArray digits;
    for (int at = from; at < from + size && bits.zerosFrom(from) < size; at += 4)
        digits.prepend("0123456789abcdef"[bits.number(at, std::min(4, from + size - at))]);
    return ' ' + QByteArray::number(size) + " 0x" + (digits.isEmpty() ? "0" : digits);
}

// The size of the field that begins at bit `from`: a long run of zeros, or the bits before one.
int fieldSize(const BitString& bits, int from)
{
    const int zeros = bits.zerosFrom(from);
    if (zeros >= kLongZeros)
        return zeros;
    int size = 0;
    while (
        size < kFieldBits && from + size < bits.size() && bits.zerosFrom(from + size) < kLongZeros)
        ++size;
    return std::max(size, 1);
}

// The bits of a field from OpenOCD's text, the highest digit first; false for other text.
bool appendField(const QByteArray& text, int size, BitString& bits)
{
    if (text.size() * 4 < size)
        return false;
    for (int at = 0; at < size; at += 4) {
        bool ok = false;
        const int digit = text.mid(text.size() - 1 - at / 4, 1).toInt(&ok, 16);
        if (!ok)
            return false;
        bits.append(quint64(digit), std::min(4, size - at));
    }
    return true;
}

}

OpenOcdLink::OpenOcdLink()
    : m_client("oxa" + QByteArray::number(QRandomGenerator::system()->generate64(), 16))
{
}

OpenOcdLink::~OpenOcdLink()
{
    // Also after a stop, but not for long.
    const QDeadlineTimer deadline(kReleaseTime);
    m_socket.setGoesOn([deadline] { return !deadline.hasExpired(); });
    if (m_owns && m_socket.isConnected())
        run(ours(kRelease));
}

bool OpenOcdLink::connectTo(const QString& address)
{
    m_owns = false;
    m_irscan.clear();
    m_address = serverAddress(address);
    return m_socket.connectTo(m_address)
        ? listTaps()
        : fail("OpenOCD: " + m_socket.error() + "; is it running?");
}

bool OpenOcdLink::listTaps()
{
    m_taps.clear();
    m_idCodes.clear();
    m_instructions.clear();
    m_tap.clear();
    if (!run(kListTaps))
        return false;
    for (const QString& line : QString::fromUtf8(m_result).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(' '))
            return fail("OpenOCD: it lists a device without a name");
        m_taps += line.section(' ', 0, 0);
        m_instructions += line.section(' ', 1, 1);
        m_idCodes += line.section(' ', 2, 2);
    }
    if (m_taps.size() > kMostTaps)
        return fail(
            QString("OpenOCD lists %1 devices in the chain, more than the %2 that are tried")
                .arg(QString::number(m_taps.size()), QString::number(kMostTaps)));
    return !m_taps.isEmpty() || fail("OpenOCD has no device in the chain");
}

QString OpenOcdLink::idCode(const QString& tap) const
{
    const quint32 code = m_idCodes.value(m_taps.indexOf(tap)).toUInt(nullptr, 0);
    return code == 0 ? QString() : QString("0x%1").arg(code, 8, 16, QChar('0'));
}

QStringList OpenOcdLink::candidates() const
{
    if (m_taps.size() == 1)
        return m_taps;
    QStringList taps;
    for (int i = 0; i < m_taps.size(); ++i) {
        if (!m_instructions.at(i).isEmpty())
            taps += m_taps.at(i);
    }
    return taps;
}

bool OpenOcdLink::selectTap(const QString& tap)
{
    m_tap = m_taps.contains(tap) ? tap : QString();
    return !m_tap.isEmpty()
        || fail(QString("OpenOCD has no device \"%1\", only %2").arg(tap, m_taps.join(", ")));
}

BitString OpenOcdLink::instruction() const
{
    bool ok = false;
    const quint64 code = m_instructions.value(m_taps.indexOf(m_tap)).toUInt(&ok, 0);
    return BitString(ok ? code : kDefaultEr1, kMostInstructionBits);
}

bool OpenOcdLink::reset()
{
    m_owns = run(ours(kTake));
    return m_owns;
}

bool OpenOcdLink::scanIr(const BitString& out)
{
    m_irscan = "irscan " + m_tap.toUtf8() + " 0x"
        + QByteArray::number(out.number(0, out.size()), 16) + '\n';
    return run(ours(kGuard) + m_irscan);
}

bool OpenOcdLink::scanDr(const BitString& out, BitString* in) { return scan({}, out, in); }

bool OpenOcdLink::scanDrAfter(const BitString& first, const BitString& out, BitString* in)
{
    return scan(drscan(first) + '\n', out, in);
}

bool OpenOcdLink::isDivided(const BitString& bits) const
{
    return m_scanBits > 0 && bits.size() > m_scanBits;
}

bool OpenOcdLink::divideScans(int bits)
{
    if (m_scanBits > 0 || bits <= kUsualScanBits || m_taps.size() > 1)
        return false;
    m_scanBits = kUsualScanBits;
    return true;
}

// One command, as short as possible for zeros, so that no other client comes between the parts.
QByteArray OpenOcdLink::dividedDrscan(const BitString& bits) const
{
    const int last = (bits.size() - 1) / m_scanBits * m_scanBits;
    QByteArray parts;
    for (int at = 0, count = 0; at < last; at += count * m_scanBits) {
        count = std::max(std::min(bits.zerosFrom(at), last - at) / m_scanBits, 1);
        parts += ' ' + QByteArray::number(count) + fieldText(bits, at, m_scanBits);
    }
    return QByteArray(kParts)
        .replace("%1", parts)
        .replace("%2", m_tap.toUtf8())
        .replace("%3", fieldText(bits, last, bits.size() - last));
}

QByteArray OpenOcdLink::drscan(const BitString& bits) const
{
    if (isDivided(bits))
        return dividedDrscan(bits);
    QByteArray text = "drscan " + m_tap.toUtf8();
    for (int at = 0, size = 0; at < bits.size(); at += size) {
        size = fieldSize(bits, at);
        text += fieldText(bits, at, size);
    }
    return text;
}

// Scans `out` behind the command `before`.
bool OpenOcdLink::scan(const QByteArray& before, const BitString& out, BitString* in)
{
    if (isDivided(out) && m_taps.size() > 1)
        return fail(
            QString("a scan has more than %1 bits, and scans cannot be divided in a chain of"
                    " several devices")
                .arg(m_scanBits));
    // Other clients of OpenOCD may have loaded another instruction.
    if (!run(ours(kGuard) + m_irscan + before + drscan(out), out.size()))
        return false;
    return !in || readAnswer(out, *in) || (divideScans(out.size()) && scan(before, out, in));
}

// The bits that came back for `out`, from the last result.
bool OpenOcdLink::readAnswer(const BitString& out, BitString& in)
{
    in = {};
    int at = 0;
    for (const QByteArray& field : m_result.simplified().split(' ')) {
        if (at == out.size())
            return fail("OpenOCD: its answer is too long");
        const int size
            = isDivided(out) ? std::min(m_scanBits, out.size() - at) : fieldSize(out, at);
        if (!appendField(field, size, in))
            return fail("OpenOCD: " + QString(field.left(kLongestQuote)));
        at += size;
    }
    return at == out.size() || fail("OpenOCD: its answer is too short");
}

bool OpenOcdLink::run(const QByteArray& script, int bits)
{
    const QByteArray command
        = "string cat [catch {" + script + "} oxautils_result] { } $oxautils_result";
    const auto isWhole = [](const QByteArray& answer) { return answer.endsWith(kEnd); };
    ++m_commands;
    // A field's digits and the space before it take at most a byte for two bits.
    const qint64 time = kTimeout + bits / kSlowestBits;
    if (!m_socket.exchange(
            command + kEnd, isWhole, m_result, {int(time), time, kOtherBytes + bits / 2}))
        return fail(QString("OpenOCD at %1: %2").arg(m_address, m_socket.error()));
    m_result.chop(1);
    const int space = m_result.indexOf(' ');
    const bool ok = m_result.left(space) == "0";
    const QString said = QString::fromUtf8(m_result.remove(0, space + 1)).trimmed();
    return ok || fail("OpenOCD: " + (said.isEmpty() ? "it cannot scan; see its messages" : said));
}

// A script with our name in OpenOCD.
QByteArray OpenOcdLink::ours(const char* script) const
{
    return QByteArray(script).replace("%1", m_client);
}

}
