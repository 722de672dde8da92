// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_OXAUTILS_H
#define OXAUTILS_OXAUTILS_H

/// @file
/// Everything that a host may use, in one include.

/// @namespace OXA
/// Configurations of analyzers: model, files, checks, encoding, generation and builds.

#include "oxautils/check/check.h"
#include "oxautils/check/problem.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/crc16.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/names_file.h"
#include "oxautils/config/oxa_mode.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/design/add_core.h"
#include "oxautils/design/attach.h"
#include "oxautils/design/choose_signals.h"
#include "oxautils/design/design.h"
#include "oxautils/design/design_index.h"
#include "oxautils/design/design_rules.h"
#include "oxautils/design/design_sources.h"
#include "oxautils/design/local_parameters.h"
#include "oxautils/design/natural_order.h"
#include "oxautils/design/read_design.h"
#include "oxautils/design/value_names.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/encoding/match_registers.h"
#include "oxautils/encoding/signals_text.h"
#include "oxautils/encoding/storage_text.h"
#include "oxautils/encoding/trigger_expression.h"
#include "oxautils/encoding/unit_text.h"
#include "oxautils/generate/build_run.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/fingerprint.h"
#include "oxautils/generate/lite_files.h"
#include "oxautils/generate/name_sums.h"
#include "oxautils/generate/oxa_arg.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/oxa_proxy_qx_syn.h"
#include "oxautils/generate/remembered_builds.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/synthesis_options.h"
#include "oxautils/generate/uart_defines.h"
#include "oxautils/generate/work_dir.h"
#include "oxautils/model/ao_core.h"
#include "oxautils/model/ao_core_lite.h"
#include "oxautils/model/bit_range.h"
#include "oxautils/model/core_events.h"
#include "oxautils/model/core_storage.h"
#include "oxautils/model/edit_distance.h"
#include "oxautils/model/limits.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"
#include "oxautils/oxautils_version.h"
#include "oxautils/resource/analyzer_estimate.h"
#include "oxautils/resource/capture_memory.h"
#include "oxautils/resource/resource_estimate.h"
#include "oxautils/voltage/voltage.h"

// Qt's build files define it for programs that link Qt Widgets, as OxaUtils::Editor does.
#ifdef QT_WIDGETS_LIB
#include "oxautils/editor/match_unit_dialog.h"
#include "oxautils/editor/match_unit_model.h"
#include "oxautils/editor/oxautils_common.h"
#include "oxautils/editor/tree_line_edit.h"
#endif

#include <dev/device_db.h>
#include <norvosyn/qx_synthesis_sync_proxy.h>
#include <norvosyn/request_keys.h>

#endif
