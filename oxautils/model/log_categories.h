// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_MODEL_LOG_CATEGORIES_H
#define OXAUTILS_MODEL_LOG_CATEGORIES_H

#include <QLoggingCategory>

namespace OXA {

/// What the folders report to Qt's message log is in these categories (docs/embedding.md), so that
/// a host can filter it.
Q_DECLARE_LOGGING_CATEGORY(logConfig)
Q_DECLARE_LOGGING_CATEGORY(logEncoding)
Q_DECLARE_LOGGING_CATEGORY(logGenerate)
Q_DECLARE_LOGGING_CATEGORY(logVoltage)

}

#endif
