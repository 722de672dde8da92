#include "target_run.h"

#include "oxa/configuration.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

using namespace OXA_CAPTURE;

namespace {

QString tr(const char* text) { return QCoreApplication::translate("TargetRun", text); }

QStringList textsOf(const Messages& messages)
{
    QStringList texts;
    for (const Message& message : messages)
        texts += message.message();
    return texts;
}

// The first bit of a core that another signal is connected to, of two lists of one length.
QString firstOther(const QStringList& is, const QStringList& asked)
{
    const int place = int(std::mismatch(is.begin(), is.end(), asked.begin()).first - is.begin());
    return tr("%1 instead of %2").arg(is.value(place), asked.value(place));
}

// What the chip, whose cores are wired as `built`, would have to be wired as for `wanted`.
QStringList otherWires(const CorePlan& built, const CorePlan& wanted)
{
    QStringList texts;
    if (built.request.clock != wanted.request.clock)
        texts += tr("the sample clock %1").arg(built.request.clock);
    const auto& is = built.request.fields;
    const auto& asked = wanted.request.fields;
    for (size_t field = 0; field < is.size() && field < asked.size(); ++field) {
        if (is[field].size() == asked[field].size() && is[field] != asked[field])
            texts += (field == 0
                             ? tr("other data signals: ")
                             : tr("other signals at trigger port %1: ")
                                   .arg(built.core->availableTriggers().at(int(field) - 1)->index))
                + firstOther(is[field], asked[field]);
    }
    return texts;
}

QStringList otherHardware(
    const CoreIdentity& identity, const CorePlan& built, const CorePlan& wanted)
{
    if ((built.core == nullptr) != (wanted.core == nullptr))
        return {tr("cores of the other kind")};
    return (wanted.core ? differences(identity, *wanted.core) : differences(identity, *wanted.lite))
        + otherWires(built, wanted);
}

}

/// A configuration that the chip may be built from.
struct TargetRun::Candidate {
    QString name; ///< empty: as edited
    Configuration file;
    std::vector<BuiltConfiguration> builds;
};

TargetRun::TargetRun(TargetRequest request)
    : m_request(std::move(request))
{
}

TargetRun::~TargetRun() = default;

bool TargetRun::fail(const QString& message)
{
    m_result.problems += message;
    return false;
}

void TargetRun::addEdited()
{
    auto edited = std::make_unique<Candidate>();
    const bool standard = !m_request.cores.isEmpty() && m_request.cores.first()->standard;
    const QList<OXA::AoCore*> cores
        = standard ? standardCores(m_request.cores) : QList<OXA::AoCore*>();
    const QList<OXA::AOCore_Lite*> lite
        = standard ? QList<OXA::AOCore_Lite*>() : liteCores(m_request.cores);
    Messages messages;
    edited->builds = builtConfigurations(m_request.configFile, cores, lite, messages);
    m_invalid = textsOf(messages);
    m_candidates.push_back(std::move(edited));
}

/// Reads the file that the chip may be built from; what is wrong with it is told.
void TargetRun::addFile()
{
    auto file = std::make_unique<Candidate>();
    file->name = m_request.builtFrom;
    QString said;
    TextOut err(&said);
    Messages messages;
    if (readConfiguration(file->name, file->file, err))
        file->builds
            = builtConfigurations(file->name, file->file.cores, file->file.liteCores, messages);
    m_result.problems += textsOf(messages);
    if (!said.isEmpty())
        m_result.problems += said.trimmed();
    m_candidates.push_back(std::move(file));
}

void TargetRun::work()
{
    addEdited();
    OpenOcdLink link;
    if (m_stop || !connectTo(link) || !find(link)) {
        if (m_stop)
            m_result.problems.clear();
        return;
    }
    m_result.problems.clear(); // about what the chip is not built from
    if (!m_session->namesWarning().isEmpty())
        m_result.warnings += m_session->namesWarning();
    tellCores();
    if (!m_request.arm || m_stop || !plan())
        return;
    link.setGoesOn([this, more = aSecondLonger([this] { return !m_stop; })] {
        return !m_abandoned && more();
    });
    if (m_session->arm(m_runs) && watch()) {
        const bool wasStopped = m_stop;
        link.setGoesOn([this, wasStopped] { return !m_abandoned && (wasStopped || !m_stop); });
        return readAll();
    }
    fail(m_session->error());
    for (const CoreRun& run : m_runs)
        m_session->stop(run.core);
}

bool TargetRun::connectTo(OpenOcdLink& link)
{
    link.setGoesOn([this] { return !m_stop; });
    return link.connectTo(m_request.address) || fail(link.error());
}

/// Finds the device whose analyzer is built from one of the candidates.
bool TargetRun::find(OpenOcdLink& link)
{
    const QStringList taps
        = m_request.tap.isEmpty() ? link.candidates() : QStringList(m_request.tap);
    if (taps.isEmpty())
        return fail(
            tr("The chain has several devices; name one as TAP: %1").arg(link.taps().join(", ")));
    QString error;
    m_session = findAnalyzer(
        link, taps, [this](CaptureSession& session) { return matches(session); },
        [this] { return !m_stop; }, error);
    return m_session != nullptr || fail(error);
}

