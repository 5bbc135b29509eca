#include "color_types.h"

#include "error.h"
#include "text.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace zqconvert {

namespace {

constexpr auto kTypes = std::to_array<ColorTypeInfo>({
    {COLOR_YUV444_PLANAR, Family::Planar, 0, 0, "COLOR_YUV444_PLANAR", "i444 yuv444p", "Y, U, V planes, full chroma"},
    {COLOR_YUV422_PLANAR, Family::Planar, 1, 0, "COLOR_YUV422_PLANAR", "i422 yuv422p",
     "Y, U, V planes, chroma w/2 x h"},
    {COLOR_YUV440_PLANAR, Family::Planar, 0, 1, "COLOR_YUV440_PLANAR", "i440 yuv440p",
     "Y, U, V planes, chroma w x h/2"},
    {COLOR_YUV420_PLANAR, Family::Planar, 1, 1, "COLOR_YUV420_PLANAR", "i420 yuv420p iyuv",
     "Y, U, V planes, chroma w/2 x h/2"},
    {COLOR_YUV411_PLANAR, Family::Planar, 2, 0, "COLOR_YUV411_PLANAR", "i411 yuv411p",
     "Y, U, V planes, chroma w/4 x h"},
    {COLOR_YUV422_YUYV, Family::Packed422, 1, 0, "COLOR_YUV422_YUYV", "yuyv yuy2 yuyv422", "bytes Y0 U Y1 V"},
    {COLOR_YUV422_YVYU, Family::Packed422, 1, 0, "COLOR_YUV422_YVYU", "yvyu yvyu422", "bytes Y0 V Y1 U"},
    {COLOR_YUV422_UYVY, Family::Packed422, 1, 0, "COLOR_YUV422_UYVY", "uyvy uyvy422", "bytes U Y0 V Y1"},
    {COLOR_YUV422_VYUY, Family::Packed422, 1, 0, "COLOR_YUV422_VYUY", "vyuy vyuy422", "bytes V Y0 U Y1"},
    {COLOR_YUV420_PACK, Family::SemiPlanar, 1, 1, "COLOR_YUV420_PACK", "nv12", "Y plane, then h/2 lines of U V pairs"},
    {COLOR_YVU420_PLANAR, Family::Planar, 1, 1, "COLOR_YVU420_PLANAR", "yv12", "as i420 with V before U"},
    {COLOR_YVU422_PLANAR, Family::Planar, 1, 0, "COLOR_YVU422_PLANAR", "yv16", "as i422 with V before U"},
    {COLOR_YUV422_YUYV2, Family::Packed422, 1, 0, "COLOR_YUV422_YUYV2", "yuyv2", "bytes Y1 U Y0 V"},
    {COLOR_YUV422_YVYU2, Family::Packed422, 1, 0, "COLOR_YUV422_YVYU2", "yvyu2", "bytes Y1 V Y0 U"},
    {COLOR_YUV422_UYVY2, Family::Packed422, 1, 0, "COLOR_YUV422_UYVY2", "uyvy2", "bytes U Y1 V Y0"},
    {COLOR_YUV422_VYUY2, Family::Packed422, 1, 0, "COLOR_YUV422_VYUY2", "vyuy2", "bytes V Y1 U Y0"},
    {COLOR_RGB565, Family::Rgb16, 0, 0, "COLOR_RGB565", "rgb565 rgb565le rgb16", "16-bit words, red in the top bits"},
    {COLOR_RGB16_ALT, Family::Rgb16, 0, 0, "COLOR_RGB16_ALT", "rgb16alt", "a second code for the same words"},
    {COLOR_RGB24, Family::Rgb24, 0, 0, "COLOR_RGB24", "bgr24", "bytes B, G, R"},
    {COLOR_RGB888_PLANAR, Family::Planar, 0, 0, "COLOR_RGB888_PLANAR", "rgbp rgb888p", "red, green and blue planes"},
    {COLOR_YUV420_PACK2, Family::SemiPlanar, 1, 1, "COLOR_YUV420_PACK2", "nv21", "as nv12 with V before U"},
    {COLOR_YUV_QUARTER_HEIGHT, Family::Planar, 0, 2, "COLOR_YUV_QUARTER_HEIGHT", "yuv-quarter-height",
     "Y, U, V planes, chroma w x h/4"},
    // What follows has no code in the header.
    {kRgb565Swapped, Family::Rgb16, 0, 0, "", "rgb565be", "16-bit words, the upper byte first"},
    {kRgb24, Family::Rgb24, 0, 0, "", "rgb24", "bytes R, G, B"},
    {kRgba, Family::Rgb32, 0, 0, "", "rgba", "bytes R, G, B, A"},
    {kBgra, Family::Rgb32, 0, 0, "", "bgra", "bytes B, G, R, A"},
    {kGrey, Family::Grey, 0, 0, "", "grey gray y8", "luma alone"},
});
constexpr std::size_t kClassicTypes = 22;

const ColorTypeInfo *find(int code) {
  const auto *at = std::find_if(kTypes.begin(), kTypes.end(), [code](const auto &type) { return type.code == code; });
  return at == kTypes.end() ? nullptr : at;
}

bool answersTo(const ColorTypeInfo &type, const std::string &lower) {
  const std::vector<std::string> names = split(type.names, ' ');
  return (!lower.empty() && lower == lowerCase(type.constant)) ||
         std::find(names.begin(), names.end(), lower) != names.end();
}

} // namespace

