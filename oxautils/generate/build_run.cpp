// SPDX-License-Identifier: Apache-2.0
#include "oxautils/generate/build_run.h"

#include "files/replace_file.h"
#include "oxautils/check/checked.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/generate/board_files.h"
#include "oxautils/generate/device_rules.h"
#include "oxautils/generate/file_names.h"
#include "oxautils/generate/netlist_cells.h"
#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/oxa_proxy_qx_syn.h"
#include "oxautils/generate/template_files.h"
#include "oxautils/generate/work_dir.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/resource/analyzer_estimate.h"

#include <norvosyn/qx_synthesis_sync_proxy.h>

#include <QDir>

#include <algorithm>

using OXA_TOOL::AnalyzerAmounts;
using OXA_TOOL::AnalyzerResource;

namespace OXA {

namespace {

using TooMuch = bool (AnalyzerResource::*)(const AnalyzerAmounts&, const AnalyzerAmounts&) const;

/// The resources for which `tooMuch` is true, as lines to show.
QStringList misfits(
    const QString& what, const AnalyzerAmounts& taken, const DEV::ChipInfo& part, TooMuch tooMuch)
{
    QStringList texts;
    const AnalyzerAmounts available = OXA_TOOL::amountsOf(part);
    for (const AnalyzerResource& resource : OXA_TOOL::analyzerResources()) {
        if ((resource.*tooMuch)(taken, available))
            texts
                += shownText(QString("%1 %2 %3, %4 has %5; capture, compare or count less, or use"
                                     " a larger part")
                                 .arg(what, QString::number(taken.*resource.amount), resource.units,
                                     part.partNumber, QString::number(available.*resource.amount)));
    }
    return texts;
}

/// A file with the netlist: the engine's file when the output is a stream.
QString writtenNetlist(const OxaArg& arg)
{
    if (!OXA_FILES::isStream(arg.outputFile))
        return arg.outputFile;
    const QStringList runs = QDir(arg.workDir).entryList({"*_synthesis"}, QDir::Dirs);
    return arg.workDir + '/' + runs.value(0) + "/netlist.v";
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The resources of these cells.
AnalyzerAmounts amountsOf(const QMap<QString, int>& cells)
{
    return {cells.value("QX_LUT4"),
        cells.value("QX_DFF") + cells.value("QX_DFFC") + cells.value("QX_DFFR"),
        cells.value("QX_BSRAM"), cells.value("QX_SSRAM")};
}

}

BuildRun::BuildRun(const OxaArg& arg, bool synthesize)
    : m_arg(arg)
    , m_synthesize(synthesize)
{
}

BuildRun::~BuildRun() = default;

BuildResult BuildRun::check() const
{
    const ParseOnce once;
    BuildResult result;
    Configuration configuration;
    QString error;
    if (!readConfiguration(m_arg.configFile, configuration, &error))
        result.messages += error;
    else
        result.messages += wordFaults(m_arg.configFile, configuration);
    if (!result.messages.isEmpty()) {
        result.end = BuildEnd::Refused;
        return result;
    }
    const DEV::ChipInfo part = chipOf(m_arg);
    const Checked checked = checkFile(m_arg.configFile, link ? nullptr : &part);
    result.problems = checked.problems;
    if (m_synthesize) // another tool may need less
        result.messages = misfits(
            "the analyzer takes about", checked.amounts, part, &AnalyzerResource::cannotFit);
    if (configuration.isEmpty())
        result.end = BuildEnd::NoCores;
    else if (std::any_of(result.problems.begin(), result.problems.end(), stopsBuild))
        result.end = BuildEnd::Invalid;
    else if (!result.messages.isEmpty())
        result.end = BuildEnd::TooLarge;
    return result;
}

BuildResult BuildRun::run()
{
    const ParseOnce once;
    BuildResult result;
    WorkDir workDir;
    QString error;
    if (!workDir.claim(m_arg.workDir, &error)) {
        result.end = BuildEnd::Refused;
        result.messages += shownText(error);
        return result;
    }
    QByteArray content;
    Configuration configuration;
    if (!remembered.original.isEmpty()) { // now, for a user may edit it during synthesis
        content = bytesOf(m_arg.configFile);
        readConfiguration(m_arg.configFile, configuration, nullptr);
    }
    result = m_synthesize ? synthesize() : generate();
    if (result.end == BuildEnd::Done)
        remember(configuration, content);
    const bool failed = result.end == BuildEnd::Failed || result.end == BuildEnd::Refused;
    if (failed && stopped())
        result.end = BuildEnd::Stopped;
    return result;
}

void BuildRun::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = true;
    if (m_generator)
        m_generator->tryToStop();
}

bool BuildRun::stopped()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_stopped;
}

