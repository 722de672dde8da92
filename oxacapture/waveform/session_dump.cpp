// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/waveform/session_dump.h"

#include "oxacapture/waveform/bus_range.h"
#include "oxacapture/waveform/dump_text.h"
#include "oxacapture/waveform/time_text.h"
#include "oxacapture/waveform/time_unit.h"

#include <algorithm>
#include <cstring>

namespace OXA_CAPTURE {

namespace {

constexpr int kBytesAtOnce = 1 << 16;

bool isHigh(const char* sample, int bit) { return (sample[bit / 8] >> (bit % 8) & 1) != 0; }

}

bool SessionDump::open(const QString& path)
{
    if (!m_session.open(path))
        return false;
    declare();
    return true;
}

void SessionDump::declare()
{
    QStringList channels;
    QList<int> bits; // of the channels
    for (int bit = 0; bit < m_session.channels().size(); ++bit) {
        if (m_session.channels().at(bit).isEmpty())
            continue;
        channels += m_session.channels().at(bit);
        bits += bit;
    }
    const double hz = m_session.hz();
    m_exponent = hz > 0 ? timeExponentFor(hz) : kNumbersExponent;
    QString text = "$version "
        + timeText(hz > 0 ? TimeKind::Window : TimeKind::Numbers,
            {
                {0, hz}
    })
        + " $end\n$timescale " + timescaleText(m_exponent) + " $end\n";
    UniqueNames names;
    int count = 0;
    for (const OXA::SignalItem& item : groupedBits(channels)) {
        const QByteArray id = dumpIdentifier(count++);
        m_variables.push_back({id, bits.mid(0, item.bitCount()), {}});
        bits = bits.mid(item.bitCount());
        text += dumpDeclaration("wire", item.bitCount(), id, takeDumpName(item, names));
    }
    m_sampleId = dumpIdentifier(count++);
    const QByteArray trigger = dumpIdentifier(count++);
    const QByteArray window = dumpIdentifier(count);
    text += dumpDeclaration("wire", 1, m_sampleId, names.takeOwn("sample"))
        + dumpDeclaration("wire", 1, trigger, names.takeOwn("trigger"))
        + dumpDeclaration("integer", kDumpNumberBits, window, names.takeOwn("window"))
        + "$enddefinitions $end\n#0\n";
    m_text = text.toUtf8();
    addDumpChange("0", trigger, m_text);
    addDumpChange("00", window, m_text);
}

qint64 SessionDump::read(char* data, qint64 size)
{
    while (m_at == m_text.size() && !m_isEnded) {
        if (!makeMore())
            return -1;
    }
    const int count = int(std::min(size, qint64(m_text.size() - m_at)));
    std::memcpy(data, m_text.constData() + m_at, size_t(count));
    m_at += count;
    return count;
}

bool SessionDump::makeMore()
{
    m_text.clear();
    m_at = 0;
    const int before = m_bytes.size();
    m_bytes.resize(before + kBytesAtOnce);
    const qint64 got = m_session.read(m_bytes.data() + before, kBytesAtOnce);
    if (got < 0)
        return false;
    if (got == 0)
        end();
    m_bytes.resize(before + int(got));
    const int size = m_session.sampleBytes();
    int at = 0;
    for (; at + size <= m_bytes.size(); at += size)
        take(m_bytes.constData() + at);
    m_bytes.remove(0, at);
    return true;
}

void SessionDump::take(const char* sample)
{
    if (m_taken > 0 && std::memcmp(m_before.constData(), sample, size_t(m_before.size())) == 0) {
        ++m_taken;
        return;
    }
    m_before = QByteArray(sample, m_session.sampleBytes());
    addSample(m_taken++);
    for (Variable& variable : m_variables) {
        QByteArray value;
        for (const int bit : qAsConst(variable.bits))
            value += isHigh(sample, bit) ? '1' : '0';
        if (value != variable.last)
            addDumpChange(value, variable.identifier, m_text);
        variable.last = value;
    }
}

void SessionDump::addSample(qint64 number)
{
    m_text += '#' + QByteArray::number(timeOf(number)) + '\n';
    addDumpChange(++m_added % 2 == 0 ? "0" : "1", m_sampleId, m_text);
    m_last = number;
}

void SessionDump::end()
{
    m_isEnded = true;
    if (m_taken == 0)
        return;
    if (m_last < m_taken - 1)
        addSample(m_taken - 1);
    m_text += '#' + QByteArray::number(timeOf(m_taken)) + '\n';
    addDumpChange("x", m_sampleId, m_text);
}

quint64 SessionDump::timeOf(qint64 number) const
{
    if (m_session.hz() == 0)
        return quint64(number);
    return quint64(periodsInUnits(double(number), m_session.hz(), m_exponent));
}

}
