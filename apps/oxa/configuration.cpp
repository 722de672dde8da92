#include "configuration.h"

#include "oxautils/check/check.h"
#include "oxautils/config/lite_config.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/config/version.h"
#include "oxautils/config/xml_names.h"
#include "oxautils/model/verilog_word.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// Why the operating system does not let us read `path`; empty when it does.
QString accessProblem(const QString& path)
{
    if (QFileInfo(path).isDir())
        return "it is a directory";
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString() : file.errorString();
}

bool readCores(const QString& path, Configuration& configuration, QString& error)
{
    bool ok = false;
    if (configuration.mode == OXA::Lite) {
        try {
            configuration.liteCores = OXA::readOXAConfigFromXml_Lite(path, &ok, &error);
        } catch (const OXA::CompareException& exception) {
            error = exception.message();
        }
        return ok;
    }
    configuration.cores = OXA::readOXAConfigFromXml(path, &ok, &error);
    if (ok && configuration.mode == OXA::Invalid) {
        error = "its \"Mode\" is neither \"Standard\" nor \"Lite\"";
        return false;
    }
    return ok;
}

/// What makes the reader's words easier to act on.
QString hintFor(const QString& error)
{
    if (error == "Invalid Oxa config file.")
        return "; its \"Version\" is not of the form 3.0";
    if (error == "The version of Oxa config file is too high.")
        return QString("; this program reads versions up to %1").arg(OXA::LATEST_VERSION);
    if (error == "Unknown Oxa version.")
        return "; the root element has no \"Version\"";
    return {};
}

/// Says what to do about a file that is no XML.
void sayRemedy(const QString& path, TextOut& err)
{
    for (const OXA::Problem& problem : OXA::checkConfigFile(path)) {
        if (problem.rule == "malformed")
            err << "    " << problem.hint << '\n';
    }
}

}

Configuration::~Configuration()
{
    qDeleteAll(cores);
    qDeleteAll(liteCores);
}

bool readConfiguration(const QString& path, Configuration& configuration, TextOut& err)
{
    QString error = accessProblem(path);
    if (error.isEmpty()) {
        const OXA::ParseOnce once;
        configuration.mode = OXA::oxaModeFromOxaConfigFile(path);
        if (readCores(path, configuration, error))
            return true;
    }
    err << "error: " << path << ": " << error << hintFor(error) << '\n';
    sayRemedy(path, err);
    return false;
}

bool namesStayWords(const QString& path, const Configuration& configuration, TextOut& err)
{
    const QStringList faults
        = OXA::wordFaults(configuration.cores) + OXA::wordFaults(configuration.liteCores);
    for (const QString& fault : faults)
        err << "error: " << path << ": " << fault
            << "; write the name that the signal has in the design\n";
    return faults.isEmpty();
}
