`define DEF_1BIT_MODE
