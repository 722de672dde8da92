module qx_oxa(
    d,
    \bus[1] ,
    \bus[0] ,
    \a%2 ,
    \host[0] ,
    \é€ ,
    \%1 ,
    \addr[3] ,
    \addr[2] ,
    \addr[1] ,
    \addr[0] ,
    clk,
    tms_pad_i,
    tck_pad_i,
    tdi_pad_i,
    tdo_pad_o
);

input d;
input \bus[1] ;
input \bus[0] ;
input \a%2 ;
input \host[0] ;
input \é€ ;
input \%1 ;
input \addr[3] ;
input \addr[2] ;
input \addr[1] ;
input \addr[0] ;
input clk;
input tms_pad_i;
input tck_pad_i;
input tdi_pad_i;
output tdo_pad_o;

wire d;
wire \bus[1] ;
wire \bus[0] ;
wire \a%2 ;
wire \host[0] ;
wire \é€ ;
wire \%1 ;
wire \addr[3] ;
wire \addr[2] ;
wire \addr[1] ;
wire \addr[0] ;
wire clk;
wire tms_pad_i;
wire tck_pad_i;
wire tdi_pad_i;
wire tdo_pad_o;
wire tms_i_c;
wire tck_i_c;
wire tdi_i_c;
wire tdo_o_c;
wire [9:0] control0;
wire [9:0] control1;
wire oxa_jtag_tck;
wire oxa_jtag_reset;
wire run_test_idle_er1;
wire run_test_idle_er2;
wire shift_dr_capture_dr;
wire update_dr;
wire pause_dr;
wire enable_er1;
wire enable_er2;
wire oxa_jtag_tdi;
wire tdo_er1;

IBUF tms_ibuf (
    .I(tms_pad_i),
    .O(tms_i_c)
);

IBUF tck_ibuf (
    .I(tck_pad_i),
    .O(tck_i_c)
);

IBUF tdi_ibuf (
    .I(tdi_pad_i),
    .O(tdi_i_c)
);

OBUF tdo_obuf (
    .I(tdo_o_c),
    .O(tdo_pad_o)
);

QX_JTAG  u_qx_jtag(
    .tms_pad_i(tms_i_c),
    .tck_pad_i(tck_i_c),
    .tdi_pad_i(tdi_i_c),
    .tdo_pad_o(tdo_o_c),
    .tck_o(oxa_jtag_tck),
    .test_logic_reset_o(oxa_jtag_reset),
    .run_test_idle_er1_o(run_test_idle_er1),
    .run_test_idle_er2_o(run_test_idle_er2),
    .shift_dr_capture_dr_o(shift_dr_capture_dr),
    .update_dr_o(update_dr),
    .pause_dr_o(pause_dr),
    .enable_er1_o(enable_er1),
    .enable_er2_o(enable_er2),
    .tdi_o(oxa_jtag_tdi),
    .tdo_er1_i(tdo_er1),
    .tdo_er2_i(1'b0)
);

qx_con_top  u_icon_top(
    .tck_i(oxa_jtag_tck),
    .tdi_i(oxa_jtag_tdi),
    .tdo_o(tdo_er1),
    .rst_i(oxa_jtag_reset),
    .control0(control0[9:0]),
    .control1(control1[9:0]),
    .enable_i(enable_er1),
    .shift_dr_capture_dr_i(shift_dr_capture_dr),
    .update_dr_i(update_dr)
);

ao_top_0  u_la0_top(
    .control(control0[9:0]),
    .trig0_i({\addr[3] ,\addr[2] ,\addr[1] ,\addr[0] }),
    .trig10_i(\%1 ),
    .data_i({d,\bus[1] ,\bus[0] ,\a%2 ,\host[0] ,\é€ ,\%1 }),
    .clk_i(clk)
);

ao_top_1  u_la1_top(
    .control(control1[9:0]),
    .data_i(d),
    .clk_i(clk)
);

endmodule
