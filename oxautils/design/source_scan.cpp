// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/source_scan.h"

#include "oxautils/model/shown_text.h"

#include <QFile>
#include <QRegularExpression>

namespace OXA {

namespace {

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
        || c == '$' || c == '`';
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The position after the comment or string at `at`; `at` when there is none.
int behindText(const QByteArray& text, int at)
{
    const auto behind = [&](const char* end) {
        const int found = text.indexOf(end, at + 2);
        return found < 0 ? text.size() : found + int(qstrlen(end));
    };
    if (text.at(at) == '"') {
        int end = at + 1;
        while (end < text.size() && text.at(end) != '"' && text.at(end) != '\n')
            end += text.at(end) == '\\' ? 2 : 1;
        return qMin(end + 1, text.size());
    }
    if (text.at(at) != '/' || at + 1 == text.size())
        return at;
    return text.at(at + 1) == '/' ? behind("\n") - 1 : text.at(at + 1) == '*' ? behind("*/") : at;
}

}

QByteArray withoutComments(const QByteArray& text)
{
    QByteArray result;
    for (int at = 0; at < text.size();) {
        const int behind = behindText(text, at);
        if (behind > at)
            result += ' ' + QByteArray(text.mid(at, behind - at).count('\n'), '\n');
        else
            result += text.at(at);
        at = qMax(behind, at + 1);
    }
    return result;
}

SourceScan::SourceScan(const QStringList& files)
{
    for (const QString& path : files) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            scan(path, file.readAll());
    }
}

void SourceScan::scan(const QString& file, const QByteArray& text)
{
    for (int at = 0; at < text.size();) {
        if (const int behind = behindText(text, at); behind > at) {
            at = behind;
            continue;
        }
        const int begin = at;
        if (text.at(at) == '\\') {
            while (at < text.size() && !isSpace(text.at(at)))
                ++at;
            const QByteArray name = text.mid(begin + 1, at - begin - 1);
            if (name.contains('.') || name.contains('[') || name.contains('/'))
                m_escaped.insert(QString::fromUtf8(name));
        } else if (isWordCharacter(text.at(at))) {
            while (at < text.size() && isWordCharacter(text.at(at)))
                ++at;
            if (text.mid(begin, at - begin) == "bind")
                m_warnings
                    += QString("%1:%2: `bind` is ignored by Yosys: its instance is missing")
                           .arg(shownText(file), QString::number(text.left(begin).count('\n') + 1));
        } else {
            ++at;
        }
    }
}

QStringList SourceScan::components(const QString& text, QChar separator) const
{
    QStringList components;
    for (int begin = 0; begin <= text.size();) {
        int end = text.indexOf(separator, begin);
        for (int last = text.size(); last > end && end >= 0 && !m_escaped.isEmpty();
             last = text.lastIndexOf(separator, last - 1 - text.size())) {
            if (m_escaped.contains(text.mid(begin, last - begin)))
                end = last;
        }
        if (end < 0)
            end = text.size();
        components += text.mid(begin, end - begin);
        begin = end + 1;
    }
    return components;
}

// Names are escaped all the same: some are keywords of SystemVerilog.
QString SourceScan::reference(const QString& path) const
{
    static const QRegularExpression indexed(R"(^([A-Za-z_][A-Za-z0-9_$]*)((\[-?\d+\])+)$)");
    QStringList words;
    for (const QString& component : components(path, '/')) {
        const QRegularExpressionMatch match = indexed.match(component);
        words += match.hasMatch() && !m_escaped.contains(component)
            ? '\\' + match.captured(1) + ' ' + match.captured(2)
            : '\\' + component + ' ';
    }
    return words.join('.');
}

}
