// SPDX-License-Identifier: Apache-2.0
// Generates and synthesizes an analyzer: host CONFIGURATION WORK_DIRECTORY IP_DIRECTORY
#include <oxautils/oxautils.h>

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const QString workDir = argv[2];
    OXA::OXAProxyQxSyn generator(nullptr);
    return generator.startGenerate(
        {argv[1], workDir + ".netlist.v", "HOST-1", "QX3AN-6A", workDir, argv[3], ""});
}
