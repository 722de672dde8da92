// SPDX-License-Identifier: Apache-2.0
#include "state_options.h"

#include "files/fail.h"
#include "files/replace_file.h"
#include "oxautils/config/names_file.h"
#include "oxautils/design/attach.h"
#include "oxautils/design/local_parameters.h"
#include "oxautils/model/bit_range.h"

#include <QFile>

namespace {

/// "a/state" for "a.state".
QString slashed(QString name) { return name.replace('.', '/'); }

/// The one signal of `configuration` that `path` or its last components name, and its range there.
bool findSignal(const OXA::Configuration& configuration, const QString& path, QString& name,
    QString& range, QString* error)
{
    QMap<QString, QStringList> found; // bits by name
    for (const QString& bit : OXA::watchedNames(configuration)) {
        QString base = bit;
        int index = 0;
        OXA::takeIndex(base, index);
        if (('/' + slashed(base)).endsWith('/' + slashed(path)) && !found[base].contains(bit))
            found[base] += bit;
    }
    if (found.size() != 1)
        return OXA::fail(error,
            found.isEmpty() ? "the configuration has no such signal"
                            : "may be " + QStringList(found.keys()).join(" or "));
    name = found.firstKey();
    OXA::BitRange bits;
    range = OXA::bitRange(found.first(), bits) ? bits.text() : QString();
    return true;
}

/// Reads lines "NAME VALUE" or "NAME = VALUE"; `#` begins a comment.
bool readList(const QString& path, QMap<QString, QString>& values, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return OXA::fail(error, path + ": cannot be read: " + file.errorString());
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i).section('#', 0, 0).replace('=', ' ').simplified();
        if (line.isEmpty())
            continue;
        const QString digits = OXA::binaryDigits(line.section(' ', 1));
        if (digits.isEmpty())
            return OXA::fail(error,
                QString("%1:%2: \"%3\" is not a name and a number, such as IDLE 3'd5")
                    .arg(path, QString::number(i + 1), lines.at(i)));
        values.insert(line.section(' ', 0, 0), digits);
    }
    return !values.isEmpty() || OXA::fail(error, path + ": contains no names");
}

bool readEnum(const QString& text, const QStringList& sources,
    const OXA::Configuration& configuration, OXA::StateNames& states, QString* error)
{
    const QString source = text.section('=', 1);
    OXA::SignalStates own;
    QString name;
    if (source.isEmpty())
        return OXA::fail(error, "write it like cpu/state=ST_* or cpu/state=states.txt");
    if (!findSignal(configuration, text.section('=', 0, 0), name, own.range, error))
        return false;
    if (!source.endsWith('*')) {
        if (!readList(source, own.values, error))
            return false;
    } else {
        own.values = OXA::localParameters(sources, source.chopped(1));
        if (own.values.isEmpty())
            return OXA::fail(error,
                sources.isEmpty() ? QString("no design; name its sources by --design or -f")
                                  : "the sources have no constant " + source);
    }
    states.insert(name, own);
    return true;
}

}

void addEnumOption(Command& command, QStringList& enums)
{
    command
        .texts("--enum", enums,
            "Names of a signal's values: constants PREFIX* of the design, or the lines NAME VALUE "
            "of"
            " a file; may be repeated")
        .typeName("PATH=NAMES");
}

bool readEnums(const QStringList& enums, const DesignOptions& design, const QString& file,
    const OXA::Configuration& configuration, OXA::StateNames& states, TextOut& err)
{
    OXA::DesignSources sources;
    if (!enums.isEmpty() && !findSources(design, file, sources, err))
        return false;
    bool ok = true;
    for (const QString& text : enums) {
        QString error;
        if (readEnum(text, sources.files, configuration, states, &error))
            continue;
        err.error("--enum " + text + ": " + error);
        ok = false;
    }
    return ok;
}

OXA::StateNames knownStates(const QString& file, TextOut& err)
{
    OXA::KnownNames names;
    QString error;
    if (!OXA_FILES::isStream(file) && !OXA::readKnownNames(file, names, &error))
        err.warning(error);
    return names.states;
}
