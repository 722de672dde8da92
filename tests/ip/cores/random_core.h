// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_IP_RANDOM_CORE_H
#define TESTS_IP_RANDOM_CORE_H

#include "oxautils/model/ao_core.h"

#include <memory>
#include <random>

using Random = std::mt19937;

/// A number from `low` to `high`.
int between(Random& random, int low, int high);

/// A core that hardware can be built for. `position` makes its names unique. Its ports are so
/// narrow, or its samples (see `randomSample`) change so little, that it triggers.
std::unique_ptr<OXA::AoCore> randomCore(Random& random, int position);

/// Lets some of `cores` force others, and have trigger outputs and stamps.
void addEvents(Random& random, const QList<OXA::AoCore*>& cores);

/// Other values, counters, windows, sequence and forcing cores for `core`, within what its hardware
/// has.
void changeSettings(Random& random, OXA::AoCore& core);

/// Another sample behind `before`, a character a signal.
QByteArray randomSample(Random& random, const QByteArray& before);

#endif
