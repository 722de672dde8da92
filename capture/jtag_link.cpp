#include "capture/jtag_link.h"

namespace OXA_CAPTURE {

JtagLink::~JtagLink() = default;

bool JtagLink::fail(const QString& error)
{
    m_error = error;
    return false;
}

}
