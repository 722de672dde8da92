#ifndef TESTS_IP_CORE_SAMPLES_H
#define TESTS_IP_CORE_SAMPLES_H

#include "oxacapture/waveform/sample_table.h"

#include "oxautils/model/ao_core.h"

#include <QByteArrayList>
#include <QStringList>

/// What `core` samples of `samples`, texts of a character for each of `names`.
OXA_CAPTURE::SampleTable tableOf(
    const OXA::AoCore& core, const QStringList& names, const QByteArrayList& samples);

#endif
