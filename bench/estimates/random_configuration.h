// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_ESTIMATES_RANDOM_CONFIGURATION_H
#define BENCH_ESTIMATES_RANDOM_CONFIGURATION_H

#include <QString>

/// A part of the catalogue.
struct Part {
    QString number, device;
};

/// Writes the configuration number `number` of the series `seed` to `path`, and returns its part.
/// The same numbers give the same file.
Part writeRandomConfiguration(unsigned seed, int number, const QString& path);

#endif
