// SPDX-License-Identifier: Apache-2.0
#include "target_run.h"

#include "oxautils/config/configuration.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace OXA_CAPTURE;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("TargetRun", text); }

// The address is that of OpenOCD, or a serial port with the rate at which the analyzer starts.
ChipAddress chipAt(const TargetRequest& request)
{
    static const QRegularExpression serial("^(/.*?|COM\\d+)(?:@(\\d{1,7}))?$");
    ChipAddress chip;
    chip.openocd = request.address;
    chip.tap = request.tap;
    chip.tapOption = tr("TAP");
    if (const auto match = serial.match(request.address); match.hasMatch()) {
        chip.serial = match.captured(1);
        chip.baud = match.captured(2).isEmpty() ? chip.baud : match.captured(2).toInt();
    }
    return chip;
}

QStringList textsOf(const Messages& messages)
{
    QStringList texts;
    for (const Message& message : messages)
        texts += message.message();
    return texts;
}

/// The configuration in the file `path`; errors are added to `problems`.
std::vector<BuiltConfiguration> buildsOf(
    const QString& path, OXA::Configuration& file, QStringList& problems)
{
    QString error;
    Messages messages;
    std::vector<BuiltConfiguration> builds;
    if (OXA::readConfiguration(path, file, &error))
        builds = builtConfigurations(path, file.cores, file.liteCores, messages);
    problems += textsOf(messages);
    if (!error.isEmpty())
        problems += error;
    return builds;
}

/// "1 of 4 windows"
QString windowsText(qint64 taken, qint64 wanted)
{
    if (taken < wanted)
        return tr("%1 of %2 windows").arg(QString::number(taken), QString::number(wanted));
    return taken == 1 ? tr("1 window") : tr("%1 windows").arg(taken);
}

QString remarkOf(const CoreOutcome& outcome)
{
    const CapturedCore& captured = outcome.captured;
    const bool waited = !captured.windows.empty() && captured.windows.back().untriggered;
    const qint64 taken = qint64(captured.windows.size()) - int(waited);
    QString text = tr("did not trigger: %1").arg(captured.progress);
    if (captured.triggered())
        text = tr("%1, %2").arg(outcome.finished ? tr("captured") : tr("stopped"),
            windowsText(taken, outcome.run.setup.windowNum));
    for (const qint64 window : outcome.forced) {
        if (window < taken)
            text += tr(", window %1 forced").arg(window);
    }
    const auto byOthers = std::count_if(captured.windows.begin(), captured.windows.end(),
        [](const CapturedWindow& window) { return window.place.forced; });
    if (byOthers > 0)
        text += tr(", %1 forced by another core").arg(byOthers);
    if (waited)
        text += tr("; its last %1 samples are shown, without a trigger")
                    .arg(captured.windows.back().samples.size());
    return text;
}

}

TargetRun::TargetRun(TargetRequest request)
    : m_request(std::move(request))
    , m_cores(standardCores(m_request.cores))
    , m_liteCores(liteCores(m_request.cores))
{
}

void TargetRun::work()
{
    OXA::Configuration file;
    CaptureRun run;
    run.goesOn = [this] { return !m_stop; };
    run.isAbandoned = [this] { return m_abandoned.load(); };
    run.forces = [this] { return m_force.exchange(false); };
    run.progress = progress;
    const bool isFound = find(run, file);
    if (isFound || m_stop)
        m_result.problems.clear(); // about configurations that do not match the chip
    if (!isFound)
        return;
    if (!run.session().namesWarning().isEmpty())
        m_result.warnings += run.session().namesWarning();
    tellCores(run);
    if (m_request.arm && !m_stop && plan(run))
        capture(run);
}

/// Finds the device built from the edited cores, from a file, or from a remembered build.
bool TargetRun::find(CaptureRun& run, OXA::Configuration& file)
{
    const bool hasFile = !m_request.builtFrom.isEmpty();
    std::vector<CaptureRun::ReadBuilds> configurations {[this, hasFile] {
        Messages messages;
        auto builds = builtConfigurations(m_request.configFile, m_cores, m_liteCores, messages);
        if (!hasFile)
            m_result.problems += textsOf(messages);
        return builds;
    }};
    if (hasFile)
        configurations.push_back(
            [&] { return buildsOf(m_request.builtFrom, file, m_result.problems); });
    QString error;
    const bool isFound = run.find(chipAt(m_request), configurations, &error);
    if (!isFound)
        m_result.problems += error;
    return isFound;
}

void TargetRun::tellCores(const CaptureRun& run) const
{
    QList<FoundCore> cores;
    for (size_t i = 0; i < run.session().identities().size(); ++i) {
        const CoreIdentity& identity = run.session().identities()[i];
        cores += {run.session().build().cores[i].name(),
            tr("%1 signals, %2 samples")
                .arg(QString::number(identity.signalCount), QString::number(identity.depth))};
    }
    found(cores,
        run.remembered()               ? run.remembered()->text()
            : run.configuration() == 0 ? QString()
                                       : QFileInfo(m_request.builtFrom).fileName());
}

/// Plans the run of each core; false when the chip cannot do it.
bool TargetRun::plan(CaptureRun& run)
{
    const std::vector<size_t> chosen(m_request.chosen.begin(), m_request.chosen.end());
    Messages messages;
    run.plan(m_cores, m_liteCores, chosen, messages);
    m_result.problems += textsOf(messages);
    return messages.isEmpty();
}

void TargetRun::capture(CaptureRun& run)
{
    QString error;
    if (m_request.repeat != 1)
        return captureSeries(run);
    run.followed = [this](std::vector<CoreOutcome>& outcomes) {
        takeAll(outcomes);
        captured(m_result);
    };
    if (!run.capture({}, &error)) {
        m_result.problems += error;
        return;
    }
    std::vector<CoreOutcome> outcomes = run.read();
    takeAll(outcomes);
}

/// Keeps a capture in place of the one before.
void TargetRun::takeAll(std::vector<CoreOutcome>& outcomes)
{
    TargetResult result;
    result.problems = m_result.problems;
    result.warnings = m_result.warnings;
    m_result = result;
    for (CoreOutcome& outcome : outcomes)
        take(std::move(outcome));
}

void TargetRun::take(CoreOutcome&& outcome)
{
    if (!outcome.error.isEmpty()) {
        m_result.problems += outcome.error;
        return;
    }
    const size_t place = outcome.run.core;
    const OXA::AoCore* core = m_request.cores.at(int(place))->standard.get();
    m_result.places.push_back(int(place));
    m_result.waveforms.push_back(
        withForced(capturedWaveform(outcome.captured, core), outcome.forced));
    m_result.remarks += remarkOf(outcome);
    m_result.capture->push_back(std::move(outcome.captured));
}
