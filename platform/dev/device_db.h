// SPDX-License-Identifier: Apache-2.0
#ifndef DEV_DEVICE_DB_H
#define DEV_DEVICE_DB_H

#include <QList>
#include <QString>
#include <QStringList>

#ifdef OXADEV_LIBRARY
#define OXADEV_EXPORT Q_DECL_EXPORT
#else
#define OXADEV_EXPORT Q_DECL_IMPORT
#endif

/// The device catalogue, which a host can replace.
namespace DEV {

/// The names of an orderable part.
struct OXADEV_EXPORT DeviceArg {
    QString partNumber; ///< for orders
    QString series; ///< the family
    QString name; ///< the device: the die and its version, "QX1N-9"
    QString grade; ///< temperature grade
    QString speed; ///< speed grade
    QString package; ///< the package with its pin count
    QString variant; ///< supply variant: "LV", "UV", "ZV"; may be empty
};

/// One part of the catalogue. An unknown part is an empty record.
struct OXADEV_EXPORT ChipInfo : DeviceArg {
    /// 0 LUTs, 1 adders, 2 registers, 3 I/Os, 4 shadow SRAM with its two-letter unit, 5 block SRAM
    /// in kbit.
    QStringList resources;
};

/// The device catalogue of the process.
///
/// A host can replace it by defining this class's functions itself; so the class has no members
/// (the catalogue is in the source file), and no function is inline or virtual. All functions can
/// be called from any thread.
class OXADEV_EXPORT DeviceDb {
public:
    static DeviceDb& instance(); ///< the only one

    /// The part with the number `partNumber`, of the device `deviceName` when several devices have
    /// the number; when one of the two is empty, the other selects. An empty record when there is
    /// none.
    ChipInfo find(const QString& partNumber, const QString& deviceName) const;

    /// Every part, in the order of the catalogue.
    QList<ChipInfo> chips() const;

    /// Replaces the catalogue by the file `catalogue`. When it cannot be read or has a malformed
    /// row, nothing changes: false, and `error` (if not null) has the place and the reason.
    bool load(const QString& catalogue, QString* error = nullptr);
};

}

#endif
