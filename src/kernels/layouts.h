// Sources of same-size conversions: where the samples of a 2 x 2 group of pixels lie. A shape fixes the pattern at
// compile time; a view says where this picture's planes are and where they end.
#pragma once

#include "base/limits.h"
#include "tables/packed_layout.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Pattern of a source as values: see Shape, which has it as constants.
struct LayoutValues {
  int32_t xShift;
  int32_t yShift;
  int32_t sampleStep;
  int32_t pairStep;
  int32_t leftLuma;
  int32_t rightLuma;
};

/// The planes of one picture as a kernel reads them. Columns and lines past the last sample take the last one.
struct PlaneView {
  const uint8_t *y;
  const uint8_t *u;
  const uint8_t *v;
  std::ptrdiff_t yStride;
  std::ptrdiff_t cStride;
  int32_t lastColumn; ///< index of the last chroma sample of a line
  int32_t lastLine;   ///< index of the last chroma line
  int32_t lineStep;   ///< chroma lines from one that is read to the next: 2 where every second one is skipped
  LayoutValues layout;
};

/// Offset of the chroma line of picture line y.
inline std::ptrdiff_t chromaLineOffset(const PlaneView &view, int32_t y) {
  return smaller((y >> view.layout.yShift) * view.lineStep, view.lastLine) * view.cStride;
}

/// Pattern of a source: luma of the pixel pair at even column x stands at lineStart + x / 2 * pairStep plus leftLuma or
/// rightLuma; the chroma sample of pixel (x, y) is number x >> xShift of line y >> yShift, sampleStep bytes apart.
template <int xShift, int yShift, int sampleStep = 1, int pairStep = 2, int leftLuma = 0, int rightLuma = 1>
struct Shape {
  static constexpr LayoutValues kValues{xShift, yShift, sampleStep, pairStep, leftLuma, rightLuma};
  static constexpr bool kSharedByColumns = xShift > 0;
  static constexpr bool kSharedByLines = yShift > 0;

  /// Offset of the luma sample at column x + column, x even.
  template <int column>
  static std::ptrdiff_t lumaOffset(int32_t x) {
    return std::ptrdiff_t{x >> 1} * pairStep + (column == 0 ? leftLuma : rightLuma);
  }
  static std::ptrdiff_t chromaOffset(int32_t x) { return std::ptrdiff_t{x >> xShift} * sampleStep; }
  /// First column, a multiple of two, whose pixel pair may lie behind the last chroma sample.
  static int32_t ownChromaEnd(const PlaneView &view) { return ((view.lastColumn + 1) << xShift) & ~1; }
};

template <class Layout>
PlaneView planesOf(const ConvertParams &p, std::ptrdiff_t chromaStride, int32_t lastColumn, int32_t lastLine,
                   int32_t lineStep = 1) {
  return {p.inBuf[0], p.inBuf[1], p.inBuf[2], p.inStride,     chromaStride,
          lastColumn, lastLine,   lineStep,   Layout::kValues};
}

// Sources: a shape, and how to view the planes of a record whose picture is w x h.

/// Planar 4:2:0.
struct Yuv420 {
  using Layout = Shape<1, 1>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 1, w / 2 - 1, h / 2 - 1);
  }
};

/// Planar 4:2:2 of which every second chroma line is read.
struct Yuv422EvenLines {
  using Layout = Shape<1, 1>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 1, w / 2 - 1, h - 1, 2);
  }
};

/// Planar 4:2:2 taken for 4:2:0: chroma line k serves lines 2k and 2k + 1, so only the upper half is used.
struct Yuv422As420 {
  using Layout = Shape<1, 1>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 1, w / 2 - 1, (h - 1) / 2);
  }
};

/// Planar 4:2:2, every line with its own chroma.
struct Yuv422 {
  using Layout = Shape<1, 0>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 1, w / 2 - 1, h - 1);
  }
};

/// Planar 4:4:4, and planar RGB with red in luma's place.
struct Yuv444 {
  using Layout = Shape<0, 0>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride, w - 1, h - 1);
  }
};

/// Chroma lines as wide as luma's, half as many; only the even samples are read.
struct Yuv440 {
  using Layout = Shape<1, 1, 2>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride, (w - 1) / 2, h / 2 - 1);
  }
};

/// Planar 4:1:1.
struct Yuv411 {
  using Layout = Shape<2, 0>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 2, w / 4 - 1, h - 1);
  }
};

/// Chroma lines as wide as luma's, a quarter as many.
struct YuvQuarterHeight {
  using Layout = Shape<0, 2>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride, w - 1, h / 4 - 1);
  }
};

/// Planes of a packed 4:2:2 picture whose luma starts at `luma` bytes into a line. upperChroma: the chroma of the upper
/// line of a pair serves both.
inline PlaneView packedView(const ConvertParams &p, int32_t w, int32_t h, const PackedLayout &bytes, int32_t luma,
                            bool upperChroma) {
  const uint8_t *base = p.inBuf[0];
  const LayoutValues layout{1, upperChroma ? 1 : 0, 4, 4, bytes.left - luma, bytes.right - luma};
  return {base + luma, base + bytes.u, base + bytes.v,      p.inStride, p.inStride,
          (w - 1) / 2, h - 1,          upperChroma ? 2 : 1, layout};
}

/// Packed 4:2:2 in one byte order; the chroma of the upper line of a pair serves both lines.
template <uint32_t variant>
struct Packed422UpperChroma {
  using Layout = Shape<1, 1, 4, 4, packedLayout(variant).left, packedLayout(variant).right>;
};

/// Packed 4:2:2 with each line's own chroma; the view starts at the left pixel's luma.
template <bool swapped>
struct Packed422 {
  using Layout = Shape<1, 0, 4, 4, 0, swapped ? -2 : 2>;
};

/// RGB24 bytes B, G, R: red in luma's place, green and blue in chroma's.
struct Rgb24Bytes {
  using Layout = Shape<0, 0, 3, 6, 0, 3>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    const uint8_t *base = p.inBuf[0];
    return {base + 2, base + 1, base, p.inStride, p.inStride, w - 1, h - 1, 1, Layout::kValues};
  }
};

} // namespace zqcc
