#include "oxautils/design/source_scan.h"

#include "oxautils/model/shown_text.h"

#include <QFile>

namespace OXA {

namespace {

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
        || c == '$' || c == '`';
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The position behind the comment or string that begins at `at`; `at` when none does.
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
            if (name.contains('.'))
                m_escaped.insert(QString::fromUtf8(name));
        } else if (isWordCharacter(text.at(at))) {
            while (at < text.size() && isWordCharacter(text.at(at)))
                ++at;
            if (text.mid(begin, at - begin) == "bind")
                m_warnings
                    += QString("%1:%2: `bind` is ignored by Yosys: what it adds is not there")
                           .arg(shownText(file), QString::number(text.left(begin).count('\n') + 1));
        } else {
            ++at;
        }
    }
}

QStringList SourceScan::components(const QString& text) const
{
    QStringList components;
    int begin = 0;
    while (true) {
        const int dot = text.indexOf('.', begin);
        if (dot < 0 || m_escaped.contains(text.mid(begin)))
            break;
        components += text.mid(begin, dot - begin);
        begin = dot + 1;
    }
    return components += text.mid(begin);
}

}
