#ifndef APPS_OXA_CONFIGURATION_CHANGE_H
#define APPS_OXA_CONFIGURATION_CHANGE_H

#include "text_out.h"

#include "oxautils/check/problem.h"
#include "oxautils/config/configuration.h"

#include <QList>

/// A configuration that a command changes and writes.
struct ConfigurationChange {
    OXA::Configuration configuration;
    QList<OXA::Problem> before; ///< its problems as it was read

    /// Reads `path`, and says on `err` what of the file is not kept. False with the reason there.
    bool read(const QString& path, TextOut& err);

    /// The problems of the cores.
    QList<OXA::Problem> problems() const;
    /// Those of `problems` that were not there before, wherever in its list an expression is.
    QList<OXA::Problem> newOnes(const QList<OXA::Problem>& problems) const;

    /// Writes `path`, unless there is an error among `problems`, the new ones.
    bool write(const QString& path, const QList<OXA::Problem>& problems, QString* error) const;
};

/// Says `problems` on `err`, with what to do about errors.
void sayProblems(const QString& path, const QList<OXA::Problem>& problems, TextOut& err);

#endif
