// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/configuration.h"

#include "files/fail.h"
#include "oxautils/config/config_writer.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_document.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <algorithm>

namespace OXA {

namespace {

bool readCores(const QString& path, Configuration& configuration, QString* error)
{
    bool ok = false;
    if (configuration.mode == Lite) {
        try {
            configuration.liteCores = readOXAConfigFromXml_Lite(path, &ok, error);
        } catch (const CompareException& exception) {
            return fail(error, exception.message());
        }
        return ok;
    }
    configuration.cores = readOXAConfigFromXml(path, &ok, error);
    if (ok && configuration.mode == Invalid)
        return fail(error, "its \"Mode\" is neither \"Standard\" nor \"Lite\"");
    return ok;
}

/// Additions to the reader's message: what to do.
QString hintFor(const QString& error)
{
    if (error == "Invalid Oxa config file.")
        return "; its \"Version\" is not of the form 3.0";
    if (error == "The version of Oxa config file is too high.")
        return QString("; this program reads versions up to %1").arg(LATEST_VERSION);
    if (error == "Unknown Oxa version.")
        return "; the root element has no \"Version\"";
    return {};
}

/// A line on what to do when `content` is malformed; else empty.
QString remedyFor(const QByteArray& content)
{
    XmlDocument document;
    XmlError error;
    return parseXml(content, document, &error) ? QString() : '\n' + error.hint();
}

}

Configuration::~Configuration()
{
    qDeleteAll(cores);
    qDeleteAll(liteCores);
}

bool readConfiguration(const QString& path, Configuration& configuration, QString* error)
{
    const ParseOnce once;
    QByteArray content;
    QString reason;
    QString remedy;
    if (readFile(path, content, &reason)) {
        configuration.mode = oxaModeFromOxaConfigFile(path);
        if (readCores(path, configuration, &reason))
            return true;
        remedy = remedyFor(content);
    }
    return fail(error, shownText(path + ": " + reason + hintFor(reason)) + remedy);
}

bool writeConfiguration(const QString& path, const Configuration& configuration, QString* error)
{
    return configuration.mode == Lite ? writeCores(configuration.liteCores, path, error)
                                      : writeCores(configuration.cores, path, error);
}

bool adoptMarkedPorts(AoCore& core)
{
    const auto isListed = [](const SignalItem& item) { return item.captureEnable; };
    const auto listed = std::count_if(core.signalList.begin(), core.signalList.end(), isListed);
    const QList<SignalItem> marked = core.captureSignals.mid(int(listed)); // readers add them last
    for (SignalItem item : marked) {
        item.captureEnable = true; // the mark captures them, even when the port's list does not
        core.signalList += item;
    }
    return !marked.isEmpty();
}

QStringList wordFaults(const QString& path, const Configuration& configuration)
{
    QStringList faults = wordFaults(configuration.cores) + wordFaults(configuration.liteCores);
    for (QString& fault : faults)
        fault
            = shownText(path + ": " + fault + "; write the name that the signal has in the design");
    return faults;
}

}
