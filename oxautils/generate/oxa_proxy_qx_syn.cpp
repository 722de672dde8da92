// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/oxa_proxy_qx_syn.h"

#include "oxautils/config/standard_config.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/oxa_proxy_qx_syn_p.h"
#include "oxautils/generate/run.h"
#include "oxautils/generate/standard_files.h"

namespace OXA {

namespace {

constexpr int kDone = 0;
constexpr int kSynthesisFailed = 1;
constexpr int kUnusable = -1;

}

OXAProxyQxSyn::OXAProxyQxSyn(QObject* parent)
    : QObject(parent)
    , d(new _oxa_proxy_qxsyn)
{
    d->proxy = new NorvoSyn::QxSynthesisSyncProxy(this);
}

OXAProxyQxSyn::~OXAProxyQxSyn() { delete d; }

int OXAProxyQxSyn::startGenerate(OxaArg arg)
{
    d->errors.clear();
    d->beginFiles();
    const int result = d->generate(arg);
    d->endFiles();
    return result;
}

void OXAProxyQxSyn::tryToStop()
{
    if (!d->stopFiles())
        d->proxy->tryToStop();
}

QStringList OXAProxyQxSyn::errorMessages() const { return d->errors; }

int _oxa_proxy_qxsyn::generate(const OxaArg& arg)
{
    OxaMode mode = Invalid;
    if (!mayWriteOutput(arg) || !clearWorkDir(arg, mode))
        return kUnusable;
    switch (mode) {
    case Standard:
        return std_generate(arg);
    case Lite:
        return lite_generate(arg);
    default:
        return kUnusable;
    }
}

void _oxa_proxy_qxsyn::beginFiles()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_writesFiles = true;
    m_stopped = false;
}

bool _oxa_proxy_qxsyn::endFiles()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_writesFiles = false;
    return m_stopped;
}

bool _oxa_proxy_qxsyn::stopFiles()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = m_stopped || m_writesFiles;
    return m_writesFiles;
}

int _oxa_proxy_qxsyn::std_generate(OxaArg arg)
{
    const QList<AoCore*> cores = readOXAConfigFromXml(arg.configFile);
    const CoreOwner owner(cores);
    if (cores.isEmpty())
        return kUnusable;
    std_generateFileForAoCtrl(arg, cores);
    std_generateFilesForAoCore(arg, cores);
    writeNames(arg, cores);
    std_generateOxaTop(arg, cores);
    return std_synthesize(arg, cores) ? kDone : kSynthesisFailed;
}

int _oxa_proxy_qxsyn::lite_generate(OxaArg arg)
{
    const QList<AOCore_Lite*> cores = readLiteCores(arg.configFile);
    const CoreOwner owner(cores);
    if (cores.isEmpty())
        return kUnusable;
    lite_generateFilesForAoCtrl(arg, cores);
    lite_generateFilesForAoCore(arg, cores);
    writeNames(arg, cores.mid(0, 1)); // only this core is built
    lite_generateOxaTop(arg, cores);
    return lite_synthesize(arg, cores) ? kDone : kSynthesisFailed;
}

}
