// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_JTAG_LINK_H
#define OXACAPTURE_TARGET_JTAG_LINK_H

#include "oxacapture/target/bit_string.h"

#include <QString>

namespace OXA_CAPTURE {

/// A link to a device's test access port. Every call begins and ends in Run-Test/Idle.
class OXACAPTURE_EXPORT JtagLink {
public:
    virtual ~JtagLink();

    /// Resets the test access port: passes through Test-Logic-Reset.
    virtual bool reset() = 0;

    /// Loads an instruction.
    virtual bool scanIr(const BitString& out) = 0;

    /// Shifts `out` into the data register; `in` gets the bits shifted out, unless it is null.
    virtual bool scanDr(const BitString& out, BitString* in) = 0;

    /// Shifts `first` and then `out`; `in` gets the bits shifted out in the second scan. On a
    /// shared link, no scan of another program comes between the two.
    virtual bool scanDrAfter(const BitString& first, const BitString& out, BitString* in);

    /// Divides later scans of more than some bits into parts: a scan of `bits` had a damaged
    /// answer, as from an adapter that cuts long scans off. False when that changes nothing.
    virtual bool divideScans(int bits);

    /// Why the last call failed.
    const QString& error() const { return m_error; }

protected:
    bool fail(const QString& error); ///< sets what `error` returns; false

private:
    QString m_error;
};

}

#endif
