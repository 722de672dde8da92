// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_OXACAPTURE_H
#define OXACAPTURE_OXACAPTURE_H

/// All public headers of the library: waveforms, the trigger model, targets and the files of
/// captures.
#include "oxacapture/files/capture_file.h"
#include "oxacapture/files/capture_result.h"
#include "oxacapture/files/gtkw_writer.h"
#include "oxacapture/files/numbered_path.h"
#include "oxacapture/message.h"
#include "oxacapture/oxacapture_export.h"
#include "oxacapture/progress.h"
#include "oxacapture/simulator/bench_simulation.h"
#include "oxacapture/simulator/early_build.h"
#include "oxacapture/simulator/simulated_target.h"
#include "oxacapture/simulator/simulation.h"
#include "oxacapture/simulator/target_player.h"
#include "oxacapture/target/analyzer_client.h"
#include "oxacapture/target/bit_string.h"
#include "oxacapture/target/built_configuration.h"
#include "oxacapture/target/capture_run.h"
#include "oxacapture/target/capture_series.h"
#include "oxacapture/target/capture_session.h"
#include "oxacapture/target/core_identity.h"
#include "oxacapture/target/core_status.h"
#include "oxacapture/target/jtag_link.h"
#include "oxacapture/target/openocd_link.h"
#include "oxacapture/target/probe.h"
#include "oxacapture/target/remote_bitbang_link.h"
#include "oxacapture/target/serial_link.h"
#include "oxacapture/target/stream_socket.h"
#include "oxacapture/target/window_decoder.h"
#include "oxacapture/trigger/core_plan.h"
#include "oxacapture/trigger/trigger_model.h"
#include "oxacapture/trigger/trigger_setup.h"
#include "oxacapture/trigger/trigger_table.h"
#include "oxacapture/waveform/sample_table.h"
#include "oxacapture/waveform/signal_finder.h"
#include "oxacapture/waveform/vcd_reader.h"
#include "oxacapture/waveform/waveform_design.h"
#include "oxacapture/waveform/waveform_sampler.h"

#endif
