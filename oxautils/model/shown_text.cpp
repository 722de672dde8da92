// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/shown_text.h"

#include <QStringList>

#include <algorithm>

namespace OXA {

namespace {

bool isHidden(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString escaped(QChar unit)
{
    switch (unit.unicode()) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return "\\u" + QString::number(unit.unicode(), 16).rightJustified(4, '0');
    }
}

}

QString shownText(const QString& text)
{
    const auto isPrintable = [](QChar c) { return c >= ' ' && c <= '~'; };
    if (std::all_of(text.begin(), text.end(), isPrintable))
        return text;
    QString shown;
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool pair
            = unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const QString units = text.mid(i, pair ? 2 : 1);
        i += int(pair);
        if (!isHidden(pair ? QChar::surrogateToUcs4(unit, text.at(i)) : unit.unicode())) {
            shown += units;
            continue;
        }
        for (const QChar hidden : units)
            shown += escaped(hidden);
    }
    return shown;
}

QString shownLines(const QString& text)
{
    QStringList lines = text.split('\n');
    for (QString& line : lines)
        line = shownText(line);
    return lines.join('\n');
}

}
