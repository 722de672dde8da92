// CRC-32 of the names that the cores' bits have in the configuration
`define OXA_NAMES_0 64'h492d58daf53d2ce1
