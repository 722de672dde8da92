`define DEF_AO_0_EN
`define DBG_SUPPORTED_AO_0
