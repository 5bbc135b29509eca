#include "reference/direct_source.h"

#include "support/picture.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace reference::direct {

PlanarSource::PlanarSource(const ConvertParams &p)
    : type_(p.inType), width_(p.isResize == 1 ? p.inWidth : p.outWidth), stride_(p.inStride) {
  const int height = p.isResize == 1 ? p.inHeight : p.outHeight;
  planes_[0] = {p.inBuf[0], p.inStride, width_, height};
  planes_[1] = chromaPlane(type_, p.inBuf[1], width_, height, p.inStride);
  planes_[2] = chromaPlane(type_, p.inBuf[2], width_, height, p.inStride);
  if (type_ == COLOR_YVU420_PLANAR || type_ == COLOR_YVU422_PLANAR) {
    std::swap(planes_[1].data, planes_[2].data);
    type_ = type_ == COLOR_YVU420_PLANAR ? COLOR_YUV420_PLANAR : COLOR_YUV422_PLANAR;
  }
  if (support::isSemiPlanar(type_)) {
    // A picture of a single line may come without chroma, of which nothing is then read.
    const uint8_t *second = p.inBuf[1] != nullptr ? p.inBuf[1] + 1 : nullptr;
    const bool uFirst = type_ == COLOR_YUV420_PACK;
    planes_[1] = {uFirst ? p.inBuf[1] : second, p.inStride, width_ / 2, height / 2, 2};
    planes_[2] = {uFirst ? second : p.inBuf[1], p.inStride, width_ / 2, height / 2, 2};
    type_ = COLOR_YUV420_PLANAR;
  }
}

Chroma PlanarSource::chroma(int x, int y, ChromaLines lines) const {
  int column = x;
  int line = y;
  switch (type_) {
  case COLOR_YUV420_PLANAR:
    column = x / 2;
    line = y / 2;
    break;
  case COLOR_YUV422_PLANAR:
    column = x / 2;
    line = lines == ChromaLines::Own ? y : lines == ChromaLines::FirstOfPair ? y / 2 * 2 : y / 2;
    break;
  case COLOR_YUV440_PLANAR:
    column = x / 2 * 2;
    line = y / 2;
    break;
  case COLOR_YUV411_PLANAR:
    column = x / 4;
    break;
  case COLOR_YUV_QUARTER_HEIGHT:
    line = y / 4;
    break;
  default:
    break;
  }
  return {planes_[1].at(column, line), planes_[2].at(column, line)};
}

int PlanarSource::halfPitch(int plane, int column, int line) const {
  const Plane &source = planes_[static_cast<std::size_t>(plane)];
  const bool isOwnLayout = type_ == COLOR_YUV420_PLANAR || type_ == COLOR_YUV422_PLANAR;
  return isOwnLayout ? source.at(column, line) : atHalfPitch(source, stride_, width_, column, line);
}

Chroma PlanarSource::chromaAsHalfWidth(int x, int y) const {
  if (is420()) {
    return chroma(x, y, ChromaLines::FirstOfPair);
  }
  return {halfPitch(1, x / 2, y / 2 * 2), halfPitch(2, x / 2, y / 2 * 2)};
}

uint16_t PlanarSource::rgb565(int x, int y) const {
  return pack888(planes_[0].at(x, y), planes_[1].at(x, y), planes_[2].at(x, y));
}

PackedSource::PackedSource(const ConvertParams &p) : base_(p.inBuf[0]), stride_(p.inStride) {
  // Each type as the letters of its four bytes: a and b are the left and right luma.
  static constexpr std::pair<int, const char *> kOrders[] = {{6, "aUbV"},  {7, "aVbU"},  {8, "UaVb"},  {9, "VaUb"},
                                                             {14, "bUaV"}, {15, "bVaU"}, {16, "UbVa"}, {17, "VbUa"}};
  for (const auto &[type, bytes] : kOrders) {
    if (type == p.inType) {
      const auto position = [order = bytes](char c) { return static_cast<std::size_t>(std::strchr(order, c) - order); };
      lumaAt_ = {position('a'), position('b')};
      uAt_ = position('U');
      vAt_ = position('V');
    }
  }
}

const uint8_t *PackedSource::group(int x, int y) const {
  return base_ + static_cast<std::ptrdiff_t>(y) * stride_ + static_cast<std::ptrdiff_t>(x / 2) * 4;
}

int PackedSource::luma(int x, int y) const {
  return group(x, y)[lumaAt_[static_cast<std::size_t>(x & 1)]];
}

Chroma PackedSource::chroma(int x, int y) const {
  const uint8_t *g = group(x, y);
  return {g[uAt_], g[vAt_]};
}

} // namespace reference::direct
