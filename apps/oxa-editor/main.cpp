// SPDX-License-Identifier: Apache-2.0
#include "build_job.h"
#include "main_window.h"

#include "oxautils/oxautils_version.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>

#include <algorithm>

namespace {

/// Handles --help and --version, which end the program; `parser` then contains the file to open.
void readCall(QCommandLineParser& parser)
{
    QCoreApplication::setOrganizationName("OxaUtils");
    QCoreApplication::setApplicationName("oxa-editor");
    QCoreApplication::setApplicationVersion(OXAUTILS_VERSION_STR);
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "Edits the configuration of embedded logic analyzers"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        "FILE", QCoreApplication::translate("main", "The configuration to open"), "[FILE]");
    parser.process(QCoreApplication::arguments());
}

// Without a screen, Qt would abort with a message of its own.
bool hasScreen(int argc, char** argv)
{
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name))
            return true;
    }
    return std::any_of(argv, argv + argc,
        [](const char* argument) { return QByteArray(argument).startsWith("-platform"); });
}

int sayOnly(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    readCall(parser);
    qCritical("oxa-editor: no screen for a window (DISPLAY is not set)");
    return 1;
}

}

int main(int argc, char** argv)
{
    if (!hasScreen(argc, argv))
        return sayOnly(argc, argv);
    QApplication::setDesktopFileName("oxa-editor"); // with which the desktop finds the icon
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // later ones do it anyway
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    readCall(parser);

    QLoggingCategory::setFilterRules("oxautils.*.debug=false"); // QT_LOGGING_RULES shows them
    BuildJob::installLog();
    MainWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.open(parser.positionalArguments().first());
    return QApplication::exec();
}
