#include "build_job.h"
#include "main_window.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName("OxaUtils");
    QCoreApplication::setApplicationName("oxa-editor");
    QCoreApplication::setApplicationVersion(OXA_VERSION);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "Edits the configuration of embedded logic analyzers"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        "FILE", QCoreApplication::translate("main", "The configuration to open"), "[FILE]");
    parser.process(application);

    BuildJob::installLog();
    MainWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.open(parser.positionalArguments().first());
    return QApplication::exec();
}
