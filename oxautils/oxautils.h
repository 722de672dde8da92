#ifndef OXAUTILS_OXAUTILS_H
#define OXAUTILS_OXAUTILS_H

/// Everything that a host may use, in one include.

#include "oxautils/config/checksum.h"
#include "oxautils/config/crc16.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"

#include <dev/device_db.h>
#include <norvosyn/qx_synthesis_sync_proxy.h>
#include <norvosyn/request_keys.h>

#endif