bool TargetRun::matches(CaptureSession& session)
{
    if (matches(session, *m_candidates.front()))
        return true;
    if (m_candidates.size() == 1 && !m_request.builtFrom.isEmpty())
        addFile(); // only now: it takes a while
    return m_candidates.size() > 1 && matches(session, *m_candidates.back());
}

bool TargetRun::matches(CaptureSession& session, const Candidate& candidate)
{
    if (candidate.builds.empty() || !session.match(candidate.builds))
        return false;
    m_built = &candidate;
    return true;
}

void TargetRun::tellCores() const
{
    QList<FoundCore> cores;
    for (size_t i = 0; i < m_session->identities().size(); ++i) {
        const CoreIdentity& identity = m_session->identities()[i];
        cores += {m_session->build().cores[i].name(),
            tr("%1 signals, %2 samples")
                .arg(QString::number(identity.signalCount), QString::number(identity.depth))};
    }
    found(cores, m_built->name);
}

/// What the cores are to do; false when the chip cannot do that.
bool TargetRun::plan()
{
    if (!m_invalid.isEmpty()) {
        m_result.problems += m_invalid;
        return false;
    }
    QList<OXA::AoCore*> cores;
    QList<OXA::AOCore_Lite*> lite;
    for (const CorePtr& core : m_request.cores) {
        if (core->standard)
            cores += core->standard.get();
        else
            lite += core->lite.get();
    }
    Messages messages;
    const std::vector<CorePlan> wanted = corePlans(cores, lite, m_session->build().arg, messages);
    if (!messages.isEmpty()) {
        m_result.problems += textsOf(messages);
        return false;
    }
    if (!checkTakeover(wanted))
        return false;
    for (size_t place = 0; place < wanted.size(); ++place) {
        if (m_request.chosen.isEmpty() || m_request.chosen.contains(int(place)))
            m_runs.push_back({place, wanted[place].setup});
    }
    return !m_runs.empty() || fail(tr("No core is chosen."));
}

/// Whether the chip can do what was edited; what it cannot is told.
bool TargetRun::checkTakeover(const std::vector<CorePlan>& wanted)
{
    const std::vector<CorePlan>& built = m_session->build().cores;
    if (wanted.size() != built.size())
        return fail(tr("The chip has %1 cores, the configuration %2: generate and synthesize it.")
                        .arg(QString::number(built.size()), QString::number(wanted.size())));
    bool possible = true;
    for (size_t place = 0; place < wanted.size(); ++place) {
        const QStringList others
            = otherHardware(m_session->identities()[place], built[place], wanted[place]);
        if (!others.isEmpty())
            possible = fail(tr("%1 cannot be changed so without synthesis: in the chip it has %2")
                                .arg(wanted[place].name(), others.join(", ")));
    }
    return possible;
}

bool TargetRun::watch()
{
    std::vector<size_t> places;
    for (const CoreRun& run : m_runs)
        places.push_back(run.core);
    bool forced = true;
    const bool polled = m_session->wait(places, [&](const std::vector<CoreProgress>& now) {
        m_last = now;
        tellProgress(now);
        forced = forceWaiting(now);
        return forced && !m_stop;
    });
    return polled && forced;
}

bool TargetRun::forceWaiting(const std::vector<CoreProgress>& now)
{
    if (!m_force.exchange(false))
        return true;
    for (size_t i = 0; i < now.size(); ++i) {
        const bool waits
            = now[i].state == CoreProgress::Waiting || now[i].state == CoreProgress::NoClock;
        if (waits && !m_session->force(m_runs[i].core))
            return false;
    }
    return true;
}

void TargetRun::tellProgress(const std::vector<CoreProgress>& now)
{
    QStringList texts;
    for (const CoreProgress& core : now)
        texts += core.text();
    if (texts == m_told)
        return;
    m_told = texts;
    progress(texts);
}

void TargetRun::readAll()
{
    for (size_t i = 0; i < m_runs.size(); ++i) {
        const bool finished = i < m_last.size() && m_last[i].state == CoreProgress::Finished;
        if (!read(m_runs[i], finished))
            fail(m_session->error());
    }
}

/// Reads one core, which is stopped when it has not finished, and leaves it idle.
bool TargetRun::read(const CoreRun& run, bool finished)
{
    ReadOut readOut;
    if ((!finished && !m_session->stop(run.core)) || !m_session->read(run.core, readOut, true))
        return false;
    CapturedCore captured = capturedCore(m_session->build().cores[run.core], readOut, run.setup);
    const OXA::AoCore* core = m_request.cores.at(int(run.core))->standard.get();
    m_result.places.push_back(int(run.core));
    m_result.waveforms.push_back(capturedWaveform(captured, core));
    const QString end = finished ? tr("captured") : tr("stopped");
    const size_t windows = captured.windows.size();
    const QString many = windows == 1 ? tr("1 window") : tr("%1 windows").arg(windows);
    const bool waited = windows > 0 && captured.windows.back().untriggered;
    m_result.remarks += (captured.triggered() ? end + ", " + many
                                              : tr("did not trigger: %1").arg(captured.progress))
        + (waited ? tr("; its last %1 samples are shown, without a trigger")
                        .arg(captured.windows.back().samples.size())
                  : QString());
    m_result.capture->push_back(std::move(captured));
    return !finished || m_session->stop(run.core);
}
