// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include "design/design_tree.h"

#include "files/replace_file.h"
#include "oxautils/config/configuration.h"
#include "oxautils/config/names_file.h"
#include "oxautils/design/attach.h"
#include "oxautils/design/value_names.h"

#include <QFileInfo>

using OXA::SignalItem;

namespace {

/// The names of `items`, a bus in front of its bits.
QStringList namesOf(const QList<SignalItem>& items)
{
    QStringList names;
    for (const SignalItem& item : items)
        names += QStringList(item.name) + namesOf(item.subItems);
    return names;
}

/// `watch`, with the new names of signals that are renamed between `before` and `after`.
QStringList renamedIn(
    QStringList watch, const QList<SignalItem>& before, const QList<SignalItem>& after)
{
    const QStringList was = namesOf(before);
    const QStringList is = namesOf(after);
    if (was.size() != is.size())
        return watch; // signals are added, removed or grouped
    for (QString& name : watch) {
        const int place = was.indexOf(name);
        if (place >= 0 && !is.contains(name)) // else it is only moved
            name = is.at(place);
    }
    return watch;
}

}

Document::Document(QObject* parent)
    : QObject(parent)
{
}

Document::~Document() = default;

Notify Document::notifier()
{
    return [this](const Location& location) {
        if (location.core)
            location.core->updateCaptured();
        Q_EMIT changed(location);
    };
}

void Document::setSignals(
    const Location& location, const QList<SignalItem>& items, const QString& text)
{
    const Core& core = *location.core;
    if (same(core.signalList(), items))
        return;
    m_undoStack.beginMacro(text);
    if (core.standard) {
        OXA::CoreStorage& storage = core.standard->storage;
        OXA::CoreStorage renamed = storage;
        renamed.watch = renamedIn(storage.watch, core.signalList(), items);
        set(location, storage, renamed, text);
    }
    set(location, core.signalList(), items, text);
    m_undoStack.endMacro();
}

void Document::setCores(const Cores& cores, const QString& text)
{
    auto* command = new CoresCommand(m_cores, cores, notifier());
    command->setText(text);
    m_undoStack.push(command);
}

void Document::replace(OXA::OxaMode mode, const Cores& cores, const QString& path)
{
    m_undoStack.clear();
    m_mode = mode;
    m_cores = cores;
    const bool sameFile = !path.isEmpty() && path == m_path;
    m_path = path;
    Q_EMIT replaced();
    Q_EMIT pathChanged();
    if (!sameFile)
        setDesign(nullptr);
}

void Document::setDesign(const std::shared_ptr<const DesignTree>& design)
{
    m_design = design;
    Q_EMIT designChanged();
}

void Document::create(OXA::OxaMode mode)
{
    m_fileBytes.clear();
    const CorePtr core = mode == OXA::Lite ? std::make_shared<Core>(new OXA::AOCore_Lite)
                                           : std::make_shared<Core>(new OXA::AoCore(0));
    replace(mode, {core}, {});
}

bool Document::load(const QString& path, QStringList& warnings, QString* error)
{
    LoadedFile file;
    if (!loadFile(path, file, error))
        return false;
    m_fileBytes = file.bytes;
    warnings = file.warnings;
    replace(file.mode, file.cores, QFileInfo(path).absoluteFilePath());
    if (file.changed)
        m_undoStack.resetClean();
    return true;
}

bool Document::save(const QString& path, QString* error)
{
    const QByteArray content = bytes(error);
    if (content.isEmpty() || !OXA_FILES::replaceFile(path, content, error))
        return false;
    m_fileBytes = content;
    m_path = QFileInfo(path).absoluteFilePath();
    m_undoStack.setClean();
    endRun();
    keepValueNames(error);
    Q_EMIT pathChanged();
    return true;
}

/// Keeps the names of values that the design gives to watched signals, as `oxa add` does.
void Document::keepValueNames(QString* error) const
{
    OXA::Configuration saved;
    if (m_design && OXA::readConfiguration(m_path, saved, error))
        OXA::addKnownStates(
            m_path, OXA::statesOf(m_design->index(), OXA::watchedNames(saved)), error);
}

QByteArray Document::bytes(QString* error) const { return serialize(m_mode, m_cores, error); }

bool Document::isFileChanged() const
{
    return !m_path.isEmpty() && fileBytes(m_path) != m_fileBytes;
}

void Document::forgetFile() { m_undoStack.resetClean(); }

void Document::acceptFile() { m_fileBytes = fileBytes(m_path); }
