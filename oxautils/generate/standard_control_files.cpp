// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/standard_files.h"
#include "oxautils/generate/verilog_file.h"

namespace OXA {

bool std_generateFileForAoCtrl(const OxaArg& arg, const QList<AoCore*>& cores)
{
    const QString directory = arg.workDir + "/" + NAME_CON;
    return writeVerilogFile(directory, CON_TOP_DEFINE_FILE_NAME, [&](QTextStream& out) {
        for (int i = 0; i < cores.size(); ++i)
            out << "`define DEF_AO_" << i << "_EN\n";
        if (needsZvDefine(chipOf(arg)))
            out << "`define ZV1_EN\n";
    }) && writeVerilogFile(directory, CON_PARAMETER_FILE_NAME, [&](QTextStream& out) {
        out << "parameter NUMBER_AOS = " << cores.size() << ";\n";
    });
}

}
