// The layouts of input pictures: the shape of each, and how to view the planes of a record whose picture is w x h.
#pragma once

#include "kernels/plane_view.h"
#include "tables/packed_layout.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

template <class Layout>
PlaneView planesOf(const ConvertParams &p, std::ptrdiff_t chromaStride, int32_t lastColumn, int32_t lastLine,
                   int32_t lineStep = 1) {
  return {p.inBuf[0], p.inBuf[1], p.inBuf[2], p.inStride,     chromaStride,
          lastColumn, lastLine,   lineStep,   Layout::kValues};
}

/// Planar 4:2:0.
struct Yuv420 {
  using Layout = Shape<1, 1>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    return planesOf<Layout>(p, p.inStride >> 1, w / 2 - 1, h / 2 - 1);
  }
};

/// 4:2:0 with pairs of chroma samples in the second plane.
struct SemiPlanar420 {
  using Layout = Shape<1, 1, 2>;
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    PlaneView view = planesOf<Layout>(p, p.inStride, w / 2 - 1, h / 2 - 1);
    const bool uFirst = p.inType == COLOR_YUV420_PACK;
    view.u = p.inBuf[1] + (uFirst ? 0 : 1);
    view.v = p.inBuf[1] + (uFirst ? 1 : 0);
    return view;
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

/// 16-bit RGB, all three components in a word.
struct Rgb565Words {
  static PlaneView view(const ConvertParams &p, int32_t w, int32_t h) {
    const uint8_t *base = p.inBuf[0];
    return {base, base, base, p.inStride, p.inStride, w - 1, h - 1, 1, Shape<0, 0, 2, 4, 0, 2>::kValues};
  }
};

} // namespace zqcc
