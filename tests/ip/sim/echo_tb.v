// SPDX-License-Identifier: Apache-2.0
// A user's register of 8 bits behind ER1: it captures what it was last given.
module echo_tb;
    reg tck = 0, tms = 1, tdi = 0;
    wire tdo;
    reg [7:0] values = 0;
    reg clocks = 0;

    wire tck_c, tms_c, tdi_c, tdo_c;
    IBUF tck_ibuf (.I(tck), .O(tck_c));
    IBUF tms_ibuf (.I(tms), .O(tms_c));
    IBUF tdi_ibuf (.I(tdi), .O(tdi_c));
    OBUF tdo_obuf (.I(tdo_c), .O(tdo));

    wire user_tck, user_tdi, shift_or_capture, update, er1;
    reg [7:0] shift = 0, given = 0;
    QX_JTAG u_qx_jtag (
        .tms_pad_i(tms_c), .tck_pad_i(tck_c), .tdi_pad_i(tdi_c), .tdo_pad_o(tdo_c),
        .tck_o(user_tck), .tdi_o(user_tdi),
        .shift_dr_capture_dr_o(shift_or_capture), .update_dr_o(update), .enable_er1_o(er1),
        .tdo_er1_i(shift[0]), .tdo_er2_i(1'b0)
    );

    reg shifting = 0;
    always @(posedge user_tck) begin
        shifting <= er1 && !update && (shift_or_capture || shifting); // also in a pause
        if (er1 && shift_or_capture) shift <= shifting ? {user_tdi, shift[7:1]} : given;
        if (er1 && update) given <= shift;
    end

    initial $oxa_target(tck, tms, tdi, tdo, values, clocks);
endmodule
