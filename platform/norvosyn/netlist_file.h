#ifndef NORVOSYN_NETLIST_FILE_H
#define NORVOSYN_NETLIST_FILE_H

#include <QString>

namespace NorvoSyn {

/// Puts the engine's `netlist` in the place of `output`, at once: whoever reads `output` sees the
/// old or the new one whole. False when there is no netlist or it cannot be written: `error` says
/// which, and `output` is as it was.
bool deliverNetlist(const QString& netlist, const QString& output, QString* error);

}

#endif
