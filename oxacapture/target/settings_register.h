// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_SETTINGS_REGISTER_H
#define OXACAPTURE_TARGET_SETTINGS_REGISTER_H

#include "oxacapture/target/core_identity.h"

namespace OXA_CAPTURE {

/// Why the core cannot run with `setup`; empty when it can.
QStringList settingsFaults(const CoreIdentity& core, const TriggerSetup& setup);

/// The settings register for `setup` (docs/jtag-protocol.md); false, with `error`, when the core is
/// not built for it.
bool settingsBits(
    const CoreIdentity& core, const TriggerSetup& setup, BitString& bits, QString* error);

/// The tables register for the levels of `setup`, whose count is that of the core's expressions.
bool tableBits(
    const CoreIdentity& core, const TriggerSetup& setup, BitString& bits, QString* error);

}

#endif
