// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CSV_COLUMNS_H
#define OXACAPTURE_FILES_CSV_COLUMNS_H

namespace OXA_CAPTURE {

// Columns that a table may have behind "trigger". No signal is easily called so.

/// 1 at the trigger sample of a window that another core forced, else 0.
constexpr char kForcedColumn[] = "forced by core";
/// The window's stamp; empty without one.
constexpr char kStampColumn[] = "window stamp";

}

#endif
