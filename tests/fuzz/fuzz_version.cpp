// Two version texts, divided by a line end: comparing is a total order where it gives an answer.
#include "fuzz_support.h"

#include "oxautils/config/version.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QList<QByteArray> lines
        = QByteArray(reinterpret_cast<const char*>(data), int(size)).split('\n');
    const QString a = QString::fromUtf8(lines.value(0));
    const QString b = QString::fromUtf8(lines.value(1));
    try {
        const int forward = OXA::compareVersion(a, b);
        const int backward = OXA::compareVersion(b, a);
        require(forward == 1 || forward == 2 || forward == 4, "one bit is set");
        require((forward == 2) == (backward == 2), "equal both ways");
        require(forward != backward || forward == 2, "turned around, the other way");
    } catch (const OXA::CompareException& exception) {
        require(exception.message() == "Invalid Oxa config file.", "the one message");
    }
    return 0;
}
