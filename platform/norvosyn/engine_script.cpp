#include "engine_script.h"

#include "synthesis_request.h"
#include "target_device.h"

#include <QFile>

namespace NorvoSyn {
namespace {

constexpr char kFlow[] = ":/norvosyn/flow/flow.tcl";
constexpr char kTop[] = "qx_oxa"; // the generated wrapper's module

/// `text` as one word of Tcl that stands for itself, in ASCII: what is neither letter nor digit is
/// escaped.
QByteArray tclWord(const QString& text)
{
    QByteArray word;
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (code > 127)
            word += "\\u" + QByteArray::number(code, 16).rightJustified(4, '0');
        else if (c.isLetterOrNumber() || QStringLiteral("/_.-").contains(c))
            word += char(code);
        else
            word += QByteArray("\\") + char(code);
    }
    return word;
}

/// The engine takes a file's name for a pattern; this one matches the name alone.
QString withoutWildcards(const QString& path)
{
    QString pattern;
    for (const QChar c : path) {
        if (QStringLiteral("\\*?[").contains(c))
            pattern += '\\';
        pattern += c;
    }
    return pattern;
}

QByteArray setList(const char* name, const QStringList& items)
{
    QByteArray text = QByteArray("set ") + name + " [list";
    for (const QString& item : items)
        text += " \\\n    " + tclWord(item);
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
        patterns << withoutWildcards(source);

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
