// SPDX-License-Identifier: Apache-2.0
#include "wave_settings.h"

#include "joint_waveform.h"

#include "oxa-editor/document.h"

#include "files/replace_file.h"

#include <QFile>
#include <QJsonDocument>

#include <cmath>

namespace {

constexpr int kSaveDelay = 500; // ms after a change
constexpr size_t kMostSteps = 100; // to undo
constexpr char kCores[] = "cores"; // by their indexes
constexpr char kRows[] = "rows";
constexpr char kClock[] = "clockHz";

constexpr char kJoint[] = "all"; // the key of all cores on one axis

QString keyOf(int core) { return core == kJointCores ? QString(kJoint) : QString::number(core); }

QString fileOf(const QString& configuration) { return configuration + ".waves"; }

bool isClock(double hertz) { return hertz > 0 && std::isfinite(hertz); }

}

WaveSettings::WaveSettings(Document* document, QObject* parent)
    : QObject(parent)
{
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(kSaveDelay);
    connect(&m_saveTimer, &QTimer::timeout, this, &WaveSettings::save);
    if (!document)
        return;
    connect(document, &Document::replaced, this, [this, document] { open(document->path()); });
    connect(document, &Document::pathChanged, this, [this, document] { moveTo(document->path()); });
}

WaveSettings::~WaveSettings() { save(); }

void WaveSettings::open(const QString& configuration)
{
    save();
    m_isUnsaved = false;
    m_configuration = configuration;
    m_cores.clear();
    m_configured.clear();
    m_stimulus.clear();
    m_problem.clear();
    QJsonObject object;
    readFile(object);
    const QJsonObject cores = object[kCores].toObject();
    for (auto core = cores.begin(); core != cores.end(); ++core) {
        bool isIndex = core.key() == kJoint;
        const int index = isIndex ? kJointCores : core.key().toInt(&isIndex);
        const QJsonObject about = core.value().toObject();
        const double clock = about[kClock].toDouble();
        if (isIndex)
            m_cores[index]
                = {waveEntriesFrom(about[kRows].toArray()), isClock(clock) ? clock : 0, {}, {}};
    }
    Q_EMIT changed();
}

void WaveSettings::moveTo(const QString& configuration)
{
    if (configuration == m_configuration)
        return;
    save();
    m_configuration = configuration;
    m_problem.clear();
    m_isUnsaved = !m_cores.isEmpty();
    save();
    Q_EMIT changed();
}

/// Without the file, `object` is empty.
bool WaveSettings::readFile(QJsonObject& object)
{
    QFile file(fileOf(m_configuration));
    if (m_configuration.isEmpty() || !file.exists())
        return true;
    QJsonParseError error {0, QJsonParseError::NoError};
    if (file.open(QIODevice::ReadOnly)) {
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
        object = document.object();
        if (document.isObject())
            return true;
    }
    const QString reason = !file.isOpen() ? file.errorString()
        : error.error == QJsonParseError::NoError
        ? tr("it is an array, not an object")
        : tr("%1 at byte %2").arg(error.errorString(), QString::number(error.offset));
    m_problem
        = tr("The layout of waveforms in %1 cannot be read: %2. Changes of the layout are not "
             "kept until that file is corrected or deleted.")
              .arg(file.fileName(), reason);
    return false;
}

const WaveEntries& WaveSettings::rows(int core) const
{
    static const WaveEntries kUsual;
    const auto found = m_cores.constFind(core);
    return found == m_cores.constEnd() ? kUsual : found->rows;
}

void WaveSettings::setRows(int core, const WaveEntries& rows)
{
    if (rows == this->rows(core))
        return;
    m_cores[core].rows = rows;
    changeSoon();
}

void WaveSettings::editRows(int core, const WaveEntries& rows)
{
    if (rows == this->rows(core))
        return;
    CoreSettings& own = m_cores[core];
    own.redo.clear();
    own.undo.push_back(own.rows);
    if (own.undo.size() > kMostSteps)
        own.undo.erase(own.undo.begin());
    setRows(core, rows);
}

bool WaveSettings::undoRows(int core)
{
    return step(core, &CoreSettings::undo, &CoreSettings::redo);
}

bool WaveSettings::redoRows(int core)
{
    return step(core, &CoreSettings::redo, &CoreSettings::undo);
}

/// Shows the last rows of `from`; those that were shown are the last of `to`.
bool WaveSettings::step(int core, Steps from, Steps to)
{
    const auto own = m_cores.find(core);
    if (own == m_cores.end() || ((*own).*from).empty())
        return false;
    ((*own).*to).push_back(own->rows);
    own->rows = std::move(((*own).*from).back());
    ((*own).*from).pop_back();
    changeSoon();
    return true;
}

double WaveSettings::clock(int core) const
{
    const double entered = m_cores.value(core).clock;
    return entered > 0 ? entered : m_configured.value(core, m_stimulus.value(core, 0));
}

QString WaveSettings::clockOrigin(int core) const
{
    if (m_cores.value(core).clock > 0)
        return tr("entered here");
    if (m_configured.contains(core))
        return tr("from the names beside the configuration");
    return m_stimulus.value(core, 0) > 0 ? tr("from the times of the samples") : QString();
}

void WaveSettings::enterClock(int core, double hertz)
{
    if (m_cores.value(core).clock == hertz)
        return;
    m_cores[core].clock = hertz;
    changeSoon();
}

void WaveSettings::setConfiguredClocks(const QMap<int, double>& clocks)
{
    if (clocks == m_configured)
        return;
    m_configured = clocks;
    Q_EMIT changed();
}

void WaveSettings::setStimulusClock(int core, double hertz)
{
    if (m_stimulus.value(core, 0) == hertz)
        return;
    m_stimulus[core] = hertz;
    Q_EMIT changed();
}

void WaveSettings::changeSoon()
{
    m_isUnsaved = true;
    m_saveTimer.start();
    Q_EMIT changed();
}

/// `object`, the file's content, with these settings. What the file has for other programs stays.
QJsonObject WaveSettings::merged(QJsonObject object) const
{
    QJsonObject cores = object[kCores].toObject();
    for (auto core = m_cores.begin(); core != m_cores.end(); ++core) {
        QJsonObject about = cores[keyOf(core.key())].toObject();
        about[kRows] = toJson(core->rows);
        about.remove(kClock);
        if (core->clock > 0)
            about[kClock] = core->clock;
        cores[keyOf(core.key())] = about;
    }
    object[kCores] = cores;
    return object;
}

void WaveSettings::save()
{
    if (!m_isUnsaved || m_configuration.isEmpty())
        return;
    const QString before = m_problem;
    m_problem.clear();
    QJsonObject object;
    QString error;
    if (readFile(object)) {
        m_isUnsaved = !OXA_FILES::replaceFile(
            fileOf(m_configuration), QJsonDocument(merged(object)).toJson(), &error);
        if (m_isUnsaved)
            m_problem = tr("The layout of waveforms is not kept: %1").arg(error);
    }
    if (m_problem != before)
        Q_EMIT changed();
}
