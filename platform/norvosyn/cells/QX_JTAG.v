// SPDX-License-Identifier: Apache-2.0
// The device's JTAG test access port with its two user chains: ports only, for synthesis. For
// simulation, there is a model.
`default_nettype none
// Empty: no port is used or driven.
/* verilator lint_off UNUSEDSIGNAL */
/* verilator lint_off UNDRIVEN */
(* blackbox *)
module QX_JTAG (
    input wire tms_pad_i,
    input wire tck_pad_i,
    input wire tdi_pad_i,
    output wire tdo_pad_o,
    output wire tck_o,
    output wire test_logic_reset_o,
    output wire run_test_idle_er1_o,
    output wire run_test_idle_er2_o,
    output wire shift_dr_capture_dr_o,
    output wire update_dr_o,
    output wire pause_dr_o,
    output wire enable_er1_o,
    output wire enable_er2_o,
    output wire tdi_o,
    input wire tdo_er1_i,
    input wire tdo_er2_i
);
endmodule
/* verilator lint_on UNDRIVEN */
/* verilator lint_on UNUSEDSIGNAL */
`default_nettype wire
