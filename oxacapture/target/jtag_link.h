#ifndef OXACAPTURE_TARGET_JTAG_LINK_H
#define OXACAPTURE_TARGET_JTAG_LINK_H

#include "oxacapture/target/bit_string.h"

#include <QString>

namespace OXA_CAPTURE {

/// A way to a device's test access port. Every call begins and ends in Run-Test/Idle.
class OXACAPTURE_EXPORT JtagLink {
public:
    virtual ~JtagLink();

    /// Through Test-Logic-Reset.
    virtual bool reset() = 0;

    /// Loads an instruction.
    virtual bool scanIr(const BitString& out) = 0;

    /// Shifts `out` through the data register; what came out goes to `in`, unless that is null.
    virtual bool scanDr(const BitString& out, BitString* in) = 0;

    /// Shifts `first` and then `out`, what came out of the second to `in`. Where a link is shared,
    /// no scan of another program comes between the two.
    virtual bool scanDrAfter(const BitString& first, const BitString& out, BitString* in);

    /// Why the last call failed.
    const QString& error() const { return m_error; }

protected:
    bool fail(const QString& error);

private:
    QString m_error;
};

}

#endif
