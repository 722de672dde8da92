// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/verilog_word.h"

#include "oxautils/model/shown_text.h"

#include <QSet>

namespace OXA {

namespace {

class FaultList {
public:
    void beginCore() { m_seen.clear(); }

    void add(const QString& place, const QStringList& names)
    {
        for (const QString& name : names) {
            const char* fault = wordFault(name);
            if (!fault || m_seen.contains(name))
                continue;
            m_seen += name;
            texts += QString("%1: the signal name \"%2\" %3").arg(place, shownText(name), fault);
        }
    }

    QStringList texts;

private:
    QSet<QString> m_seen;
};

}

const char* wordFault(const QString& name)
{
    const bool escaped = name.startsWith('\\'); // by the host, with a space at the end
    if (escaped && !name.endsWith(' '))
        return "begins with a backslash, but does not end with a space";
    if (name == "\\ ")
        return "is only a backslash";
    for (const QChar c : escaped ? QStringView(name).chopped(1) : QStringView(name)) {
        if (c.isSpace())
            return "contains white space, where Verilog ends a name";
        if (c.category() == QChar::Other_Control)
            return "contains a control character";
        if (c == '`')
            return "contains a backquote, which begins a macro in Verilog";
    }
    return nullptr;
}

QStringList wordFaults(const QList<AoCore*>& cores)
{
    FaultList faults;
    for (int position = 0; position < cores.size(); ++position) {
        const AoCore& core = *cores.at(position);
        const QString place = QString("core %1").arg(position);
        faults.beginCore();
        faults.add(place, QStringList(core.sampleClock) + core.dataSignals());
        for (const TriggerPort* port : core.availableTriggers())
            faults.add(place + QString(", T%1").arg(port->index), port->singleSignals());
    }
    return faults.texts;
}

QStringList wordFaults(const QList<AOCore_Lite*>& cores)
{
    FaultList faults;
    for (int position = 0; position < cores.size(); ++position) {
        const AOCore_Lite& core = *cores.at(position);
        faults.beginCore();
        faults.add(
            QString("core %1").arg(position), QStringList(core.sampleClock) + core.dataSignals());
    }
    return faults.texts;
}

}
