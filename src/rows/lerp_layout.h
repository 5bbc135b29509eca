// Which two samples every output of an interpolated row is made of, laid out as vector code reads it: windows of 16
// bytes, the numbers of the bytes in them, and weights. Made at set-up by portable code; one layout serves every level.
#pragma once

#include "rows/scale.h"

namespace zqp {

/// Bytes of a window, and outputs that one or two of them serve.
inline constexpr int32_t kLerpWindow = 16;
inline constexpr int32_t kLerpBlock = 8;
inline constexpr int32_t kLerpBlocks = kColumnGroup / kLerpBlock;

/// Bytes that one or two of the widest vectors read, one for each window of a block.
constexpr int32_t lerpReach(int32_t parts) {
  return 64 * parts;
}

// Of the two samples of an output the one that counts more is its nearer one: the word is
//   128 near + ((far - near) w + 128 >> 8),  w at most 16384,
// which has the same bits whichever of the two is called a and which b.

/// What does not depend on where in the row a group of kColumnGroup outputs lies, so that groups can share it.
struct alignas(64) LerpTables {
  /// [part][2 i]: number of output i's nearer byte in its window, [2 i + 1]: of the farther one; 0x80 in other parts.
  uint8_t mask[2][2 * kColumnGroup];
  /// -2 w; or the two factors, signed bytes that sum up to 128, where all weights are multiples of 256.
  int16_t weight[kColumnGroup];
  /// Within reach: windows as 32-bit lanes of lerpReach() bytes that serve half a group, [half][part].
  uint32_t lane[2][2][16];
  int32_t window[2][kLerpBlocks]; ///< [part][block]: first byte of the window, from the group's base on
  int32_t half;                   ///< where the reach of the second half begins, from the group's base on
  int32_t none[15];               ///< nothing: tables are compared as bytes
};

/// A group: its base in the row, and which tables are its own.
struct LerpPlace {
  int32_t base;
  int32_t tables;
};

/// Tables follow, one for each group at most, then the places of the groups.
struct alignas(64) LerpLayout {
  int32_t parts;    ///< windows that serve a block: 1 or 2; 0 where samples are taken one by one
  bool byteWeights; ///< what LerpTables::weight holds
  bool withinReach;
};

constexpr int32_t columnGroups(int32_t outputs) {
  return outputs / kColumnGroup + (outputs % kColumnGroup != 0 ? 1 : 0);
}

} // namespace zqp
