// CRC-32 of the names that the cores' bits have in the configuration
`define OXA_NAMES_0 96'h6496ed1c000000003c446834
`define OXA_NAMES_1 64'h00000000f53d2ce1
