// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_FILES_CSV_CORE_H
#define OXACAPTURE_FILES_CSV_CORE_H

#include "oxacapture/files/capture_result.h"

namespace OXA_CAPTURE {

/// A core whose samples are read from the rows of a table.
struct CsvCore {
    /// A signal of the core.
    struct Column {
        size_t cell; ///< of a row
        int digits; ///< of a bus; 0: a single bit
        int firstBit; ///< of a sample

        int bits() const;
    };

    CapturedCore core;
    bool timed = false; ///< its rows have times
    SampleLayout layout; ///< of `row`
    std::vector<Column> columns;
    std::vector<quint64> row; ///< the sample of the last row

    /// Finds the core's signals: the cells of its first row that have a name and are not empty.
    /// False, with `error`, when it has none or too many.
    bool begin(const QStringList& names, const std::vector<QByteArray>& cells, QString* error);

    /// Reads the sample of a row. False, with `error`, for another text than that of a sample.
    bool takeValues(const QStringList& names, const std::vector<QByteArray>& cells, QString* error);
};

}

#endif
