// SPDX-License-Identifier: Apache-2.0
#include "log.h"

#include "oxautils/model/shown_text.h"

#include <QString>

#include <atomic>
#include <cstdio>

namespace {

std::atomic<int> errors {0};

const char* prefixOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
        return "debug: ";
    case QtWarningMsg:
        return "warning: ";
    default:
        return "error: ";
    }
}

void log(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    static const bool debug = qEnvironmentVariableIsSet("OXA_DEBUG");
    if (type == QtCriticalMsg)
        ++errors;
    if (debug || (type != QtDebugMsg && type != QtInfoMsg))
        std::fprintf(
            stderr, "%s%s\n", prefixOf(type), OXA::shownText(message).toLocal8Bit().constData());
}

}

void installLog() { qInstallMessageHandler(log); }

int loggedErrors() { return errors; }
