// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_GENERATE_FILE_NAMES_H
#define OXAUTILS_GENERATE_FILE_NAMES_H

/// @file
/// The names of generated files and directories; the installed cores include them by name.
namespace OXA {

/// The name of a generated file.
/// @{
constexpr char AO_CAPTUREINIT_FILE_NAME[] = "qx_ao_init.v";
constexpr char OXA_TOP_FILE_NAME[] = "qx_oxa_top.v";
constexpr char AO_EXPRESSION_FILE_NAME[] = "qx_ao_expression.v";
constexpr char AO_TOP_DEFINE_FILE_NAME[] = "qx_ao_top_define.v";
constexpr char AO_PARAMETER_FILE_NAME[] = "qx_ao_parameter.v";
constexpr char CON_PARAMETER_FILE_NAME[] = "qx_con_parameter.v";
constexpr char CON_TOP_DEFINE_FILE_NAME[] = "qx_con_top_define.v";
constexpr char NAME_SUMS_FILE_NAME[] = "qx_oxa_names.v";
constexpr char NETLIST_FILE_NAME[] = "qx_oxa_netlist.v"; ///< when the user names no other
constexpr char UART_DEFINE_FILE_NAME[] = "qx_uart_define.v";
constexpr char TEMPLATE_FILE_NAME[] = "qx_oxa_template.v";
constexpr char VHDL_TEMPLATE_FILE_NAME[] = "qx_oxa_template.vhd";
/// @}
constexpr char NAME_AO[] = "ao_"; ///< a core's directory, followed by its position
constexpr char BOARD_DIR[] = "board"; ///< what a family of devices needs beside the analyzer
constexpr char NAME_CON[] = "ao_control"; ///< the control core's directory

/// A file at the top of a work directory that marks it as such; emptying the directory keeps it.
constexpr char WORK_DIR_MARK[] = ".oxa-generated";

}

#endif
