// SPDX-License-Identifier: Apache-2.0
#include "netlist_file.h"

#include "files/fail.h"
#include "files/replace_file.h"

#include <QFile>

namespace NorvoSyn {
namespace {

constexpr qint64 kChunk = 1 << 20;

}

bool deliverNetlist(const QString& netlist, const QString& output, QString* error)
{
    QFile from(netlist);
    if (!from.open(QIODevice::ReadOnly) || from.size() == 0)
        return OXA::fail(error, "the synthesis engine ended without a netlist");
    const auto copy = [&from](QIODevice& to, QString* reason) {
        while (!from.atEnd()) {
            const QByteArray chunk = from.read(kChunk);
            if (chunk.isEmpty())
                return OXA::fail(reason, from.errorString());
            if (to.write(chunk) != chunk.size())
                return false;
        }
        return true;
    };
    return OXA_FILES::replaceFile(output, copy, error);
}

}
