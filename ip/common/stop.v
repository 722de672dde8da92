// Stops elaboration; the reason is the name of a module that there is not.
`ifdef VERILATOR
`define AO_STOP(REASON) $error(`"REASON`");
`else
`define AO_STOP(REASON) REASON u_stop ();
`endif
