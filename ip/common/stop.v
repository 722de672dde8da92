// SPDX-License-Identifier: Apache-2.0
// Stops elaboration; the name of a missing module is the reason.
`ifdef VERILATOR
`define AO_STOP(REASON) $error(`"REASON`");
`else
`define AO_STOP(REASON) REASON u_stop ();
`endif
