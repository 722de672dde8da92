// SPDX-License-Identifier: Apache-2.0
#include "engine_script.h"

#include "synthesis_request.h"
#include "target_device.h"

#include "engine/engine_words.h"

#include <QFile>

namespace NorvoSyn {
namespace {

constexpr char kFlow[] = ":/norvosyn/flow/flow.tcl";
constexpr char kTop[] = "qx_oxa"; // the generated wrapper's module

QByteArray setList(const char* name, const QStringList& items)
{
    QByteArray text = QByteArray("set ") + name + " [list";
    for (const QString& item : items)
        text += " \\\n    " + OXA_ENGINE::tclWord(item);
    return text + "]\n";
}

QByteArray setNumber(const char* name, int value)
{
    return QByteArray("set ") + name + ' ' + QByteArray::number(value) + '\n';
}

}

QByteArray engineScript(const SynthesisRequest& request, const TargetDevice& target)
{
    QStringList patterns;
    for (const QString& source : request.sources)
        patterns << OXA_ENGINE::withoutWildcards(source);

    QFile flow(kFlow);
    flow.open(QIODevice::ReadOnly);
    return setList("files", patterns) //
        + setList("includes", request.includePaths) //
        + "set top " + kTop + "\n" //
        + setNumber("block_bits", target.blockBits) //
        + setNumber("shadow_sram", target.hasShadowSram) //
        + setNumber("insert_pads", request.insertPads) //
        + "\n" + flow.readAll();
}

}
