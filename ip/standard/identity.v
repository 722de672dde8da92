// SPDX-License-Identifier: Apache-2.0
    // The core's identity (docs/jtag-protocol.md)
    /* verilator lint_off WIDTH */
    function [16*32-1:0] port_list;  // of the ports with a bit in `present`
        input [15:0] present;
        reg [16*32-1:0] entry;
        integer i, n;
        begin
            port_list = 0;
            n = 0;
            for (i = 0; i < 16; i = i + 1) begin
                if (present[i]) begin
                    entry = port_width(i) << 8 | i;
                    port_list = port_list | entry << 32 * n;
                    n = n + 1;
                end
            end
        end
    endfunction

    function [16*32-1:0] unit_list;
        input unused;
        reg [16*32-1:0] entry;
        begin
            unit_list = 0;
//@repeat U 16
            entry = COUNTER_@U@ << 24 | TYPE_@U@ << 16 | MATCHER_@U@ << 8 | @U@;
            if (ON_@U@) unit_list = unit_list | entry << 32 * RANK_@U@;
//@end U
        end
    endfunction

    localparam [15:0] PORTS_PRESENT = 16'd0
//@repeat U 16
`ifdef AO_TRIG_@U@
        | 16'd1 << @U@
`endif
//@end U
        ;
    localparam [7:0] ID_PORTS = NUM_TRIG_PORTS;
    localparam FORCING_AT = 192 + 32 * (NUM_TRIG_PORTS + UNITS);
    localparam IDENTITY_BITS = FORCING_AT + (SOURCES > 0 ? 32 : 0);
    localparam CONSTANTS = IDENTITY_BITS > 256 ? 1 << $clog2(IDENTITY_BITS) : 256;
    localparam [3:0] ID_SOURCES = SOURCES;
    localparam [0:0] ID_LIMITED = LIMIT > 0;
    localparam [7:0] ID_GAP_BITS = GAP_BITS;
    localparam [15:0] ID_OPTIONS = {4'd0, ID_SOURCES, STAMPS, ID_LIMITED, KEEP, 1'b0, DYNAMIC, ARMED, FALLING};
    localparam [15:0] ID_SIGNALS = SIG_PORT_WIDTH;
    localparam [7:0] ID_LEVELS = LEVELS;
    localparam [7:0] ID_UNITS = UNITS;
    localparam [7:0] ID_ADDRESS_BITS = ADDRESS_BITS;
    localparam [31:0] ID_DEPTH = STORAGE_DEPTH;
    localparam [192+1024+32-1:0] ID_LISTS
        = {544'd0, port_list(PORTS_PRESENT), 192'd0}
        | {unit_list(1'b0), 704'd0} >> 32 * (16 - NUM_TRIG_PORTS)
        | {1232'd0, FORCING} << FORCING_AT;
    localparam [191:0] ID_HEAD
        = {32'd1 << WINDOW_BITS, ID_DEPTH + 32'd0, ID_GAP_BITS, ID_ADDRESS_BITS, 8'd@P@, ID_UNITS, ID_PORTS,
           ID_LEVELS, ID_SIGNALS, ID_OPTIONS, 8'd1, PROTOCOL};
    localparam [CONSTANTS-1:0] IDENTITY = ID_LISTS | ID_HEAD;

    // CRC-32 of the names of the clock, the data and each port
    localparam NAMES_SPACE = 1 << $clog2(32 * (NUM_TRIG_PORTS + 2));
    localparam [NAMES_SPACE-1:0] NAMES = `OXA_NAMES_@P@;
    /* verilator lint_on WIDTH */
