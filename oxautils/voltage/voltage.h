// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_VOLTAGE_VOLTAGE_H
#define OXAUTILS_VOLTAGE_VOLTAGE_H

#include "oxautils/oxautils_export.h"

#include <dev/device_db.h>

#include <QString>
#include <QStringList>

namespace OXA {

/// The allowed supplies VCC, VCCX and VCC_LDO of one part, and which of them its package shorts.
///
/// The table is share/device/pn_voltage.csv beside the program's own folder: a row is a device, a
/// supply variant and a package ("ALL" for every one), then for each supply its choices
/// ("1.8V/3.3V"), minimum and maximum, and a note on shorts. The first row for the part is used;
/// rows end with the first empty line. The constructor reads it once: without the table, which is a
/// critical message, or a row, every text and list is empty and nothing is shorted.
class OXAUTILS_EXPORT Voltage {
public:
    /// Finds the row of the part that the device database has under `partNumber` and `deviceName`.
    Voltage(const QString& deviceName, const QString& partNumber);

    /// The row's columns unchanged, the last one with its line ending; empty without a row.
    QStringList data;

    /// The text of a column, counted from 0; empty when the row has none.
    QString getData(int column) const;

    /// The least or most voltage of a supply, in volts, as in the table.
    /// @{
    QString getVCCMin() const;
    QString getVCCMax() const;
    QString getVCCXMin() const;
    QString getVCCXMax() const;
    QString getVCCLDOMin() const;
    QString getVCCLDOMax() const;
    /// @}

    /// The numbers of a supply's choices, without units; choices without a number are omitted.
    /// @{
    QStringList getVCCOptionalValues() const;
    QStringList getVCCXOptionalValues() const;
    QStringList getVCCLDOOptionalValues() const;
    /// @}

    /// A supply's first choice as a number, or its only choice as in the table ("1.2V"). Empty when
    /// no choice has a number.
    /// @{
    QString getVCCDefaultValue() const;
    QString getVCCXDefaultValue() const;
    QString getVCCLDODefaultValue() const;
    /// @}

    /// Whether the package connects the two supplies.
    /// @{
    bool isVCCVCCXShortCircuit() const;
    bool isVCCXVCCLDOShortCircuit() const;
    bool isVCCVCCLDOShortCircuit() const;
    /// @}

private:
    bool isShorted(const QString& supplies) const;

    DEV::DeviceArg m_device;
};

}

#endif
