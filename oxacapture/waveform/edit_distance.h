#ifndef OXACAPTURE_WAVEFORM_EDIT_DISTANCE_H
#define OXACAPTURE_WAVEFORM_EDIT_DISTANCE_H

#include "oxacapture/oxacapture_export.h"

#include <string_view>

namespace OXA_CAPTURE {

/// The number of letters to insert, delete or replace to turn `a` into `b`, ignoring case;
/// `limit` + 1 when there are more than `limit`.
OXACAPTURE_EXPORT int editDistance(std::string_view a, std::string_view b, int limit);

}

#endif
