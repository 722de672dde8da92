#ifndef OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_P_H
#define OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_P_H

#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <norvosyn/qx_synthesis_sync_proxy.h>

#include <atomic>

namespace OXA {

/// What an OXAProxyQxSyn works with. `proxy` belongs to that object as its child.
struct _oxa_proxy_qxsyn {
    NorvoSyn::QxSynthesisSyncProxy* proxy = nullptr;
    QStringList errors;
    std::atomic<bool> stopAsked {false}; ///< since the run began: the engine may not know of it yet

    int std_generate(OxaArg arg);
    int lite_generate(OxaArg arg);
    bool std_synthesize(OxaArg arg, QList<AoCore*> cores);
    bool lite_synthesize(OxaArg arg, QList<AOCore_Lite*> cores);

private:
    bool synthesize(const OxaArg& arg, const char* project, const QStringList& files,
        const QStringList& includePaths);
};

}

#endif
