// The colour state that reference conversions are given: the matrix in force and the dither words.
#pragma once

#include <array>
#include <cstdint>

namespace reference {

struct Colour {
  /// Cr to R, Cr to G, Cb to B, Cb to G, 20 fractional bits.
  std::array<int32_t, 4> matrix{1471152, 748683, 1859125, 360710};
  /// Red/blue offsets [line parity][pixel parity]; a custom matrix overwrites them.
  std::array<int32_t, 4> redBlueDither{2, -1, 1, -3};
  std::array<int32_t, 4> greenDither{0, -3, -2, -1};
};

} // namespace reference
