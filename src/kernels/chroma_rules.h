// Which chroma sample a pixel of a resized picture takes: it is not interpolated.
#pragma once

#include "kernels/plane_view.h"
#include "kernels/tap_pairs.h"

#include <cstdint>

namespace zqcc {

/// x0 + x1 + round over 1 << shift: the sum of two columns can take all 32 bits.
constexpr int32_t meanColumn(int32_t x0, int32_t x1, uint32_t round, int shift) {
  return static_cast<int32_t>((static_cast<uint32_t>(x0) + static_cast<uint32_t>(x1) + round) >> shift);
}

// Chroma rules: which sample a pixel of a quad takes. column() from the taps of the pixel's pair, line() from those of
// the quad's two lines.

/// Planar 4:2:0, and 4:2:2 through a view that skips every second line: one sample a quad, no interpolation.
struct QuadChroma {
  static constexpr bool kPerColumn = false;
  static constexpr bool kPerLine = false;
  static int32_t column(const PlaneView & /*view*/, int32_t x0, int32_t x1) { return meanColumn(x0, x1, 1, 2); }
  static int32_t line(const PlaneView &view, const TapPair &y, int /*line*/) {
    return (y.first.index >> 1) * view.lineStep;
  }
};

/// Chroma planes as wide as luma's: every pixel its own column.
struct ColumnChroma {
  static constexpr bool kPerColumn = true;
  static int32_t column(const PlaneView & /*view*/, int32_t x, int32_t /*x1*/) { return x; }
};

/// 4:4:4: the second line takes the line below the first one's, not its own.
struct FullChroma : ColumnChroma {
  static constexpr bool kPerLine = true;
  static int32_t line(const PlaneView & /*view*/, const TapPair &y, int line) { return y.first.index + line; }
};

/// 4:4:0: both lines the first one's chroma line.
struct HalfHeightChroma : ColumnChroma {
  static constexpr bool kPerLine = false;
  static int32_t line(const PlaneView &view, const TapPair &y, int /*line*/) {
    return smaller(y.first.index >> 1, view.lastLine);
  }
};

/// 4:1:1: one sample a pixel pair, every line its own.
struct QuarterWidthChroma {
  static constexpr bool kPerColumn = false;
  static constexpr bool kPerLine = true;
  static int32_t column(const PlaneView &view, int32_t x0, int32_t x1) {
    return smaller(meanColumn(x0, x1, 4, 3), view.lastColumn);
  }
  static int32_t line(const PlaneView & /*view*/, const TapPair &y, int line) {
    return line == 0 ? y.first.index : y.second.index;
  }
};

/// Quarter height: every line a quarter of its own line.
struct QuarterHeightChroma : ColumnChroma {
  static constexpr bool kPerLine = true;
  static int32_t line(const PlaneView &view, const TapPair &y, int line) {
    return smaller((line == 0 ? y.first.index : y.second.index) >> 2, view.lastLine);
  }
};

} // namespace zqcc
