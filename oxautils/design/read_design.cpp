// SPDX-License-Identifier: Apache-2.0
#include "oxautils/design/read_design.h"

#include "files/fail.h"
#include "oxautils/design/design_script.h"
#include "oxautils/design/elaborate.h"
#include "oxautils/design/rtlil_module.h"
#include "oxautils/design/source_scan.h"
#include "oxautils/model/shown_text.h"

namespace OXA {

namespace {

constexpr char kNetlist[] = "design.il";

/// An undeclared name with dots is a hierarchical reference.
QStringList brokenReferences(const QStringList& warnings)
{
    QStringList lines;
    for (const QString& line : warnings) {
        const QString name = line.section('`', 1).section('\'', 0, 0);
        if (line.contains("is implicitly declared") && name.contains('.'))
            lines += shownText(line)
                + " Yosys does not follow references into the hierarchy: it has no driver.";
    }
    return lines;
}

}

bool readDesign(
    const DesignSources& sources, Design& design, QString* error, const DesignHooks& hooks)
{
    DesignScript script(hooks);
    if (!script.isValid(error) || !script.addReading(sources, error))
        return false;
    script.addStage(70, "writing the signals");
    // Keeps nets, memories, registers and instances.
    script.add("delete", {"t:$*", "t:*dff*", "%d", "t:*DFF*", "%d", "t:$paramod*", "%d"});
    script.add("write_rtlil", {script.path(kNetlist)});
    if (!script.run(error))
        return false;
    RtlilDesign modules;
    const SourceScan scan(sources.files);
    design = Design();
    design.warnings = scan.warnings() + brokenReferences(script.warnings());
    const bool ok = readRtlil(script.path(kNetlist), modules) && elaborate(modules, scan, design);
    design.kept = modules.kept;
    if (ok)
        return true;
    return fail(error, "cannot read the design that Yosys wrote");
}

}
