// Any file as the table of supplies. The reader finds it beside the program's directory, so a link
// there leads to this process's input.
#include "fuzz_support.h"

#include "oxautils/voltage/voltage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace {

constexpr int kTableDescriptor = 200;

void linkTable()
{
    static char name[] = "fuzz_voltage";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    static const QCoreApplication application(count, arguments);
    const QDir folder(QCoreApplication::applicationDirPath() + "/../share/device");
    require(folder.mkpath("."), "the table's folder is there");
    QFile::remove(folder.filePath("pn_voltage.csv"));
    require(QFile::link(QString("/proc/self/fd/%1").arg(kTableDescriptor),
                folder.filePath("pn_voltage.csv")),
        "the table is linked");
}

void requireChoices(const QStringList& choices, const QString& standard)
{
    for (const QString& choice : choices)
        require(choice.at(0).isDigit() && choice.back().isDigit(), "a choice is a number");
    require(choices.isEmpty() || !standard.isEmpty(), "who can choose has a default");
}

}

void fuzz(const QByteArray& input)
{
    static const bool once = (linkTable(), true);
    Q_UNUSED(once)
    const MemoryFile file(input);
    require(dup2(file.descriptor(), kTableDescriptor) >= 0, "the table is this input");

    const OXA::Voltage voltage("QX1N-9", "QX1N-9LV-QFN88-C6");
    requireChoices(voltage.getVCCOptionalValues(), voltage.getVCCDefaultValue());
    requireChoices(voltage.getVCCXOptionalValues(), voltage.getVCCXDefaultValue());
    requireChoices(voltage.getVCCLDOOptionalValues(), voltage.getVCCLDODefaultValue());
    const int shorts = int(voltage.isVCCVCCXShortCircuit())
        + int(voltage.isVCCXVCCLDOShortCircuit()) + int(voltage.isVCCVCCLDOShortCircuit());
    require(shorts <= 1, "a note tells of one short");
    require(!voltage.data.isEmpty() || shorts == 0, "without a row nothing is shorted");
}
