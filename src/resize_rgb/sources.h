// Sources of resizing conversions: from the samples of two output lines to their pixels. A source is built for a view
// and the columns of a chunk; lines(y) gives an object whose makeQuad(i, quad) makes the 2 x 2 pixels at output column
// i and whose pixel(line, i) makes one.
#pragma once

#include "kernels/arithmetic.h"
#include "kernels/chroma_rules.h"
#include "kernels/plane_view.h"
#include "kernels/writers.h"
#include "resize_rgb/samplers.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Two output lines of YUV: luma as sampled, chroma by rule, fixed BT.601; the matrix in force is deliberately not
/// asked.
template <class Rule, class Samples>
struct YuvLines {
  Samples luma;
  const uint8_t *u[2];
  const uint8_t *v[2];
  const int32_t *columns; ///< chroma column of every pixel, or of every pair where a pair shares one
  StudioSixBit arithmetic;

  [[nodiscard]] ColorTerms terms(int line, int32_t i) const {
    const int32_t at = columns[Rule::kPerColumn ? i : i >> 1];
    return Studio::terms(u[line][at], v[line][at]);
  }

  [[gnu::always_inline]] void makeQuad(int32_t i, Quad<uint32_t> &quad) const {
    ColorTerms left = terms(0, i);
    ColorTerms right = Rule::kPerColumn ? terms(0, i + 1) : left;
    quad[0][0] = arithmetic.pixel<0, 0>(left, luma.template at<0>(i));
    quad[0][1] = arithmetic.pixel<0, 1>(right, luma.template at<0>(i + 1));
    if constexpr (Rule::kPerLine) {
      left = terms(1, i);
      right = Rule::kPerColumn ? terms(1, i + 1) : left;
    }
    quad[1][0] = arithmetic.pixel<1, 0>(left, luma.template at<1>(i));
    quad[1][1] = arithmetic.pixel<1, 1>(right, luma.template at<1>(i + 1));
  }

  [[nodiscard]] uint32_t pixel(int line, int32_t i) const {
    const int32_t y = line == 0 ? luma.template at<0>(i) : luma.template at<1>(i);
    return arithmetic.pixel<0, 0>(terms(Rule::kPerLine ? line : 0, i), y);
  }
};

template <class Rule, class Sampler>
class YuvSource {
public:
  using Lines = YuvLines<Rule, typename Sampler::Samples>;

  YuvSource(const PlaneView &view, const ColumnTaps &x) : view_(view), luma_(view.y, view.yStride, x) {
    for (int32_t i = 0; i < x.count; ++i) {
      if (Rule::kPerColumn) {
        columns_[i] = Rule::column(view, x.taps[i].index, 0);
      } else if (i % 2 == 0) {
        // A lone last column is its own partner.
        columns_[i >> 1] = Rule::column(view, x.taps[i].index, x.taps[i + 1 < x.count ? i + 1 : i].index);
      }
    }
  }

  Lines lines(const TapPair &y) {
    Lines lines{luma_.lines(y), {}, {}, columns_, arithmetic_};
    for (int l = 0; l < 2; ++l) {
      const std::ptrdiff_t chroma = Rule::line(view_, y, l) * view_.cStride;
      lines.u[l] = view_.u + chroma;
      lines.v[l] = view_.v + chroma;
    }
    return lines;
  }

private:
  const PlaneView &view_;
  Sampler luma_;
  StudioSixBit arithmetic_;
  int32_t columns_[kChunk];
};

/// Two output lines of RGB, each channel interpolated alone and cut to its top bits.
struct RgbLines {
  MixedRows red;
  MixedRows green;
  MixedRows blue;

  template <int line>
  [[nodiscard]] uint32_t at(int32_t i) const {
    const auto top = [](int32_t sum, int shift) { return static_cast<uint32_t>(sum) >> shift; };
    return packRgb565(top(red.sum<line>(i), 23), top(green.sum<line>(i), 22), top(blue.sum<line>(i), 23));
  }
  void makeQuad(int32_t i, Quad<uint32_t> &quad) const {
    quad[0][0] = at<0>(i);
    quad[0][1] = at<0>(i + 1);
    quad[1][0] = at<1>(i);
    quad[1][1] = at<1>(i + 1);
  }
  [[nodiscard]] uint32_t pixel(int line, int32_t i) const { return line == 0 ? at<0>(i) : at<1>(i); }
};

/// step 1: three planes; step 3: RGB24 bytes.
template <int step>
class RgbSource {
public:
  using Lines = RgbLines;
  RgbSource(const PlaneView &view, const ColumnTaps &x)
      : red_(view.y, view.yStride, x), green_(view.u, view.yStride, x), blue_(view.v, view.yStride, x) {}
  Lines lines(const TapPair &y) { return {mixedRows(red_, y), mixedRows(green_, y), mixedRows(blue_, y)}; }

private:
  InterpolatedRows<step> red_;
  InterpolatedRows<step> green_;
  InterpolatedRows<step> blue_;
};

} // namespace zqcc
