// A host that answers for the device catalogue and the synthesis engine itself.
#include <oxautils/oxautils.h>

#include <QCoreApplication>
#include <QFile>

namespace {

int finds = 0;
int runs = 0;

}

namespace DEV {

DeviceDb& DeviceDb::instance()
{
    static DeviceDb db;
    return db;
}

ChipInfo DeviceDb::find(const QString& partNumber, const QString& deviceName) const
{
    ++finds;
    ChipInfo chip;
    chip.partNumber = partNumber;
    chip.name = deviceName;
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
    ++runs;
    return request.value(PROJECT_NAME).toString() == "oxa_std" ? 0 : 1;
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    OXA::OxaArg arg;
    arg.workDir = application.arguments().value(1);
    arg.configFile = arg.workDir + ".oxa";
    arg.package = "QX3AN-6A";
    OXA::writeOXAConfigToXml({new OXA::AoCore(0)}, arg.configFile);

    OXA::OXAProxyQxSyn generator(nullptr);
    if (generator.startGenerate(arg) != 0 || runs != 1 || finds == 0)
        return 1;
    OXA::OxaPrepare prepared;
    if (prepared.prepare(arg) != 1 || !prepared.files.value(4).endsWith("qx_con_top_6k.v"))
        return 2;
    return QFile::exists(arg.workDir + "/ao_0/qx_ao_init.v") ? 0 : 3;
}
