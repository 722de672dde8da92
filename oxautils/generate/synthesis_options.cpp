// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/synthesis_options.h"

namespace OXA {

const QStringList COMMON_SYN_OPTIONS = {
    "set_option -frequency auto",
    "set_option -maxfan 10000",
    "set_option -update_models_cp 0",
    "set_option -rw_check_on_ram 1",
    "set_option -run_prop_extract 1",
    "set_option -symbolic_fsm_compiler 1",
    "set_option -resource_sharing 1",
    "set_option -pipe 1",
    "set_option -retiming 0",
    "set_option -write_apr_constraint 1",
    "set_option -vlog_std sysv",
    "set_option -compiler_compatible 0",
    "set_option -multi_file_compilation_unit 1",
    "set_option -looplimit 2000",
    "set_option -fix_gated_and_generated_clocks 1",
    "set_option -disable_io_insertion 1",
};

}
