`define DEF_AO_0_EN
`define DEF_AO_1_EN
