// Captures of any names and values as tables: a column a signal, a row a sample.
#include "capture_input.h"

using namespace OXA_CAPTURE;

namespace {

QList<QStringList> parsedCsv(const QString& text)
{
    QList<QStringList> rows {{}};
    QString cell;
    bool quoted = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (quoted && c == '"' && text.mid(i + 1, 1) == "\"") {
            cell += c;
            ++i;
        } else if (c == '"') {
            quoted = !quoted;
        } else if (!quoted && (c == ',' || c == '\n')) {
            rows.last() += cell;
            cell.clear();
            if (c == '\n')
                rows += QStringList();
        } else {
            cell += c;
        }
    }
    require(!quoted && cell.isEmpty() && rows.last().isEmpty(), "the table ends with a row");
    rows.removeLast();
    return rows;
}

void requireCsv(const Capture& capture)
{
    QStringList columns;
    for (const CapturedCore& core : capture)
        columns += OXA::flattenedNames(core.items);
    columns.removeDuplicates();
    QList<QStringList> rows = parsedCsv(QString::fromUtf8(written(capture, "csv")));
    const QStringList header = rows.takeFirst();
    require(header.size() == 4 + columns.size(), "a column a signal");
    for (int i = 0; i < columns.size(); ++i) {
        const QString shown = header.at(4 + i);
        require(QString(shown).remove('\'') == QString(columns.at(i)).remove('\''), "its name");
        require(shown.isEmpty() || !QString("=+-@\t\r\n").contains(shown.at(0)), "no formula");
    }
    for (const CapturedCore& core : capture) {
        const QStringList names = OXA::flattenedNames(core.items);
        for (qint64 number = 0; Taken(core, number).window; ++number) {
            const Taken taken(core, number);
            QStringList expected {QString::number(core.index), QString::number(taken.windowNumber),
                QString::number(taken.sample), taken.isTrigger() ? "1" : "0"};
            for (const QString& column : qAsConst(columns)) {
                const int bit = names.indexOf(column);
                expected += bit < 0 ? QString() : QString(taken.bit(bit));
            }
            require(!rows.isEmpty() && rows.takeFirst() == expected, "a row is a sample");
        }
    }
    require(rows.isEmpty(), "no row but the samples");
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    requireCsv(CaptureInput(data, size).capture());
    return 0;
}
