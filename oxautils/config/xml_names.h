// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_CONFIG_XML_NAMES_H
#define OXAUTILS_CONFIG_XML_NAMES_H

/// @file
/// The element and attribute names of configuration files, in both modes.
namespace OXA {

constexpr char LATEST_VERSION[] = "3.0"; ///< that is written

/// The name of an element (docs/configuration-file.md).
/// @{
constexpr char NODE_OXA_CONFIG[] = "OXA_CONFIG";
constexpr char NODE_VERSION[] = "Version";
constexpr char NODE_MODE[] = "Mode";
constexpr char NODE_AOCORE[] = "AoCore";
constexpr char NODE_AOCORE_LITE[] = "AoCore_Lite";
constexpr char NODE_SIGNAL_LIST[] = "SignalList";
constexpr char NODE_SIGNAL[] = "Signal";
constexpr char NODE_BUS[] = "Bus";
constexpr char NODE_TRIGGER_LIST[] = "Triggers";
constexpr char NODE_TRIGGER[] = "Trigger";
constexpr char NODE_MATCH_UNITS[] = "MatchUnits";
constexpr char NODE_MATCH_UNIT[] = "MatchUnit";
constexpr char NODE_EXPRESSIONS[] = "Expressions";
constexpr char NODE_EXPRESSION[] = "Expression";
constexpr char NODE_EVENTS[] = "Events"; ///< only of a core that has such
constexpr char NODE_STORAGE[] = "Storage"; ///< only of a core that does not store all samples
constexpr char NODE_OXA_ID[] = "OXA_ID";
/// @}

/// The name of an attribute (docs/configuration-file.md).
/// @{
constexpr char ATTR_INDEX[] = "index";

constexpr char ATTR_AO_SAMPLE_CLK[] = "sample_clock";
constexpr char ATTR_AO_TRIG_TYPE[] = "trig_type";
constexpr char ATTR_AO_STORAGE_DEPTH[] = "storage_depth";
constexpr char ATTR_AO_WINDOW_NUM[] = "window_num";
constexpr char ATTR_AO_CAPTURE_AMOUNT[] = "capture_amount";
constexpr char ATTR_AO_IMPLEMENTATION[] = "implementation";
constexpr char ATTR_AO_TRIGGER_POS[] = "trigger_pos";
constexpr char ATTR_AO_MODULE_NAME[] = "module_name";
constexpr char ATTR_FORCE_TRIGGER_FALLING[] = "force_trigger_by_falling_edge";
constexpr char ATTR_AO_CAPTURE_INIT_DATA_ENABLED[] = "capture_init_data_enabled";
constexpr char ATTR_AO_CAPTURE_FROM_TR[] = "capture_from_trigger"; ///< only in older layouts

constexpr char ATTR_AO_LITE_IMPLEMENTATION[] = "implemention"; ///< the Lite format's spelling
constexpr char ATTR_AO_INPUT_REGISTER_ENABLED[] = "input_register_enabled";

constexpr char ATTR_MU_ENABLED[] = "enabled";
constexpr char ATTR_MU_MATCH_TYPE[] = "match_type";
constexpr char ATTR_MU_COUNTER_ENABLE[] = "counter_enable";
constexpr char ATTR_MU_COUNTER_WIDTH[] = "counter_width";
constexpr char ATTR_MU_COUNTER[] = "counter";
constexpr char ATTR_MU_CONTINUOUS[] = "countinuous"; ///< the format's spelling
constexpr char ATTR_MU_FUNC[] = "func";
constexpr char ATTR_MU_VALUE0[] = "value0";
constexpr char ATTR_MU_VALUE1[] = "value1";
constexpr char ATTR_MU_TRIGGER[] = "trigger";

constexpr char ATTR_EXP_TYPE[] = "type";
constexpr char ATTR_EXP_IMPLEMENTATION[] = "ex_implementation";

constexpr char ATTR_EVENTS_FORCED_BY[] = "forced_by";
constexpr char ATTR_EVENTS_TRIGGER_OUT[] = "trigger_out";
constexpr char ATTR_EVENTS_STAMPS[] = "stamps";

constexpr char ATTR_STORAGE_KEEP[] = "keep";
constexpr char ATTR_STORAGE_GAP_BITS[] = "gap_bits";
constexpr char ATTR_STORAGE_WATCH[] = "watch";
constexpr char ATTR_STORAGE_WHEN[] = "when";
constexpr char ATTR_STORAGE_LIMIT[] = "limit";

constexpr char ATTR_SIGNAL_CAPTURE_ENABLE[] = "capture_enable";
constexpr char ATTR_SIGNAL_TEXT[] = "text";
constexpr char ATTR_BUS_NAME[] = "name"; ///< a bus's text, or its name when it has no text
constexpr char ATTR_BUS_RESTORE_NAME[] = "restorename"; ///< a bus's name when it has a text
/// @}

}

#endif
