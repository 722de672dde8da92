// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_CONFIGURATION_CHANGE_H
#define APPS_OXA_CONFIGURATION_CHANGE_H

#include "text_out.h"

#include "oxautils/check/problem.h"
#include "oxautils/config/configuration.h"

#include <QList>

/// A configuration that a command changes and writes.
struct ConfigurationChange {
    OXA::Configuration configuration;
    QList<OXA::Problem> before; ///< problems before the change

    /// Reads `path`, and reports on `err` what is not kept. False, with the error there.
    bool read(const QString& path, TextOut& err);

    /// The problems of the cores that were not there before.
    QList<OXA::Problem> newProblems() const;

    /// Writes `path`, unless `problems`, the new ones, contain an error.
    bool write(const QString& path, const QList<OXA::Problem>& problems, QString* error) const;
};

/// The problems of the cores.
QList<OXA::Problem> problemsOf(const OXA::Configuration& configuration);

/// Those of `problems` that are not among `others`; the position of an expression is ignored.
QList<OXA::Problem> without(const QList<OXA::Problem>& problems, const QList<OXA::Problem>& others);

/// Prints `problems` on `err`, for errors with what to do.
void sayProblems(const QString& path, const QList<OXA::Problem>& problems, TextOut& err);

#endif
