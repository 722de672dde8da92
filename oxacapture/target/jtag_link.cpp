// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/target/jtag_link.h"

namespace OXA_CAPTURE {

JtagLink::~JtagLink() = default;

bool JtagLink::scanDrAfter(const BitString& first, const BitString& out, BitString* in)
{
    return scanDr(first, nullptr) && scanDr(out, in);
}

bool JtagLink::divideScans(int) { return false; }

bool JtagLink::fail(const QString& error)
{
    m_error = error;
    return false;
}

}
