// SPDX-License-Identifier: Apache-2.0
#include "oxautils/voltage/voltage.h"

#include "oxautils/model/log_categories.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

namespace OXA {

namespace {

constexpr char kTable[] = "/../share/device/pn_voltage.csv";

enum Column {
    VccChoices = 3,
    VccMin,
    VccMax,
    VccxChoices,
    VccxMin,
    VccxMax,
    VccLdoChoices,
    VccLdoMin,
    VccLdoMax,
    ShortCircuitNote,
};

bool isEmptyLine(const QString& line) { return line.isEmpty() || line == "\n" || line == "\r\n"; }

// The first line that starts with one of `keys`, before the first empty line.
QString findRow(QFile& table, const QStringList& keys)
{
    for (;;) {
        QString line = QString::fromUtf8(table.readLine());
        if (isEmptyLine(line))
            return QString();
        for (const QString& key : keys) {
            if (line.startsWith(key))
                return line;
        }
    }
}

QStringList numbersOf(const QString& choices)
{
    static const QRegularExpression number(
        "\\d+(\\.\\d+)?", QRegularExpression::UseUnicodePropertiesOption);
    QStringList numbers;
    for (const QString& choice : choices.split('/')) {
        const QRegularExpressionMatch match = number.match(choice);
        if (match.hasMatch())
            numbers += match.captured();
    }
    return numbers;
}

// The interface's rule: a single choice keeps its unit, the first of several is a number.
QString defaultOf(const QString& choices)
{
    return choices.contains('/') ? numbersOf(choices).value(0) : choices;
}

}

Voltage::Voltage(const QString& deviceName, const QString& partNumber)
    : m_device(DEV::DeviceDb::instance().find(partNumber, deviceName))
{
    QFile table(QCoreApplication::applicationDirPath() + kTable);
    if (!table.open(QIODevice::ReadOnly)) {
        qCCritical(logVoltage, "read voltage error");
        return;
    }
    const QString key = m_device.name + ',' + m_device.variant + ',';
    const QString row = findRow(table, {key + "ALL,", key + m_device.package + ','});
    if (!row.isEmpty())
        data = row.split(',');
}

QString Voltage::getData(int column) const { return data.value(column); }

QString Voltage::getVCCMin() const { return getData(VccMin); }

QString Voltage::getVCCMax() const { return getData(VccMax); }

QString Voltage::getVCCXMin() const { return getData(VccxMin); }

QString Voltage::getVCCXMax() const { return getData(VccxMax); }

QString Voltage::getVCCLDOMin() const { return getData(VccLdoMin); }

QString Voltage::getVCCLDOMax() const { return getData(VccLdoMax); }

QStringList Voltage::getVCCOptionalValues() const { return numbersOf(getData(VccChoices)); }

QStringList Voltage::getVCCXOptionalValues() const { return numbersOf(getData(VccxChoices)); }

QStringList Voltage::getVCCLDOOptionalValues() const { return numbersOf(getData(VccLdoChoices)); }

QString Voltage::getVCCDefaultValue() const { return defaultOf(getData(VccChoices)); }

QString Voltage::getVCCXDefaultValue() const { return defaultOf(getData(VccxChoices)); }

QString Voltage::getVCCLDODefaultValue() const { return defaultOf(getData(VccLdoChoices)); }

bool Voltage::isVCCVCCXShortCircuit() const { return isShorted("VCC/VCCX"); }

bool Voltage::isVCCXVCCLDOShortCircuit() const { return isShorted("VCCX/VCC_LDO"); }

bool Voltage::isVCCVCCLDOShortCircuit() const { return isShorted("VCC/VCC_LDO"); }

// A note says "VCC/VCCX Short Circuit", alone or with " except " or " of " and a list of packages.
bool Voltage::isShorted(const QString& supplies) const
{
    const QString note = getData(ShortCircuitNote).trimmed();
    const QString always = supplies + " Short Circuit";
    const QString except = always + " except";
    const QString only = always + " of";
    if (note == always)
        return true;
    const auto lists = [this, &note](const QString& prefix) {
        return note.mid(prefix.size() + 1).split('/').contains(m_device.package);
    };
    if (note.startsWith(except))
        return !lists(except);
    return note.startsWith(only) && lists(only);
}

}
