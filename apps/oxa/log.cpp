// SPDX-License-Identifier: Apache-2.0
#include "log.h"

namespace {

TextOut* output = nullptr;
int errors = 0;

void log(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    static const bool debug = qEnvironmentVariableIsSet("OXA_DEBUG");
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        ++errors;
        output->error(message);
    } else if (type == QtWarningMsg) {
        output->warning(message);
    } else if (debug) {
        *output << "debug: " << message << '\n';
    }
    output->flush();
}

}

LogTo::LogTo(TextOut& err)
{
    output = &err;
    qInstallMessageHandler(log);
}

LogTo::~LogTo() { qInstallMessageHandler(nullptr); }

int loggedErrors() { return errors; }
