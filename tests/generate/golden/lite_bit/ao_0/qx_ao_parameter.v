parameter STORAGE_DEPTH = 1024;
parameter DATA_OUT_SHIFT_WIDTH = 1;
parameter MEM_DATA_WIDTH = 1;
parameter SIG_PORT_WIDTH = 1;
