// Where the bytes of a macropixel stand, the four bytes of packed 4:2:2 that hold two pixels and their common chroma.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zqcc {

inline constexpr uint32_t kPackedVariants = 8;
inline constexpr std::ptrdiff_t kMacropixelBytes = 4;

/// Byte positions of the first chroma sample (U) and of the second one (V) in a macropixel, by variant & 3.
inline constexpr std::array<int32_t, 4> kPackedU{1, 3, 0, 2};
inline constexpr std::array<int32_t, 4> kPackedV{3, 1, 2, 0};

/// Byte positions within a macropixel: the left and the right pixel's luma, and the chroma they share.
struct PackedLayout {
  int32_t left;
  int32_t right;
  int32_t u;
  int32_t v;

  /// The first luma byte in memory is the right pixel's.
  [[nodiscard]] constexpr bool isSwapped() const { return left > right; }
  /// Where the first luma byte and the first chroma byte stand; the second ones follow two bytes on.
  [[nodiscard]] constexpr int32_t firstLuma() const { return isSwapped() ? right : left; }
  [[nodiscard]] constexpr int32_t firstChroma() const { return 1 - firstLuma(); }
};

/// Variants 4..7 are 0..3 with the two luma bytes exchanged.
constexpr PackedLayout packedLayout(uint32_t variant) {
  const uint32_t base = variant & 3U;
  const int32_t luma = base > 1 ? 1 : 0;
  const bool swapped = variant > 3;
  return {swapped ? luma + 2 : luma, swapped ? luma : luma + 2, kPackedU[base], kPackedV[base]};
}

} // namespace zqcc
