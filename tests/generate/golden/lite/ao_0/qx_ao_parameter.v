parameter TRIG_TYPE = 1;
parameter STORAGE_DEPTH = 256;
parameter DATA_OUT_SHIFT_WIDTH = 3;
parameter MEM_DATA_WIDTH = 3;
parameter SIG_PORT_WIDTH = 3;
