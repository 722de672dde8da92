// SPDX-License-Identifier: Apache-2.0
#include "engine/engine_words.h"

namespace OXA_ENGINE {

QByteArray tclWord(const QString& text)
{
    if (text.isEmpty())
        return "{}";
    QByteArray word;
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (code > 127 || code < 32)
            word += "\\u" + QByteArray::number(code, 16).rightJustified(4, '0');
        else if (c.isLetterOrNumber() || QStringLiteral("/_.-").contains(c))
            word += char(code);
        else
            word += QByteArray("\\") + char(code);
    }
    return word;
}

QByteArray tclWords(const QStringList& texts)
{
    QByteArray words;
    for (const QString& text : texts)
        words += ' ' + tclWord(text);
    return words;
}

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

}
