// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/readable_ports.h"

#include "oxautils/check/verilog_names.h"
#include "oxautils/generate/standard_files.h"

#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace OXA {

namespace {

// Of SystemVerilog, which many tools use for all Verilog, and of VHDL. Verilog's are elsewhere.
constexpr char kKeywords[]
    = "abs accept_on access after alias all always_comb always_ff always_latch architecture array "
      "assert assume assume_guarantee attribute before bind bins binsof bit block body break "
      "buffer "
      "bus byte chandle checker class clocking component configuration const constant constraint "
      "context continue cover covergroup coverpoint cross disconnect dist do downto elsif "
      "endchecker "
      "endclass endclocking endgroup endinterface endpackage endprogram endproperty endsequence "
      "entity enum eventually exit expect export extends extern fairness file final first_match "
      "foreach forkjoin generic global group guarded iff ignore_bins illegal_bins implements "
      "implies "
      "import impure in inertial inside int interconnect interface intersect is join_any join_none "
      "label let library linkage literal local logic longint loop map matches mod modport nettype "
      "new "
      "next nexttime null of on open others out package packed port postponed priority procedure "
      "process program property protected pure rand randc randcase randsequence range record ref "
      "register reject reject_on rem report restrict restrict_guarantee return rol ror s_always "
      "s_eventually s_nexttime s_until s_until_with select sequence severity shared shortint "
      "shortreal signal sla sll soft solve sra srl static strong string struct subtype super "
      "sync_accept_on sync_reject_on tagged then this throughout timeprecision timeunit to "
      "transport "
      "type typedef unaffected union unique unique0 units until until_with untyped var variable "
      "virtual vmode void vprop vunit wait_order weak when wildcard with within";

// Other identifiers of the files with the ports, and the wrapper's own ports.
constexpr char kTaken[]
    = "oxa_analyzer u_oxa_analyzer oxa_template qx_oxa u_qx_oxa ieee std std_logic "
      "std_logic_1164 std_logic_vector work tms_pad_i tck_pad_i tdi_pad_i tdo_pad_o";

QSet<QString> wordsOf(const char* text)
{
    const QStringList words = QString(text).split(' ');
    return {words.begin(), words.end()};
}

bool isKeyword(const QString& word)
{
    static const QSet<QString> keywords = wordsOf(kKeywords);
    // A legal word can only be rejected as a keyword.
    return keywords.contains(word) || !nameComplaint(word).isEmpty();
}

/// `name` as an identifier; different names may become the same. In lower case, as GHDL writes VHDL
/// names to Verilog.
QString cleaned(const QString& name)
{
    static const QRegularExpression others("[^a-z0-9]+");
    static const QRegularExpression ends("^_|_$");
    QString word = name.toLower().replace(others, "_").remove(ends);
    if (word.isEmpty())
        return "unnamed";
    return word.at(0).isDigit() || isKeyword(word) ? "sig_" + word : word;
}

/// The bits of one port.
struct Group {
    QString name; // not cleaned
    QStringList bits;
    QList<int> indexes; // of the bits, when they have one stem
    int direction = 0; // of the indexes in a bus: 1 ascending, -1 descending, 0 no bus
};

class Groups {
public:
    void add(const SignalItem& item);
    QList<Group> list;

private:
    QStringList newBits(const SignalItem& item);
    void addToStem(const QString& stem, const SignalItem& item, const QStringList& bits);

    QSet<QString> m_seen;
    QHash<QString, int> m_stems; // positions in `list`
};

QStringList Groups::newBits(const SignalItem& item)
{
    QStringList bits;
    for (const QString& name : flattenedNames({item})) {
        const QString word = escapedSignalName(name);
        if (name.isEmpty() || m_seen.contains(word))
            continue;
        m_seen += word;
        bits += name;
    }
    return bits;
}

/// The common stem of all bits of `item`; empty when there is none.
QString commonStem(const SignalItem& item)
{
    QString stem;
    for (const QString& name : flattenedNames({item})) {
        const IndexedName bit = indexedName(name);
        if (bit.index < 0 || (!stem.isEmpty() && bit.stem != stem))
            return {};
        stem = bit.stem;
    }
    return stem;
}

void Groups::addToStem(const QString& stem, const SignalItem& item, const QStringList& bits)
{
    if (!m_stems.contains(stem)) {
        m_stems.insert(stem, list.size());
        list += Group {stem, {}, {}, 0};
    }
    Group& group = list[m_stems.value(stem)];
    group.bits += bits;
    for (const QString& bit : bits)
        group.indexes += indexedName(bit).index;
    if (group.direction == 0 && item.bitCount() > 1) {
        const bool ascends = indexedName(item.subItems.first().name).index
            < indexedName(item.subItems.last().name).index;
        group.direction = ascends ? 1 : -1;
    }
}

void Groups::add(const SignalItem& item)
{
    const QStringList bits = newBits(item);
    const QString stem = commonStem(item);
    if (bits.isEmpty())
        return;
    if (!stem.isEmpty())
        addToStem(stem, item, bits);
    else
        list += Group {item.name, bits, {}, 0};
}

/// Sorts bits with indexes in the order of their range.
void sortBits(Group& group)
{
    QMap<int, QString> bits;
    for (int i = 0; i < group.indexes.size(); ++i)
        bits.insert(group.indexes.at(i), group.bits.at(i));
    group.indexes = bits.keys();
    group.bits = bits.values();
    if (group.direction > 0)
        return;
    std::reverse(group.indexes.begin(), group.indexes.end());
    std::reverse(group.bits.begin(), group.bits.end());
}

ReadablePort portOf(Group group)
{
    ReadablePort port;
    const bool hasStem = !group.indexes.isEmpty();
    if (hasStem)
        sortBits(group);
    port.bits = group.bits;
    const int last = group.bits.size() - 1;
    port.isVector = last > 0;
    port.left = last;
    if (hasStem && std::abs(group.indexes.first() - group.indexes.last()) == last) {
        port.left = group.indexes.first();
        port.right = group.indexes.last();
        port.stem = group.name;
    }
    const IndexedName first = indexedName(group.bits.first());
    const QString ofBit
        = first.index < 0 ? first.stem : first.stem + '_' + QString::number(first.index);
    port.name = cleaned(port.isVector ? group.name : ofBit);
    return port;
}

}

IndexedName indexedName(const QString& name)
{
    static const QRegularExpression indexed("^(.+)\\[(0|[1-9][0-9]{0,8})\\]$");
    const bool isEscaped = name.startsWith('\\') && name.endsWith(' ');
    const QString plain = isEscaped ? name.mid(1, name.size() - 2) : name;
    const QRegularExpressionMatch match = indexed.match(plain);
    return match.hasMatch() ? IndexedName {match.captured(1), match.captured(2).toInt()}
                            : IndexedName {plain, -1};
}

bool isReadable(const QString& name) { return cleaned(name) == name.toLower(); }

QList<ReadablePort> readablePorts(const QList<SignalItem>& items, const QStringList& others)
{
    Groups groups;
    for (const SignalItem& item : items)
        groups.add(item);
    QSet<QString> taken = wordsOf(kTaken) + QSet<QString>(others.begin(), others.end());
    QList<ReadablePort> ports;
    for (const Group& group : qAsConst(groups.list)) {
        ReadablePort port = portOf(group);
        const QString name = port.name;
        for (int i = 2; taken.contains(port.name); ++i)
            port.name = name + '_' + QString::number(i);
        taken += port.name;
        ports += port;
    }
    return ports;
}

}
