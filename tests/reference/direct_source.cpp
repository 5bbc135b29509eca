#include "reference/direct_source.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace reference::direct {

int Plane::at(int column, int line) const {
  const int c = std::clamp(column, 0, width - 1);
  const int l = std::clamp(line, 0, lines - 1);
  return base[static_cast<std::ptrdiff_t>(l) * pitch + static_cast<std::ptrdiff_t>(c) * step];
}

std::ptrdiff_t Plane::bytes() const {
  return static_cast<std::ptrdiff_t>(lines - 1) * pitch + width;
}

namespace {
/// Width, lines and pitch of the second and third plane of a w x h picture.
Plane chromaShape(const ConvertParams &p, int w, int h) {
  const int s = p.inStride;
  switch (p.inType) {
  case COLOR_YUV420_PLANAR:
  case COLOR_YVU420_PLANAR:
    return {nullptr, w / 2, h / 2, s >> 1, 1};
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {nullptr, w / 2, h / 2, s, 2};
  case COLOR_YUV422_PLANAR:
  case COLOR_YVU422_PLANAR:
    return {nullptr, w / 2, h, s >> 1, 1};
  case COLOR_YUV440_PLANAR:
    return {nullptr, w, h / 2, s, 1};
  case COLOR_YUV411_PLANAR:
    return {nullptr, w / 4, h, s >> 2, 1};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {nullptr, w, h / 4, s, 1};
  default:
    return {nullptr, w, h, s, 1};
  }
}
} // namespace

PlanarSource::PlanarSource(const ConvertParams &p)
    : type_(p.inType), width_(p.isResize == 1 ? p.inWidth : p.outWidth), stride_(p.inStride) {
  const int height = p.isResize == 1 ? p.inHeight : p.outHeight;
  planes_[0] = {p.inBuf[0], width_, height, p.inStride, 1};
  planes_[1] = chromaShape(p, width_, height);
  planes_[2] = planes_[1];
  planes_[1].base = p.inBuf[1];
  planes_[2].base = p.inBuf[2];
  if (type_ == COLOR_YVU420_PLANAR || type_ == COLOR_YVU422_PLANAR) {
    std::swap(planes_[1].base, planes_[2].base);
    type_ = type_ == COLOR_YVU420_PLANAR ? COLOR_YUV420_PLANAR : COLOR_YUV422_PLANAR;
  }
  if (type_ == COLOR_YUV420_PACK || type_ == COLOR_YUV420_PACK2) {
    // A picture of a single line may come without chroma, of which nothing is then read.
    const uint8_t *second = p.inBuf[1] != nullptr ? p.inBuf[1] + 1 : nullptr;
    const bool uFirst = type_ == COLOR_YUV420_PACK;
    planes_[1].base = uFirst ? p.inBuf[1] : second;
    planes_[2].base = uFirst ? second : p.inBuf[1];
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
  if (type_ == COLOR_YUV420_PLANAR || type_ == COLOR_YUV422_PLANAR) {
    return source.at(column, line);
  }
  const std::ptrdiff_t bytes = source.bytes();
  const std::ptrdiff_t half = stride_ >> 1;
  const std::ptrdiff_t samples = std::max(width_ / 2, 1);
  std::ptrdiff_t start = line * half;
  while (start > 0 && half > 0 && start + samples > bytes) {
    start -= half;
  }
  return source.base[std::min(start + column, bytes - 1)];
}

Chroma PlanarSource::chromaAsHalfWidth(int x, int y) const {
  if (is420()) {
    return chroma(x, y, ChromaLines::FirstOfPair);
  }
  const int column = std::clamp(x / 2, 0, std::max(width_ / 2 - 1, 0));
  return {halfPitch(1, column, y / 2 * 2), halfPitch(2, column, y / 2 * 2)};
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
