// Any file through everything that reads configurations. What a reader accepts must come back from
// the file that the writer makes of it.
#include "fuzz_support.h"

#include "oxautils/config/checksum.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Core, typename Write, typename Read>
void roundTrip(const QList<Core*>& cores, const Write& write, const Read& read)
{
    static const QTemporaryDir directory("/dev/shm/fuzzXXXXXX");
    const QString first = directory.filePath("first");
    const QString second = directory.filePath("second");
    QFile::remove(first);
    write(cores, first);
    if (!QFile::exists(first))
        return; // a text got a character by reference that XML cannot hold
    bool ok = false;
    const QList<Core*> again = read(first, &ok, nullptr);
    require(ok, "what was written can be read");
    require(again.size() == cores.size(), "no core is lost");
    require(OXA::readOXACRCForXml(first) == OXA::computeOXACRCForXml(first)
            || OXA::computeOXACRCForXml(first).isEmpty(),
        "the checksum is that of the content");
    write(again, second);
    QList<Core*> third = read(second, &ok, nullptr);
    write(third, first);
    require(bytesOf(first) == bytesOf(second), "reading and writing settles");
    qDeleteAll(again);
    qDeleteAll(third);
}

}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceLog();
    const MemoryFile file(data, size);
    const QString path = file.path();
    const OXA::OxaMode mode = OXA::oxaModeFromOxaConfigFile(path);
    require(mode == OXA::Standard || mode == OXA::Lite || mode == OXA::Invalid, "one of three");
    OXA::versionFromOxaConfigFile(path);
    OXA::readOXACRCForXml(path);
    OXA::checkOXAStandardFile(path);
    OXA::checkOXALiteFile(path);
    OXA::computeOXACRCForXml(path);

    bool ok = false;
    QString error;
    const QList<OXA::AoCore*> cores = OXA::readOXAConfigFromXml(path, &ok, &error);
    require(ok || (cores.isEmpty() && !error.isEmpty()), "a failure says why");
    if (!cores.isEmpty())
        roundTrip(cores, OXA::writeOXAConfigToXml, OXA::readOXAConfigFromXml);
    qDeleteAll(cores);
    try {
        const QList<OXA::AOCore_Lite*> lite = OXA::readOXAConfigFromXml_Lite(path, &ok, &error);
        require(ok || (lite.isEmpty() && !error.isEmpty()), "a failure says why");
        if (!lite.isEmpty())
            roundTrip(lite, OXA::writeOXAConfigToXml_Lite, OXA::readOXAConfigFromXml_Lite);
        qDeleteAll(lite);
    } catch (const OXA::CompareException&) {
    }
    return 0;
}
