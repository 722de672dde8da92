// A number's text from one base into another and back.
#include "fuzz_support.h"

#include "oxautils/editor/oxautils_common.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    const int from = 2 + data[0] % 35;
    const int to = 2 + data[1] % 35;
    const int width = int8_t(data[2]);
    const QString value = QString::fromUtf8(reinterpret_cast<const char*>(data + 3), int(size - 3));

    const QString changed = OXA::changeRadix(value, from, to, width);
    bool isNumber = false;
    const qulonglong number = value.toULongLong(&isNumber, from);
    if (isNumber)
        require(changed.toULongLong(nullptr, to) == number, "the number stays");
    else
        require(changed == QString(qMax(width, 0), '0'), "what is no number is zeros");
    const QString adjusted = OXA::BitWidthAdjust(value, width);
    require(adjusted.size() == qMax(width, 0), "as wide as asked for");
    if (OXA::checkExcessBitWidth(value, width))
        require(adjusted.endsWith(value), "nothing that fits is lost");
    return 0;
}
