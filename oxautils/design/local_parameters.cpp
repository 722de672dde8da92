// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/local_parameters.h"

#include "oxautils/config/names_file.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/design/source_scan.h"

#include <QRegularExpression>

namespace OXA {

QMap<QString, QString> localParameters(const QStringList& files, const QString& prefix)
{
    static const QRegularExpression assignment("([A-Za-z_]\\w*)\\s*=\\s*([\\w' ]+?)\\s*[,;)]");
    static const QRegularExpression define("`define\\s+([A-Za-z_]\\w*)[ \\t]+([\\w']+)");
    static const QRegularExpression list("\\b(?:localparam|parameter)\\b[^;)]*[;)]");
    QMap<QString, QString> found;
    const auto add = [&](const QRegularExpressionMatch& match) {
        const QString digits = binaryDigits(match.captured(2));
        if (match.captured(1).startsWith(prefix) && !digits.isEmpty())
            found.insert(match.captured(1), digits);
    };
    for (const QString& path : files) {
        QByteArray content;
        if (!readFile(path, content))
            continue; // Yosys reports it
        const QString text = QString::fromUtf8(withoutComments(content));
        for (auto lists = list.globalMatch(text); lists.hasNext();) {
            const QString one = lists.next().captured();
            for (auto match = assignment.globalMatch(one); match.hasNext();)
                add(match.next());
        }
        for (auto match = define.globalMatch(text); match.hasNext();)
            add(match.next());
    }
    return found;
}

}
