// SPDX-License-Identifier: Apache-2.0
#include "oxautils/model/log_categories.h"

namespace OXA {

Q_LOGGING_CATEGORY(logConfig, "oxautils.config")
Q_LOGGING_CATEGORY(logEncoding, "oxautils.encoding")
Q_LOGGING_CATEGORY(logGenerate, "oxautils.generate")
Q_LOGGING_CATEGORY(logVoltage, "oxautils.voltage")

}