std::span<const ColorTypeInfo> colorTypes(Library library) {
  const std::span all(kTypes);
  return library == Library::Classic ? all.first(kClassicTypes) : all;
}

bool isColorType(int code) {
  return std::ranges::any_of(colorTypes(), [code](const ColorTypeInfo &type) { return type.code == code; });
}

bool isYuv(int code) {
  const Family family = colorType(code).family;
  return family == Family::SemiPlanar || family == Family::Packed422 || family == Family::Grey ||
         (family == Family::Planar && code != COLOR_RGB888_PLANAR);
}

const ColorTypeInfo &colorType(int code) {
  const ColorTypeInfo *type = find(code);
  if (type == nullptr) {
    throw Error("there is no colour type " + std::to_string(code));
  }
  return *type;
}

std::string shortName(int code) {
  return split(colorType(code).names, ' ').front();
}

int parseColorType(std::string_view text, Library library) {
  if (const std::optional<int> code = parseCount(text); code && isColorType(*code)) {
    return *code;
  }
  const std::string lower = lowerCase(text);
  for (const ColorTypeInfo &type : colorTypes(library)) {
    if (answersTo(type, lower)) {
      return type.code;
    }
  }
  throw Error("unknown colour type '" + std::string(text) + "' (--list-types shows the names)");
}

std::string describeColorTypes() {
  std::ostringstream text;
  for (const ColorTypeInfo &type : colorTypes()) {
    std::string line = (type.code < 10 ? " " : "") + std::to_string(type.code) + "  " + type.names;
    line.resize(std::max<std::size_t>(line.size() + 1, 28), ' ');
    line += type.constant;
    line.resize(std::max<std::size_t>(line.size() + 1, 55), ' ');
    text << line << type.layout << "\n";
  }
  return text.str();
}

std::size_t PlaneShape::bytes() const {
  if (lineBytes <= 0 || lines <= 0) {
    return 0;
  }
  return static_cast<std::size_t>(lines - 1) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(lineBytes);
}

int planeCount(int code) {
  switch (colorType(code).family) {
  case Family::Planar:
    return 3;
  case Family::SemiPlanar:
    return 2;
  default:
    return 1;
  }
}

int tightStride(int code, int width) {
  switch (colorType(code).family) {
  case Family::Packed422:
    return (width + 1) / 2 * 4;
  case Family::Rgb16:
    return 2 * width;
  case Family::Rgb24:
    return 3 * width;
  case Family::Rgb32:
    return 4 * width;
  default:
    return width;
  }
}

PlaneShape planeShape(int code, int width, int height, int stride, int index) {
  const ColorTypeInfo &type = colorType(code);
  if (index == 0) {
    return {tightStride(code, width), height, stride};
  }
  if (index >= planeCount(code)) {
    return {};
  }
  if (type.family == Family::SemiPlanar) {
    return {width / 2 * 2, height / 2, stride};
  }
  return {width >> type.chromaShiftX, height >> type.chromaShiftY, stride >> type.chromaShiftX};
}

int roundedUp(int value, int shift) {
  return (value + (1 << shift) - 1) >> shift;
}

int roomyStride(int code, int width) {
  const ColorTypeInfo &type = colorType(code);
  const bool planes = type.family == Family::Planar || type.family == Family::SemiPlanar;
  return planes ? roundedUp(width, type.chromaShiftX) << type.chromaShiftX : tightStride(code, width);
}

PlaneShape wholeShape(int code, int width, int height, int stride, int index) {
  const ColorTypeInfo &type = colorType(code);
  if (index == 0 || index >= planeCount(code)) {
    return planeShape(code, width, height, stride, index);
  }
  const int samples = roundedUp(width, type.chromaShiftX);
  const int lines = roundedUp(height, type.chromaShiftY);
  if (type.family == Family::SemiPlanar) {
    return {2 * samples, lines, stride};
  }
  return {samples, lines, stride >> type.chromaShiftX};
}

bool holdsSamples(int code, int width, int height) {
  for (int i = 0; i < planeCount(code); ++i) {
    if (planeShape(code, width, height, tightStride(code, width), i).bytes() == 0) {
      return false;
    }
  }
  return true;
}

void requireSamples(int code, int width, int height, std::string_view what) {
  if (!holdsSamples(code, width, height)) {
    throw Error(std::string(what) + ": a picture of " + toText({width, height}) + " is too small for " +
                shortName(code) + ": its chroma planes would be empty");
  }
}

} // namespace zqconvert