void BuildRun::setGenerator(OXAProxyQxSyn* generator)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_generator = generator;
    if (generator && m_stopped)
        generator->tryToStop(); // before the run: it does not start then
}

bool BuildRun::writeTemplates() const
{
    if (!templates)
        return true;
    Configuration configuration;
    QString error;
    return readConfiguration(m_arg.configFile, configuration, &error)
        && OXA::writeTemplates(m_arg, configuration);
}

void BuildRun::remember(const Configuration& configuration, const QByteArray& content) const
{
    BuildSums sums;
    if (content.isEmpty() || configuration.isEmpty() || rememberedBuildsDir().isEmpty()
        || !generatedSums(m_arg.workDir, configuration, sums, nullptr))
        return;
    RememberedBuild build = remembered;
    build.workDir = QFileInfo(m_arg.workDir).absoluteFilePath();
    build.time = QDateTime::currentDateTime();
    rememberBuild(build, content, sums);
}

// What the link takes beside the analyzer.
bool BuildRun::writeLink(BuildResult& result, QString* error) const
{
    const bool isUart = QLatin1String(link->name) == DEV::kUart;
    return (!isUart || writeUartDefines(m_arg.workDir, uart, error))
        && copyBoardFiles(m_arg, *link, result, error);
}

BuildResult BuildRun::generate()
{
    BuildResult result;
    OxaPrepare prepared;
    const int errorsBefore = loggedErrors ? loggedErrors() : 0;
    if (prepared.prepare(m_arg) != 1 || !writeTemplates())
        result.end = BuildEnd::Refused;
    else if (loggedErrors && loggedErrors() > errorsBefore)
        result.end = BuildEnd::Failed;
    result.files = prepared.files;
    if (templates)
        result.files += m_arg.workDir + '/' + TEMPLATE_FILE_NAME;
    result.includePaths = prepared.includePaths;
    QString error;
    if (result.end == BuildEnd::Done && link && !writeLink(result, &error)) {
        result.end = BuildEnd::Failed;
        result.messages += shownText(error);
    }
    return result;
}

BuildResult BuildRun::synthesize()
{
    BuildResult result;
    OXAProxyQxSyn generator(nullptr);
    auto* engine = generator.findChild<NorvoSyn::QxSynthesisSyncProxy*>();
    if (engine && progress)
        QObject::connect(engine, &NorvoSyn::QxSynthesisSyncProxy::progress, engine, progress,
            Qt::DirectConnection);
    setGenerator(&generator);
    const int status = generator.startGenerate(m_arg);
    setGenerator(nullptr);
    result.messages = generator.errorMessages();
    if (status != 0) {
        result.end = status < 0 ? BuildEnd::Refused : BuildEnd::Failed;
        return result;
    }
    if (!writeTemplates()) {
        result.end = BuildEnd::Refused;
        return result;
    }
    result.files += m_arg.outputFile;
    result.cells = cellCounts(writtenNetlist(m_arg));
    result.takes = amountsOf(result.cells);
    const QStringList texts
        = misfits("the netlist takes", result.takes, chipOf(m_arg), &AnalyzerResource::exceeds);
    if (!texts.isEmpty())
        result.end = BuildEnd::TooLarge;
    result.messages += texts;
    return result;
}

}
