// CRC-32 of the names that the cores' bits have in the configuration
`define OXA_NAMES_0 128'h4527d075fb1abe7552e3336ef53d2ce1
`define OXA_NAMES_1 64'hb19d7becf53d2ce1
