// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_FST_BLOCKS_H
#define OXACAPTURE_WAVEFORM_FST_BLOCKS_H

#include <QString>

#include <string_view>

namespace OXA_CAPTURE {

constexpr int kFstMarkSize = 9; // bytes

// The first bytes of an FST file: a block's type and its length, most significant byte first. The
// header's length is fixed, and a packed file is one block with the others inside.
constexpr std::string_view kFstMark {"\x00\x00\x00\x00\x00\x00\x00\x01\x49", kFstMarkSize};
constexpr std::string_view kPackedFstMark {"\xfe\x00\x00\x00", 4};

constexpr int kMostFstVersion = 127; // bytes of $version; the rest is cut off

/// Whether the $version of the FST file `path` begins with `start`, and has as many bytes as fit,
/// so that its end may be missing.
bool isFstVersionFull(const QString& path, const QByteArray& start);

/// Whether the FST file `path` ends where its last block does. Its tools check this neither when
/// they write nor when they read.
bool hasWholeFstBlocks(const QString& path);

}

#endif
