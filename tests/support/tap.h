// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_TAP_H
#define TESTS_SUPPORT_TAP_H

/// States of a test access port: those of the DR column are 3 to 8, of the IR column 10 to 15.
enum TapState {
    TapReset = 0,
    TapIdle = 1,
    CaptureDr = 3,
    ShiftDr = 4,
    CaptureIr = 10,
    ShiftIr = 11,
    UpdateIr = 15,
};

/// The state behind a rising edge of TCK.
inline TapState nextTapState(TapState state, bool tms)
{
    constexpr int kNext[2][16] = {
        {1, 1, 3, 4, 4, 6, 6, 4, 1, 10, 11, 11, 13, 13, 11, 1},
        {0, 2, 9, 5, 5, 8, 7, 8, 2, 0,  12, 12, 15, 14, 15, 2},
    };
    return TapState(kNext[tms][state]);
}

#endif
