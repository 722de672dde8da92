// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "log.h"
#include "options.h"

#include "files/replace_file.h"
#include "oxautils/config/oxa_mode.h"

#include <QFileInfo>

namespace {

constexpr char kSummary[] = "Write an empty configuration";

constexpr char kHelp[]
    = R"(An existing file is never replaced. Add cores with `oxa add`, which also creates
files, with oxa-editor, or by hand (docs/configuration-file.md).)";

struct Options {
    QString file;
    bool lite = false;
    bool json = false;
};

int run(const Options& options, Io& io)
{
    const bool isStream = OXA_FILES::isStream(options.file);
    if (QFileInfo::exists(options.file) && !isStream) {
        io.err.error(options.file + " exists; remove it first, or name another file", options.file);
        return kUnusable;
    }
    const int errorsBefore = loggedErrors();
    OXA::fillInfoForEmptyOxaConfig(options.file, options.lite ? OXA::Lite : OXA::Standard);
    if (loggedErrors() > errorsBefore)
        return kUnusable; // the library has logged the reason
    const char* mode = options.lite ? "Lite" : "Standard";
    if (options.json)
        io.out.setResult({
            {"file", options.file},
            {"mode", mode        },
        });
    else
        (isStream ? io.err : io.out) << options.file << ": an empty " << mode << " configuration\n";
    return kDone;
}

}

void addNew(CLI::App& app, Io& io, int& status)
{
    Command command(app, "new", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.text("FILE", options->file, "The configuration to write, usually *.oxa").required();
    command.flag(
        "--lite", options->lite, "For Lite cores, which have no triggers (default: Standard)");
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
