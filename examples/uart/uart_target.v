// The transmitter and its analyzer in one simulation, for captures through OpenOCD.
//
// Described in docs/co-simulation.md.
`default_nettype none

module uart_target;
    reg        clk = 0;
    reg        rst = 1;
    reg        start = 0;
    reg  [7:0] data = "A";
    wire       tx;
    wire       busy;

    uart_tx uart_tx(.clk(clk), .rst(rst), .start(start), .data(data), .tx(tx), .busy(busy));

    // The alphabet, repeatedly.
    always #1 clk = !clk;

    always @(negedge clk) begin
        rst <= 0;
        start <= !rst && !busy && !start;
        if (start)
            data <= data == "Z" ? "A" : data + 1;
    end

    // The client drives the pads: simulation time advances at its requests.
    reg  tck_pad_i = 0, tms_pad_i = 1, tdi_pad_i = 0;
    wire tdo_pad_o;
    reg  values = 0, clocks = 0;  // for a recorded waveform; not used
    initial $oxa_target(tck_pad_i, tms_pad_i, tdi_pad_i, tdo_pad_o, values, clocks);

    // From qx_oxa_template.v, with paths of the signals.
    oxa_analyzer u_oxa_analyzer (
        .uart_tx_busy(uart_tx.busy),
        .uart_tx_tx(uart_tx.tx),
        .uart_tx_start(uart_tx.start),
        .uart_tx_baud_tick(uart_tx.baud_tick),
        .uart_tx_state(uart_tx.state),
        .uart_tx_bit_count(uart_tx.bit_count),
        .uart_tx_data(uart_tx.data),
        .uart_tx_clk(uart_tx.clk),
        .tms_pad_i(tms_pad_i),
        .tck_pad_i(tck_pad_i),
        .tdi_pad_i(tdi_pad_i),
        .tdo_pad_o(tdo_pad_o)
    );
endmodule

`default_nettype wire
