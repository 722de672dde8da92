#include "core_samples.h"

#include "oxacapture/trigger/trigger_setup.h"

using namespace OXA_CAPTURE;

SampleTable tableOf(
    const OXA::AoCore& core, const QStringList& names, const QByteArrayList& samples)
{
    const SampleRequest request = sampleRequest(core);
    std::vector<int> widths;
    for (const QStringList& field : request.fields)
        widths.push_back(field.size());
    const SampleLayout layout(widths);
    SampleTable table(layout);
    for (const QByteArray& sample : samples) {
        std::vector<quint64> row(size_t(layout.rowWords()));
        for (int field = 0; field < layout.fieldCount(); ++field) {
            const QStringList& signalNames = request.fields[size_t(field)];
            for (int bit = 0; bit < signalNames.size(); ++bit)
                setBit(layout, row, field, bit,
                    Logic(
                        QByteArray("01x").indexOf(sample.at(names.indexOf(signalNames.at(bit))))));
        }
        table.append(row.data());
    }
    return table;
}
