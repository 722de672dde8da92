#ifndef OXACAPTURE_TRIGGER_DYNAMIC_EXPRESSION_H
#define OXACAPTURE_TRIGGER_DYNAMIC_EXPRESSION_H

#include "oxacapture/trigger/trigger_setup.h"

namespace OXA_CAPTURE {

/// The table of an expression that is loaded into the core, as the configuration's own compiler
/// makes it for the `enabled` units (16 flags): M0 to M15, !, &, ^, | and parentheses.
///
/// False for anything else, with the reason in `error`.
OXACAPTURE_EXPORT bool compileDynamic(
    const QString& text, const std::vector<bool>& enabled, TriggerTable& table, QString& error);

}

#endif
