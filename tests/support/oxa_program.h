// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_OXA_PROGRAM_H
#define TESTS_SUPPORT_OXA_PROGRAM_H

#include "support/patience.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QString>

/// What a run of `oxa` came to; negative statuses are those of a run that did not end by itself.
struct Result {
    int status;
    QString out;
    QString err;
};

/// Runs the program OXA_PROGRAM with nothing on its standard input.
inline Result oxa(const QStringList& arguments, const QStringList& environment = {})
{
    QProcess process;
    process.setEnvironment(QProcess::systemEnvironment() + environment);
    process.start(OXA_PROGRAM, arguments);
    process.closeWriteChannel();
    if (!finished(process))
        return {-1, {}, process.errorString()};
    const bool crashed = process.exitStatus() != QProcess::NormalExit;
    return {crashed ? -2 : process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError())};
}

/// What a run with --json says.
inline QJsonObject jsonOf(const Result& result)
{
    return QJsonDocument::fromJson(result.out.toUtf8()).object();
}

/// A call of oxa, some words of which stand for others, and what it comes to.
struct Call {
    const char* what;
    int status;
    const char* said;
};

/// All that a run said; JSON has no white space between its tokens.
inline QString saidBy(const Result& result)
{
    const QJsonDocument json = QJsonDocument::fromJson(result.out.toUtf8());
    return json.isNull() ? result.out + result.err : json.toJson(QJsonDocument::Compact);
}

#endif
