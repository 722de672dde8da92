// The analyzer with one port for each bus or signal, under names of Verilog and VHDL.
//
// An instance to copy. Where it says "from", the configuration's name cannot be used here: replace
// the text in parentheses by that signal of your design.
//
//     oxa_analyzer u_oxa_analyzer (
//         .count(count[9:4]),
//         .u_count(u_count), // from u/count
//         .u_count_2(u_count_2), // from u/count[1:0]
//         .u_count_12(u_count_12), // from u/Count[12]
//         .soc_rev(soc_rev), // from soc/rev[2:4]
//         .line(line[0:1]),
//         .status({full, irq[2]}),
//         .unnamed(unnamed), // from u/ready, u/valid
//         .a_b_c_3(a_b_c_3), // from a.b/c[3]
//         .a_b_c_3_2(a_b_c_3_2), // from a/b/c[3]
//         .a_3_b(a_3_b), // from a[3]/b
//         .gaps({Gaps[5], Gaps[3], Gaps[2]}),
//         .reg_1(reg_1), // from reg[1]
//         .sig_reg(sig_reg), // from reg
//         .sig_process(sig_process), // from Process
//         .sig_logic(sig_logic), // from logic
//         .until_0(until_0), // from until[0]
//         .sig_7_seg(sig_7_seg), // from 7/_seg__
//         .zero_07(zero_07), // from zero[07]
//         .zero_7(zero[7]),
//         .u_far_999999999(u_far_999999999), // from u/far[999999999]
//         .u_far_9999999999(u_far_9999999999), // from u/far[9999999999]
//         .host_0(host[0]),
//         .unnamed_2(unnamed_2), // from é€
//         .tms_pad_i_2(tms_pad_i_2), // from tms/pad[i]
//         .std_logic_2(std_logic_2), // from std/logic
//         .x_1(x_1), // from x);//--"%1
//         .u_count_2_2(u_count_2_2), // from u/count_2
//         .soc_clk(soc_clk), // from soc/clk
//         .trigger1_o_2(trigger1_o_2), // from Trigger1/o
//         .u_clk(u_clk), // from u/CLK
//         .u_clk_2(u_clk_2), // from u/clk
//         .tms_pad_i(tms_pad_i),
//         .tck_pad_i(tck_pad_i),
//         .tdi_pad_i(tdi_pad_i),
//         .tdo_pad_o(tdo_pad_o),
//         .trigger1_o(trigger1_o)
//     );
module oxa_analyzer (
    input  wire [9:4] count,
    input  wire u_count,
    input  wire [1:0] u_count_2,
    input  wire u_count_12,
    input  wire [2:4] soc_rev,
    input  wire [0:1] line,
    input  wire [1:0] status,
    input  wire [1:0] unnamed,
    input  wire a_b_c_3,
    input  wire a_b_c_3_2,
    input  wire a_3_b,
    input  wire [2:0] gaps,
    input  wire reg_1,
    input  wire sig_reg,
    input  wire sig_process,
    input  wire sig_logic,
    input  wire until_0,
    input  wire sig_7_seg,
    input  wire zero_07,
    input  wire zero_7,
    input  wire u_far_999999999,
    input  wire u_far_9999999999,
    input  wire host_0,
    input  wire unnamed_2,
    input  wire tms_pad_i_2,
    input  wire std_logic_2,
    input  wire x_1,
    input  wire u_count_2_2,
    input  wire soc_clk,
    input  wire trigger1_o_2,
    input  wire u_clk,
    input  wire u_clk_2,
    input  wire tms_pad_i,
    input  wire tck_pad_i,
    input  wire tdi_pad_i,
    output wire tdo_pad_o,
    output wire trigger1_o
);

    qx_oxa u_qx_oxa (
        .\count[9] (count[9]),
        .\count[8] (count[8]),
        .\count[7] (count[7]),
        .\count[6] (count[6]),
        .\count[5] (count[5]),
        .\count[4] (count[4]),
        .\u/count (u_count),
        .\u/count[1] (u_count_2[1]),
        .\u/count[0] (u_count_2[0]),
        .\u/Count[12] (u_count_12),
        .\soc/rev[2] (soc_rev[2]),
        .\soc/rev[3] (soc_rev[3]),
        .\soc/rev[4] (soc_rev[4]),
        .\line[0] (line[0]),
        .\line[1] (line[1]),
        .full(status[1]),
        .\irq[2] (status[0]),
        .\u/ready (unnamed[1]),
        .\u/valid (unnamed[0]),
        .\a.b/c[3] (a_b_c_3),
        .\a/b/c[3] (a_b_c_3_2),
        .\a[3]/b (a_3_b),
        .\Gaps[5] (gaps[2]),
        .\Gaps[3] (gaps[1]),
        .\Gaps[2] (gaps[0]),
        .\reg[1] (reg_1),
        .\reg (sig_reg),
        .Process(sig_process),
        .\logic (sig_logic),
        .\until[0] (until_0),
        .\7/_seg__ (sig_7_seg),
        .\zero[07] (zero_07),
        .\zero[7] (zero_7),
        .\u/far[999999999] (u_far_999999999),
        .\u/far[9999999999] (u_far_9999999999),
        .\host[0] (host_0),
        .\é€ (unnamed_2),
        .\tms/pad[i] (tms_pad_i_2),
        .\std/logic (std_logic_2),
        .\x);//--"%1 (x_1),
        .\u/count_2 (u_count_2_2),
        .\soc/clk (soc_clk),
        .\Trigger1/o (trigger1_o_2),
        .\u/CLK (u_clk),
        .\u/clk (u_clk_2),
        .tms_pad_i(tms_pad_i),
        .tck_pad_i(tck_pad_i),
        .tdi_pad_i(tdi_pad_i),
        .tdo_pad_o(tdo_pad_o),
        .trigger1_o(trigger1_o)
    );

endmodule
