// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_PROGRESS_H
#define OXACAPTURE_PROGRESS_H

#include <functional>

namespace OXA_CAPTURE {

/// Called with the percentage of a long job that is done; the job stops when it returns false.
using Progress = std::function<bool(int percent)>;

}

#endif
