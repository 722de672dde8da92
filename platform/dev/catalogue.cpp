// SPDX-License-Identifier: Apache-2.0
#include "dev/catalogue.h"

#include "dev/csv_reader.h"

#include <QFile>
#include <QPair>
#include <QRegularExpression>
#include <QSet>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QStringDecoder>
#endif

namespace DEV {
namespace {

using TextField = QString DeviceArg::*;

bool isAnything(const QString&) { return true; }

bool isPresent(const QString& text) { return !text.trimmed().isEmpty(); }

bool isCount(const QString& text)
{
    bool ok = false;
    return text.toInt(&ok) >= 0 && ok;
}

bool isMemorySize(const QString& text)
{
    static const QRegularExpression size("^\\d+(\\.\\d+)?[A-Za-z]{2}$");
    return text.isEmpty() || size.match(text).hasMatch();
}

struct Column {
    const char* name;
    TextField field; // null: the next entry of the resources
    bool (*accepts)(const QString&);
    const char* wanted;
};

// In file order.
constexpr Column kColumns[] = {
    {"part_number",     &DeviceArg::partNumber, isPresent,    "a part number"                            },
    {"series",          &DeviceArg::series,     isAnything,   ""                                         },
    {"name",            &DeviceArg::name,       isPresent,    "a device name"                            },
    {"grade",           &DeviceArg::grade,      isAnything,   ""                                         },
    {"speed",           &DeviceArg::speed,      isAnything,   ""                                         },
    {"package",         &DeviceArg::package,    isAnything,   ""                                         },
    {"variant",         &DeviceArg::variant,    isAnything,   ""                                         },
    {"luts",            nullptr,                isCount,      "a whole number"                           },
    {"adders",          nullptr,                isCount,      "a whole number"                           },
    {"registers",       nullptr,                isCount,      "a whole number"                           },
    {"ios",             nullptr,                isCount,      "a whole number"                           },
    {"shadow_sram",     nullptr,                isMemorySize, "empty or a number and its two-letter unit"},
    {"block_sram_kbit", nullptr,                isCount,      "a whole number of kbit"                   },
};
constexpr int kColumnCount = sizeof kColumns / sizeof *kColumns;

constexpr qint64 kLargestFile = qint64(64) * 1024 * 1024;

/// The text of `bytes`, without its byte-order mark.
QString fromUtf8(const QByteArray& bytes, bool& valid)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::ConverterState state;
    QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes, bytes.size(), &state);
    valid = state.invalidChars == 0 && state.remainingChars == 0;
#else
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    valid = !decoder.hasError();
#endif
    return text;
}

/// The text of the file; null, with the reason in `error`, when it cannot be read.
QString readText(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return {};
    }
    const QByteArray bytes = file.read(kLargestFile + 1);
    if (file.error() != QFile::NoError) {
        *error = file.errorString();
    } else if (bytes.size() > kLargestFile) {
        *error = "larger than 64 MiB";
    } else {
        bool valid = false;
        const QString text = fromUtf8(bytes, valid);
        if (valid)
            return text.isNull() ? QString("") : text;
        *error = "not UTF-8 text";
    }
    return {};
}

/// Reads rows, and keeps the first error.
class CatalogueParser {
public:
    explicit CatalogueParser(const QString& text)
        : m_reader(text)
    {
    }

    /// Null when there is an error.
    std::shared_ptr<const Catalogue> parse()
    {
        readHeader();
        auto catalogue = std::make_shared<Catalogue>();
        while (m_error.isEmpty()) {
            const CsvRow row = m_reader.next();
            if (!m_reader.error().isEmpty())
                refuse(m_reader.line(), m_reader.column(), m_reader.error());
            else if (row.isEmpty())
                return catalogue;
            else if (checkRow(row))
                catalogue->chips << chipOf(row);
        }
        return nullptr;
    }

    QString error() const { return m_error; } ///< "line:column: why"

private:
    void refuse(int line, int column, const QString& why)
    {
        m_error = QString("%1:%2: ").arg(QString::number(line), QString::number(column)) + why;
    }

    bool checkWidth(const CsvRow& row)
    {
        if (row.size() == kColumnCount)
            return true;
        const CsvField& field = row.size() > kColumnCount ? row[kColumnCount] : row.last();
        refuse(field.line, field.column,
            QString("%1 columns instead of %2")
                .arg(QString::number(row.size()), QString::number(kColumnCount)));
        return false;
    }

    void readHeader()
    {
        const CsvRow row = m_reader.next();
        if (!m_reader.error().isEmpty())
            return refuse(m_reader.line(), m_reader.column(), m_reader.error());
        if (row.isEmpty())
            return refuse(1, 1, "no row with column names");
        for (int i = 0; i < qMin(row.size(), kColumnCount); ++i) {
            if (row[i].text != kColumns[i].name)
                return refuse(row[i].line, row[i].column,
                    QString("the first row has to contain column names, here \"%1\"")
                        .arg(kColumns[i].name));
        }
        checkWidth(row);
    }

    bool checkRow(const CsvRow& row)
    {
        if (!checkWidth(row))
            return false;
        for (int i = 0; i < kColumnCount; ++i) {
            if (!kColumns[i].accepts(row[i].text)) {
                refuse(row[i].line, row[i].column,
                    QString("%1 is \"%2\", but has to be %3")
                        .arg(kColumns[i].name, row[i].text, kColumns[i].wanted));
                return false;
            }
        }
        return checkUnique(row);
    }

    bool checkUnique(const CsvRow& row)
    {
        const QPair<QString, QString> key(row[0].text, row[2].text);
        if (!m_seen.contains(key)) {
            m_seen << key;
            return true;
        }
        refuse(row[0].line, row[0].column,
            QString("part number %1 of device %2 is there already").arg(key.first, key.second));
        return false;
    }

    static ChipInfo chipOf(const CsvRow& row)
    {
        ChipInfo chip;
        for (int i = 0; i < kColumnCount; ++i) {
            if (kColumns[i].field)
                chip.*kColumns[i].field = row[i].text;
            else
                chip.resources << row[i].text;
        }
        return chip;
    }

    CsvReader m_reader;
    QSet<QPair<QString, QString>> m_seen;
    QString m_error;
};

}

ChipInfo Catalogue::find(const QString& partNumber, const QString& deviceName) const
{
    if (partNumber.isEmpty() && deviceName.isEmpty())
        return {};
    for (const ChipInfo& chip : chips) {
        if ((partNumber.isEmpty() || chip.partNumber == partNumber)
            && (deviceName.isEmpty() || chip.name == deviceName))
            return chip;
    }
    return {};
}

std::shared_ptr<const Catalogue> readCatalogue(const QString& path, QString* error)
{
    QString fault;
    const QString text = readText(path, &fault);
    std::shared_ptr<const Catalogue> catalogue;
    if (text.isNull()) {
        fault.prepend(' ');
    } else {
        CatalogueParser parser(text);
        catalogue = parser.parse();
        fault = parser.error();
    }
    if (!catalogue && error)
        *error = path + ':' + fault;
    return catalogue;
}

}
