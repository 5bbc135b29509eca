#include "picture_types.h"

#include "error.h"
#include "raw_reader.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>

namespace zqconvert {

namespace {

struct Known {
  int type;
  ZqpFormat format;
  bool output;
  bool vFirst = false; ///< The frame's planes have V before U, and the format has no such order of its own.
};

constexpr auto kKnown = std::to_array<Known>({
    {COLOR_YUV444_PLANAR, ZQP_I444, true},
    {COLOR_YUV422_PLANAR, ZQP_I422, true},
    {COLOR_YUV440_PLANAR, ZQP_I440, false},
    {COLOR_YUV420_PLANAR, ZQP_I420, true},
    {COLOR_YUV411_PLANAR, ZQP_I411, false},
    {COLOR_YUV422_YUYV, ZQP_YUYV, true},
    {COLOR_YUV422_YVYU, ZQP_YVYU, true},
    {COLOR_YUV422_UYVY, ZQP_UYVY, true},
    {COLOR_YUV422_VYUY, ZQP_VYUY, true},
    {COLOR_YUV420_PACK, ZQP_NV12, true},
    {COLOR_YVU420_PLANAR, ZQP_YV12, true},
    {COLOR_YVU422_PLANAR, ZQP_I422, true, true},
    {COLOR_YUV422_YUYV2, ZQP_YUYV2, false},
    {COLOR_YUV422_YVYU2, ZQP_YVYU2, false},
    {COLOR_YUV422_UYVY2, ZQP_UYVY2, false},
    {COLOR_YUV422_VYUY2, ZQP_VYUY2, false},
    {COLOR_RGB565, ZQP_RGB565, true},
    {COLOR_RGB16_ALT, ZQP_RGB565, true},
    {COLOR_RGB24, ZQP_BGR24, true},
    {COLOR_RGB888_PLANAR, ZQP_RGB_PLANES, false},
    {COLOR_YUV420_PACK2, ZQP_NV21, true},
    {COLOR_YUV_QUARTER_HEIGHT, ZQP_QUARTER_HEIGHT, false},
    {kRgb565Swapped, ZQP_RGB565_SWAPPED, true},
    {kRgb24, ZQP_RGB24, true},
    {kRgba, ZQP_RGBA, true},
    {kBgra, ZQP_BGRA, true},
    {kGrey, ZQP_GREY, true},
});

const Known &known(int type) {
  const auto *at = std::ranges::find_if(kKnown, [type](const Known &entry) { return entry.type == type; });
  if (at == kKnown.end()) {
    throw Error("there is no colour type " + std::to_string(type));
  }
  return *at;
}

} // namespace

ZqpFormat pictureFormat(int type) {
  return known(type).format;
}

bool isPictureOutput(int type) {
  return known(type).output;
}

ZqpPicture viewOf(const Frame &frame) {
  const Known &entry = known(frame.type);
  ZqpPicture view{};
  view.recordSize = sizeof view;
  view.format = entry.format;
  view.width = frame.width;
  view.height = frame.height;
  for (int i = 0; i < planeCount(frame.type); ++i) {
    const auto from = static_cast<std::size_t>(entry.vFirst && i > 0 ? 3 - i : i);
    const std::vector<uint8_t> &plane = frame.planes.at(from);
    // The record serves inputs, which are read only, as well.
    view.planes[i] = {const_cast<uint8_t *>(plane.data()), frame.whole(i).stride, plane.size()};
  }
  return view;
}

std::string describePictureTypes() {
  std::string text;
  for (const ColorTypeInfo &type : colorTypes(Library::Picture)) {
    std::string line = type.names;
    line.resize(std::max<std::size_t>(line.size() + 1, 26), ' ');
    line += isPictureOutput(type.code) ? "in and out   " : "input only   ";
    text += line + type.layout + "\n";
  }
  return text + describeRawLayouts(Library::Picture);
}

} // namespace zqconvert
