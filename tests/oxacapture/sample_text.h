// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_CAPTURE_SAMPLE_TEXT_H
#define TESTS_CAPTURE_SAMPLE_TEXT_H

#include "oxacapture/waveform/sample_table.h"

#include <QStringList>

/// The samples of `field` as texts of 0, 1 and x, separated by blanks.
inline QString samplesText(const OXA_CAPTURE::SampleTable& table, int field = 0)
{
    QStringList samples;
    for (qint64 sample = 0; sample < table.size(); ++sample) {
        QString bits;
        for (int bit = 0; bit < table.layout().width(field); ++bit)
            bits += "01x"[int(table.bit(sample, field, bit))];
        samples += bits;
    }
    return samples.join(' ');
}

/// Samples with a text for each field, its samples separated by blanks; all of one length.
inline OXA_CAPTURE::SampleTable samplesOf(const QStringList& fields)
{
    using namespace OXA_CAPTURE;
    std::vector<int> widths;
    for (const QString& field : fields)
        widths.push_back(field.section(' ', 0, 0).size());
    const SampleLayout layout(widths);
    SampleTable table(layout);
    for (int sample = 0; sample <= fields.first().count(' '); ++sample) {
        std::vector<quint64> row(size_t(layout.rowWords()));
        for (int field = 0; field < fields.size(); ++field) {
            const QString bits = fields.at(field).section(' ', sample, sample);
            for (int bit = 0; bit < bits.size(); ++bit)
                setBit(layout, row, field, bit, Logic(QString("01x").indexOf(bits.at(bit))));
        }
        table.append(row.data());
    }
    return table;
}

#endif
