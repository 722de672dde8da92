#ifndef BENCH_ESTIMATES_RANDOM_CONFIGURATION_H
#define BENCH_ESTIMATES_RANDOM_CONFIGURATION_H

#include <QString>

/// A part of the catalogue.
struct Part {
    QString number, device;
};

/// Writes the configuration number `number` of those that `seed` stands for to `path`, and returns
/// the part that it is meant for. Same numbers, same file.
Part writeRandomConfiguration(unsigned seed, int number, const QString& path);

#endif
