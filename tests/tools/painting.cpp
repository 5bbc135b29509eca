#include "painting.h"

#include "color_types.h"
#include "zqColorConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using namespace zqconvert;

namespace painting {

namespace {

/// What byte `byte` of line `line` of a plane holds.
int sampleOf(int type, int index, int byte, int line, const std::function<Sample(int, int)> &at) {
  const ColorTypeInfo &info = colorType(type);
  const auto chroma = [](const Sample &sample, bool second) { return second ? sample.second : sample.third; };
  switch (info.family) {
  case Family::Planar: {
    const Sample sample = index == 0 ? at(byte, line) : at(byte << info.chromaShiftX, line << info.chromaShiftY);
    const bool vFirst = type == COLOR_YVU420_PLANAR || type == COLOR_YVU422_PLANAR;
    return index == 0 ? sample.first : chroma(sample, (index == 1) != vFirst);
  }
  case Family::SemiPlanar:
    return index == 0 ? at(byte, line).first
                      : chroma(at(byte / 2 * 2, 2 * line), (byte % 2 == 0) != (type == COLOR_YUV420_PACK2));
  case Family::Packed422: {
    constexpr std::array kOrders{"YUYV", "YVYU", "UYVY", "VYUY"};
    const std::string_view order = kOrders.at(static_cast<std::size_t>(type < 10 ? type - 6 : type - 14));
    const Sample sample = at(byte / 4 * 2, line); // both pixels of a group are alike in these pictures
    const char letter = order[static_cast<std::size_t>(byte % 4)];
    return letter == 'Y' ? sample.first : chroma(sample, letter == 'U');
  }
  case Family::Rgb24: {
    const Sample sample = at(byte / 3, line);
    return byte % 3 == 0 ? sample.third : byte % 3 == 1 ? sample.second : sample.first;
  }
  default: {
    const Sample sample = at(byte / 2, line);
    const int word = (sample.first >> 3 << 11) | (sample.second >> 2 << 5) | (sample.third >> 3);
    return byte % 2 == 0 ? word & 255 : word >> 8;
  }
  }
}

} // namespace

Frame paint(int type, Size size, const std::function<Sample(int x, int y)> &at) {
  Frame frame = makeFrame(type, size.width, size.height);
  for (int i = 0; i < planeCount(type); ++i) {
    const PlaneShape shape = frame.shape(i);
    for (int line = 0; line < shape.lines; ++line) {
      for (int byte = 0; byte < shape.lineBytes; ++byte) {
        frame.planes.at(static_cast<std::size_t>(i)).at(static_cast<std::size_t>(line * shape.stride + byte)) =
            static_cast<uint8_t>(sampleOf(type, i, byte, line, at));
      }
    }
  }
  return frame;
}

Sample pixelOf(const Frame &frame, int x, int y) {
  const bool wide = colorType(frame.type).family == Family::Rgb24;
  const uint8_t *at = frame.planes[0].data() + y * frame.stride + x * (wide ? 3 : 2);
  if (wide) {
    return {at[2], at[1], at[0]};
  }
  const int word = at[0] | (at[1] << 8);
  const int red = word >> 11;
  const int green = (word >> 5) & 63;
  const int blue = word & 31;
  return {(red << 3) | (red >> 2), (green << 2) | (green >> 4), (blue << 3) | (blue >> 2)};
}

bool isRgb(int type) {
  const Family family = colorType(type).family;
  return family == Family::Rgb16 || family == Family::Rgb24;
}

bool isYuv(int type) {
  return !isRgb(type) && type != COLOR_RGB888_PLANAR;
}

Frame viaLibrary(const Route &route, Frame &in, Size upright, uint8_t blank, int matrix) {
  const bool quarter = route.rotation == ROTATION_90_LEFT || route.rotation == ROTATION_90_RIGHT;
  Frame out = quarter ? makeFrame(route.outType, upright.height, upright.width)
                      : makeFrame(route.outType, upright.width, upright.height);
  ConvertParams params{};
  params.inType = route.inType;
  params.inWidth = in.width;
  params.inHeight = in.height;
  params.inStride = in.stride;
  params.outType = route.outType;
  params.outWidth = upright.width;
  params.outHeight = upright.height;
  params.outStride = out.stride;
  for (std::size_t i = 0; i < 3; ++i) {
    std::ranges::fill(out.planes[i], blank);
    params.inBuf[i] = in.planes[i].data();
    params.outBuf[i] = out.planes[i].data();
  }
  if (route.outType == COLOR_YVU420_PLANAR && route.inType != route.outType) {
    std::swap(params.outBuf[1], params.outBuf[2]);
  }
  params.isResize = route.scaled ? 1 : 0;
  params.rotation = route.rotation;
  params.antiAlias = route.quality;
  ConvertContext *handle = nullptr;
  EXPECT_EQ(zqCCInit(&handle), CC_OK);
  EXPECT_EQ(zqCCSetParameter(handle, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(static_cast<uintptr_t>(matrix))),
            CC_OK);
  EXPECT_EQ(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params), CC_OK);
  EXPECT_EQ(zqCCProcess(handle, &params), CC_OK);
  zqCCUninit(handle);
  return out;
}

} // namespace painting
