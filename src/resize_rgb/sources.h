// Sources of resizing conversions: the samples and the arithmetic of a group of up to 2 x 2 output pixels.
#pragma once

#include "kernels/arithmetic.h"
#include "kernels/planes.h"
#include "resize_rgb/samplers.h"
#include "resize_rgb/taps.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Taps of the two columns or lines of a group; a lone last one stands twice.
struct TapPair {
  Tap first;
  Tap second;
};

// Chroma rules: which sample a pixel of a group takes. Columns from the taps of the group's two pixels, lines from
// those of its two lines.

/// Planar 4:2:0, and 4:2:2 through a view that skips every second line: one sample a group, no interpolation.
struct GroupChroma {
  static constexpr bool kPerColumn = false;
  static constexpr bool kPerLine = false;
  static int32_t column(const PlaneView & /*view*/, const TapPair &x, int /*pixel*/) {
    return (x.first.index + x.second.index + 1) >> 2;
  }
  static int32_t line(const PlaneView &view, const TapPair &y, int /*line*/) {
    return (y.first.index >> 1) * view.lineStep;
  }
};

/// 4:4:4: every pixel its own column; the second line takes the line below the first one's, not its own.
struct FullChroma {
  static constexpr bool kPerColumn = true;
  static constexpr bool kPerLine = true;
  static int32_t column(const PlaneView & /*view*/, const TapPair &x, int pixel) {
    return pixel == 0 ? x.first.index : x.second.index;
  }
  static int32_t line(const PlaneView & /*view*/, const TapPair &y, int line) { return y.first.index + line; }
};

/// 4:4:0: every pixel its own column, both lines the first one's chroma line.
struct HalfHeightChroma : FullChroma {
  static constexpr bool kPerLine = false;
  static int32_t line(const PlaneView &view, const TapPair &y, int /*line*/) {
    return smaller(y.first.index >> 1, view.lastLine);
  }
};

/// 4:1:1: one sample a pixel pair, every line its own.
struct QuarterWidthChroma {
  static constexpr bool kPerColumn = false;
  static constexpr bool kPerLine = true;
  static int32_t column(const PlaneView &view, const TapPair &x, int /*pixel*/) {
    return smaller((x.first.index + x.second.index + 4) >> 3, view.lastColumn);
  }
  static int32_t line(const PlaneView & /*view*/, const TapPair &y, int line) {
    return line == 0 ? y.first.index : y.second.index;
  }
};

/// Quarter height: every pixel its own column, every line a quarter of its own line.
struct QuarterHeightChroma : FullChroma {
  static int32_t line(const PlaneView &view, const TapPair &y, int line) {
    return smaller((line == 0 ? y.first.index : y.second.index) >> 2, view.lastLine);
  }
};

/// YUV with luma by `Sampler`, chroma by `Chroma`, fixed BT.601; the matrix in force is deliberately not asked.
template <class Chroma, class Sampler>
struct YuvSource {
  struct Lines {
    TapPair taps;
    const uint8_t *luma[2];
    const uint8_t *u[2];
    const uint8_t *v[2];
  };

  static Lines linesAt(const PlaneView &view, const TapPair &y) {
    Lines lines{y, {}, {}, {}};
    const int32_t rows[2] = {y.first.index, y.second.index};
    for (int l = 0; l < 2; ++l) {
      const std::ptrdiff_t chroma = Chroma::line(view, y, l) * view.cStride;
      lines.luma[l] = view.y + rows[l] * view.yStride;
      lines.u[l] = view.u + chroma;
      lines.v[l] = view.v + chroma;
    }
    return lines;
  }

  /// `pixel` and `line` place the group's first pixel in a step of the sampler.
  template <int pixel, int line, int columns, int lineCount>
  [[gnu::always_inline]] static void convert(const PlaneView &view, const Lines &from, const TapPair &x,
                                             uint32_t (&quad)[2][2]) {
    const Tap taps[2] = {x.first, x.second};
    ColorTerms terms{};
    const auto fetch = [&](int l, int c) {
      const std::ptrdiff_t at = Chroma::column(view, x, c);
      terms = Studio::terms(from.u[l][at], from.v[l][at]);
    };
    const auto luma = [&]<int l, int c>() {
      const Tap &y = l == 0 ? from.taps.first : from.taps.second;
      const int32_t value = Sampler::template sample<pixel + c, line + l>(from.luma[l], view.yStride, taps[c], y);
      quad[l][c] = StudioSixBit::pixel<l, c>(terms, value);
    };
    fetch(0, 0);
    luma.template operator()<0, 0>();
    if constexpr (lineCount == 2 && !Chroma::kPerLine) {
      luma.template operator()<1, 0>();
    }
    if constexpr (columns == 2) {
      if constexpr (Chroma::kPerColumn) {
        fetch(0, 1);
      }
      luma.template operator()<0, 1>();
      if constexpr (lineCount == 2 && !Chroma::kPerLine) {
        luma.template operator()<1, 1>();
      }
    }
    if constexpr (lineCount == 2 && Chroma::kPerLine) {
      fetch(1, 0);
      luma.template operator()<1, 0>();
      if constexpr (columns == 2) {
        if constexpr (Chroma::kPerColumn) {
          fetch(1, 1);
        }
        luma.template operator()<1, 1>();
      }
    }
  }
};

/// RGB samples, each channel interpolated alone and cut to its top bits. step 1: three planes; step 3: RGB24 bytes.
template <int step>
struct RgbSource {
  struct Lines {
    TapPair taps;
    const uint8_t *red[2];
    const uint8_t *green[2];
    const uint8_t *blue[2];
  };

  static Lines linesAt(const PlaneView &view, const TapPair &y) {
    const std::ptrdiff_t first = y.first.index * view.yStride;
    const std::ptrdiff_t second = y.second.index * view.yStride;
    return {y, {view.y + first, view.y + second}, {view.u + first, view.u + second}, {view.v + first, view.v + second}};
  }

  template <int pixel, int line, int columns, int lineCount>
  [[gnu::always_inline]] static void convert(const PlaneView &view, const Lines &from, const TapPair &x,
                                             uint32_t (&quad)[2][2]) {
    for (int l = 0; l < lineCount; ++l) {
      const Tap &y = l == 0 ? from.taps.first : from.taps.second;
      for (int c = 0; c < columns; ++c) {
        const Tap &tap = c == 0 ? x.first : x.second;
        const auto channel = [&](const uint8_t *top) {
          return static_cast<uint32_t>(bilinearSum<step>(top, view.yStride, tap, y));
        };
        quad[l][c] = packRgb565(channel(from.red[l]) >> 23, channel(from.green[l]) >> 22, channel(from.blue[l]) >> 23);
      }
    }
  }
};

} // namespace zqcc
