`define DEF_AO_0_EN
`define DBG_SUPPORTED_AO_0
`define ZV1_EN
