#include "platform_double.h"

#include <dev/device_db.h>
#include <norvosyn/qx_synthesis_sync_proxy.h>

PlatformDouble& PlatformDouble::instance()
{
    static PlatformDouble platform;
    return platform;
}

namespace DEV {

DeviceDb& DeviceDb::instance()
{
    static DeviceDb db;
    return db;
}

// A device is what its name says: "...-ZV" a variant, "...-NOSHADOW" one without such memory.
ChipInfo DeviceDb::find(const QString& partNumber, const QString& deviceName) const
{
    PlatformDouble::instance().lookups += partNumber + "|" + deviceName;
    if (PlatformDouble::instance().onLookup)
        PlatformDouble::instance().onLookup();
    ChipInfo chip;
    chip.partNumber = partNumber;
    chip.name = QString(deviceName).remove("-ZV").remove("-NOSHADOW");
    chip.variant = deviceName.contains("-ZV") ? "ZV" : "LV";
    chip.package = "QN48";
    chip.speed = "C6/I5";
    chip.resources = QStringList {"1152", "0", "945", "41"};
    if (!deviceName.contains("-NOSHADOW"))
        chip.resources << "4Kb"
                       << "72";
    return chip;
}

}

namespace NorvoSyn {

QxSynthesisSyncProxy::QxSynthesisSyncProxy(QObject* parent)
    : QObject(parent)
{
}

int QxSynthesisSyncProxy::run(const QMap<QString, QVariant>& request)
{
    PlatformDouble::instance().requests += request;
    return PlatformDouble::instance().result;
}

void QxSynthesisSyncProxy::tryToStop() { ++PlatformDouble::instance().stops; }

QStringList QxSynthesisSyncProxy::messages() const { return PlatformDouble::instance().messages; }

}
