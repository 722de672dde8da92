#ifndef TESTS_CAPTURE_SAMPLE_TEXT_H
#define TESTS_CAPTURE_SAMPLE_TEXT_H

#include "capture/sample_table.h"

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

#endif
