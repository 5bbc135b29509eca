#include "libyuv_rows.h"

#include <libyuv.h>
#include <libyuv/row.h>

#include <cstring>
#include <utility>

namespace bench::yuv {
namespace {

// Row functions come in pairs: for multiples of their lanes, and for any width.
#define BENCH_ROW(name, suffix, lanes, width)                                                                          \
  ((width) % (lanes) == 0 ? libyuv::name##_##suffix : libyuv::name##_Any_##suffix)

/// Room for what a row function may write behind a line.
constexpr std::size_t kSlack = 256;

const uint8_t *lineOf(const View &view, std::size_t plane, int32_t y) {
  return view.plane[plane] + std::ptrdiff_t{y} * view.stride[plane];
}

/// The constants for U and V exchanged: the weights of each channel stand in pairs.
libyuv::YuvConstants exchangedChroma() {
  libyuv::YuvConstants constants = libyuv::kYuvI601Constants;
  for (uint8_t *weights : {constants.kUVToB, constants.kUVToG, constants.kUVToR}) {
    for (std::size_t i = 0; i < 32; i += 2) {
      std::swap(weights[i], weights[i + 1]);
    }
  }
  return constants;
}

const libyuv::YuvConstants kExchanged = exchangedChroma();

/// Bytes 0 and 2, or 1 and 3, of every four exchanged.
constexpr uint8_t kEvenExchanged[32] = {2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15,
                                        2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15};
constexpr uint8_t kOddExchanged[32] = {0, 3, 2, 1, 4, 7, 6, 5, 8, 11, 10, 9, 12, 15, 14, 13,
                                       0, 3, 2, 1, 4, 7, 6, 5, 8, 11, 10, 9, 12, 15, 14, 13};

struct PackedOrder {
  int32_t type;
  RowKind kind;
  bool swapsChroma, swapsLuma;
};

constexpr PackedOrder kPackedOrders[] = {
    {COLOR_YUV422_YUYV, RowKind::Yuy2, false, false}, {COLOR_YUV422_YVYU, RowKind::Yuy2, true, false},
    {COLOR_YUV422_UYVY, RowKind::Uyvy, false, false}, {COLOR_YUV422_VYUY, RowKind::Uyvy, true, false},
    {COLOR_YUV422_YUYV2, RowKind::Yuy2, false, true}, {COLOR_YUV422_YVYU2, RowKind::Yuy2, true, true},
    {COLOR_YUV422_UYVY2, RowKind::Uyvy, false, true}, {COLOR_YUV422_VYUY2, RowKind::Uyvy, true, true},
};

struct Layout {
  int32_t type;
  RowKind kind;
  int32_t chromaShift;
};

constexpr Layout kLayouts[] = {
    {COLOR_YUV420_PLANAR, RowKind::I422, 1},      {COLOR_YUV422_PLANAR, RowKind::I422, 0},
    {COLOR_YUV444_PLANAR, RowKind::I444, 0},      {COLOR_YUV440_PLANAR, RowKind::I444, 1},
    {COLOR_YUV_QUARTER_HEIGHT, RowKind::I444, 2}, {COLOR_YUV411_PLANAR, RowKind::I411, 0},
    {COLOR_YUV420_PACK, RowKind::Nv12, 1},        {COLOR_YUV420_PACK2, RowKind::Nv21, 1},
    {COLOR_RGB888_PLANAR, RowKind::PlanarRgb, 0}, {COLOR_RGB24, RowKind::Rgb24, 0},
};

} // namespace

bool haveRows() {
  return libyuv::TestCpuFlag(libyuv::kCpuHasAVX2) != 0;
}

RowPicture rowPicture(const View &view) {
  for (const PackedOrder &order : kPackedOrders) {
    if (order.type == view.type) {
      return {order.kind, 0, order.swapsChroma, order.swapsLuma, view};
    }
  }
  for (const Layout &layout : kLayouts) {
    if (layout.type == view.type) {
      return {layout.kind, layout.chromaShift, false, false, view};
    }
  }
  return {};
}

RowConverter::RowConverter(const RowPicture &shape, int32_t outType, bool mirrored)
    : width_(shape.view.size.width), outType_(outType), mirrored_(mirrored),
      constants_(shape.swapsChroma ? kExchanged : libyuv::kYuvI601Constants) {
  for (auto *row : {&argb_, &other_, &u_, &v_}) {
    row->resize(4 * static_cast<std::size_t>(width_) + kSlack);
  }
}

/// A line of packed 4:2:2 with the first pixel of each macropixel first.
const uint8_t *RowConverter::packedLine(const RowPicture &from, int32_t y) {
  const uint8_t *line = lineOf(from.view, 0, y);
  if (!from.swapsLuma) {
    return line;
  }
  const uint8_t *order = from.kind == RowKind::Yuy2 ? kEvenExchanged : kOddExchanged;
  BENCH_ROW(ARGBShuffleRow, AVX2, 16, width_ / 2)(line, other_.data(), order, width_ / 2);
  return other_.data();
}

void RowConverter::toArgb(const RowPicture &from, int32_t y, uint8_t *to) {
  const View &view = from.view;
  const uint8_t *first = lineOf(view, 0, y);
  const int32_t chroma = y >> from.chromaShift;
  switch (from.kind) {
  case RowKind::I422:
    BENCH_ROW(I422ToARGBRow, AVX2, 16, width_)
    (first, lineOf(view, 1, chroma), lineOf(view, 2, chroma), to, &constants_, width_);
    return;
  case RowKind::I444:
    BENCH_ROW(I444ToARGBRow, AVX2, 16, width_)
    (first, lineOf(view, 1, chroma), lineOf(view, 2, chroma), to, &constants_, width_);
    return;
  case RowKind::I411: // a line interleaved with itself has every sample twice
    for (std::size_t p = 1; p < 3; ++p) {
      const uint8_t *line = lineOf(view, p, chroma);
      BENCH_ROW(MergeUVRow, AVX2, 32, width_ / 4)(line, line, (p == 1 ? u_ : v_).data(), width_ / 4);
    }
    BENCH_ROW(I422ToARGBRow, AVX2, 16, width_)(first, u_.data(), v_.data(), to, &constants_, width_);
    return;
  case RowKind::Nv12:
    BENCH_ROW(NV12ToARGBRow, AVX2, 16, width_)(first, lineOf(view, 1, chroma), to, &constants_, width_);
    return;
  case RowKind::Nv21:
    BENCH_ROW(NV21ToARGBRow, AVX2, 16, width_)(first, lineOf(view, 1, chroma), to, &constants_, width_);
    return;
  case RowKind::Yuy2:
    BENCH_ROW(YUY2ToARGBRow, AVX2, 32, width_)(packedLine(from, y), to, &constants_, width_);
    return;
  case RowKind::Uyvy:
    BENCH_ROW(UYVYToARGBRow, AVX2, 32, width_)(packedLine(from, y), to, &constants_, width_);
    return;
  case RowKind::PlanarRgb:
    BENCH_ROW(MergeXRGBRow, AVX2, 32, width_)(first, lineOf(view, 1, y), lineOf(view, 2, y), to, width_);
    return;
  case RowKind::Rgb24:
    BENCH_ROW(RGB24ToARGBRow, SSSE3, 16, width_)(first, to, width_);
    return;
  case RowKind::None:
    return;
  }
}

void RowConverter::line(const RowPicture &from, int32_t y, uint8_t *to) {
  if (outType_ == kBgra && !mirrored_) {
    toArgb(from, y, to);
    return;
  }
  toArgb(from, y, argb_.data());
  const uint8_t *argb = argb_.data();
  if (mirrored_) {
    BENCH_ROW(ARGBMirrorRow, AVX2, 8, width_)(argb, other_.data(), width_);
    argb = other_.data();
  }
  if (outType_ == COLOR_RGB565) {
    BENCH_ROW(ARGBToRGB565DitherRow, AVX2, 16, width_)(argb, to, 0U, width_);
  } else {
    BENCH_ROW(ARGBToRGB24Row, AVX2, 32, width_)(argb, to, width_);
  }
}

} // namespace bench::yuv
