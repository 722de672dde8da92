// SPDX-License-Identifier: Apache-2.0
#include "dev/device_db.h"

#include "dev/catalogue.h"

#include <QLoggingCategory>

#include <mutex>

namespace DEV {
namespace {

Q_LOGGING_CATEGORY(logDev, "oxautils.dev")

using Snapshot = std::shared_ptr<const Catalogue>;

constexpr char kCompiledIn[] = ":/oxadev/devices.csv";
constexpr char kEnvironment[] = "OXA_DEVICE_DB";

/// The initial catalogue: the file that the environment names, or the built-in one.
Snapshot initialCatalogue()
{
    QString error;
    const QString path = qEnvironmentVariable(kEnvironment);
    if (!path.isEmpty()) {
        if (Snapshot named = readCatalogue(path, &error))
            return named;
        qCCritical(logDev).noquote() << kEnvironment << "ignored:" << error;
    }
    Snapshot builtIn = readCatalogue(kCompiledIn, &error);
    if (!builtIn)
        qCCritical(logDev).noquote() << error;
    return builtIn ? builtIn : std::make_shared<const Catalogue>();
}

/// The process's catalogue: readers take a snapshot, `load` replaces it.
class Current {
public:
    Snapshot get()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_catalogue;
    }

    void set(Snapshot catalogue)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_catalogue.swap(catalogue);
    }

private:
    std::mutex m_mutex;
    Snapshot m_catalogue = initialCatalogue();
};

Current& current()
{
    static Current instance;
    return instance;
}

}

DeviceDb& DeviceDb::instance()
{
    static DeviceDb db;
    return db;
}

ChipInfo DeviceDb::find(const QString& partNumber, const QString& deviceName) const
{
    return current().get()->find(partNumber, deviceName);
}

QList<ChipInfo> DeviceDb::chips() const { return current().get()->chips; }

bool DeviceDb::load(const QString& catalogue, QString* error)
{
    Snapshot loaded = readCatalogue(catalogue, error);
    if (!loaded)
        return false;
    current().set(std::move(loaded));
    return true;
}

}
