// SPDX-License-Identifier: Apache-2.0
#ifndef NORVOSYN_REQUEST_KEYS_H
#define NORVOSYN_REQUEST_KEYS_H

/// @file
/// The keys of a synthesis request (see `QxSynthesisSyncProxy::run`).
namespace NorvoSyn {

constexpr char WORK_DIR[] = "work_dir"; ///< text: directory for scripts and logs
constexpr char PROJECT_NAME[] = "project_name"; ///< text
constexpr char ARG_DEVICE[] = "device"; ///< map of the four ARG_DEVICE_ texts
constexpr char ARG_DEVICE_PN[] = "pn"; ///< the part number
constexpr char ARG_DEVICE_NAME[] = "name"; ///< the device: "QX1N-9"
constexpr char ARG_DEVICE_PACKAGE[] = "package"; ///< with its pin count
constexpr char ARG_DEVICE_SPEED[] = "speed"; ///< the speed grade
constexpr char ARG_FILE[] = "files"; ///< list of maps with ARG_FILE_PATH and ARG_FILE_TYPE
constexpr char ARG_FILE_PATH[] = "path"; ///< text
constexpr char ARG_FILE_TYPE[] = "type"; ///< text
constexpr char TYPE_VERILOG[] = "verilog"; ///< the only ARG_FILE_TYPE
constexpr char ARG_OPTION[] = "options"; ///< map with repeated keys, the three OPT_ keys
constexpr char OPT_OUTPUT_VERILOG[] = "output_file"; ///< text: the netlist
constexpr char OPT_DISABLE_IO[] = "disable_insert_pad"; ///< "1": no pad buffers at the ports
/// Text, may be repeated: a `QMap` of Qt 6 has one value for a key, so that it is a `QStringList`
/// there.
constexpr char OPT_INCLUDE_PATH[] = "include_path";
constexpr char INI_CONFIG[] = "iniconfig"; ///< list of "KEY=VALUE" texts

}

#endif
