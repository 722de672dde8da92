// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_P_H
#define OXAUTILS_GENERATE_OXA_PROXY_QX_SYN_P_H

#include "oxautils/generate/oxa_arg.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <norvosyn/qx_synthesis_sync_proxy.h>

#include <mutex>

namespace OXA {

/// The state of an OXAProxyQxSyn, which owns `proxy` as its child.
struct _oxa_proxy_qxsyn {
    NorvoSyn::QxSynthesisSyncProxy* proxy = nullptr;
    QStringList errors;

    int generate(const OxaArg& arg);
    int std_generate(OxaArg arg);
    int lite_generate(OxaArg arg);
    bool std_synthesize(OxaArg arg, QList<AoCore*> cores);
    bool lite_synthesize(OxaArg arg, QList<AOCore_Lite*> cores);

    // Until its files are written, a run is stopped here: the engine is not running yet, and would
    // apply the stop to a later run.
    void beginFiles();
    bool endFiles(); ///< whether the run was stopped meanwhile
    bool stopFiles(); ///< false when no files are being written

private:
    bool synthesize(const OxaArg& arg, const char* project, const QStringList& files,
        const QStringList& includePaths);

    std::mutex m_mutex; // guards what follows
    bool m_writesFiles = false;
    bool m_stopped = false;
};

}

#endif
