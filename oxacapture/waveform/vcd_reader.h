// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_VCD_READER_H
#define OXACAPTURE_WAVEFORM_VCD_READER_H

#include "oxacapture/message.h"
#include "oxacapture/oxacapture_export.h"
#include "oxacapture/progress.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OXA_CAPTURE {

/// A scope that a waveform declares.
struct VcdScope {
    int parent = -1; ///< where in the waveform's scopes; -1 outside of all
    std::string name; ///< its own, escapes removed
};

/// A variable that a waveform declares.
struct VcdVariable {
    int scope = -1; ///< where in the waveform's scopes; -1 outside of all
    std::string name; ///< without its range, escapes removed
    int code = 0; ///< variables of one code are one net, declared in several scopes
    int width = 1; ///< bits; 0 for a real, an event and other kinds without bits
    int msb = 0; ///< the index of the first bit
    int lsb = 0; ///< the index of the last bit
    bool hasRange = false; ///< msb and lsb are declared; else they are width - 1 and 0
};

/// Receives a waveform's value changes in order.
class OXACAPTURE_EXPORT VcdSink {
public:
    virtual ~VcdSink();

    /// The watched code number `slot` becomes `bits` (0, 1, x and z, most significant first), of
    /// the width that was declared.
    virtual void change(int slot, std::string_view bits) = 0;

    /// Called after all changes of the time `time`.
    virtual void endOfTime(quint64 time) = 0;
};

/// Reads a value change dump (IEEE 1364) in one pass; memory depends on its declarations, not on
/// its changes. The file may be compressed by gzip, or be a sigrok session; FST files are read
/// through the installed program fst2vcd.
///
/// Reals, events and strings are skipped. What the format does not allow is an error with its line;
/// a file that was truncated between two changes looks like a complete one.
class OXACAPTURE_EXPORT VcdReader {
public:
    /// The file is opened in `readHeader`; "-" is the standard input.
    explicit VcdReader(const QString& path);
    ~VcdReader();

    /// Reads the declarations; false when that fails, and `message()` has the reason.
    bool readHeader();

    const std::vector<VcdVariable>& variables() const; ///< after `readHeader`, as declared
    const std::vector<VcdScope>& scopes() const; ///< after `readHeader`, as declared

    /// After `readHeader`: a unit of times is 10 to the power of this in seconds, as -9 for ns;
    /// none when the waveform does not say it.
    std::optional<int> timeExponent() const;

    /// After `readHeader`: what the waveform says of the program that wrote it.
    const std::string& version() const;

    /// The full name of a variable: its scopes and its own name, joined by dots. Scopes may be
    /// nested deeply, so full names of all variables may take far more memory than the file.
    std::string fullName(const VcdVariable& variable) const;

    /// Reads the changes: once, after the header. Those of the codes `watched` (each once) reach
    /// `sink`, whose slots are the places in `watched`. False when reading failed or was stopped.
    bool readChanges(const std::vector<int>& watched, VcdSink& sink, const Progress& progress = {});

    /// Why the last call failed; its text is empty when `progress` stopped it.
    const Message& message() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

}

#endif
