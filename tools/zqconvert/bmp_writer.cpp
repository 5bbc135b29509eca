#include "pixels.h"
#include "writers.h"
#include "zqColorConversion.h"

#include <array>
#include <initializer_list>
#include <ostream>

namespace zqconvert {

namespace {

void putLittle(std::vector<uint8_t> &bytes, std::initializer_list<uint32_t> values, int size) {
  for (const uint32_t value : values) {
    for (int i = 0; i < size; ++i) {
      bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
  }
}

/// How the pixels of a type stand in the file.
struct Kind {
  uint32_t bits;
  uint32_t headerBytes;        ///< Of the second header, which says what the pixels are.
  std::vector<uint32_t> masks; ///< Of red, green, blue and alpha; none where the bytes are blue, green, red.
};

Kind kindOf(int type) {
  switch (colorType(type).family) {
  case Family::Rgb16:
    return {16, 40, {0xF800, 0x07E0, 0x001F}};
  case Family::Rgb32:
    return {32, 108, {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000}}; // the shorter header has no alpha
  default:
    return {24, 40, {}};
  }
}

std::vector<uint8_t> headerOf(const Frame &frame, const Kind &kind, uint32_t imageBytes) {
  // The masks of the short header stand behind it, those of the long one within.
  const bool longHeader = kind.headerBytes > 40;
  const uint32_t bytes = 14 + kind.headerBytes + (longHeader ? 0 : 4 * static_cast<uint32_t>(kind.masks.size()));
  std::vector<uint8_t> header{'B', 'M'};
  putLittle(header, {bytes + imageBytes, 0, bytes}, 4);
  // A negative height says that the first line of the file is the picture's top.
  putLittle(header, {kind.headerBytes, static_cast<uint32_t>(frame.width), static_cast<uint32_t>(-frame.height)}, 4);
  putLittle(header, {1, kind.bits}, 2);
  constexpr uint32_t kPixelsPerMetre = 2835; // 72 dots an inch
  putLittle(header, {kind.masks.empty() ? 0U : 3U, imageBytes, kPixelsPerMetre, kPixelsPerMetre, 0, 0}, 4);
  for (const uint32_t mask : kind.masks) {
    putLittle(header, {mask}, 4);
  }
  if (longHeader) {
    putLittle(header, {0x73524742}, 4); // the colour space "sRGB"; what describes others stays zero
  }
  header.resize(bytes);
  return header;
}

/// A line as the file has it, without what fills it up.
void fileLine(const Frame &frame, int line, std::vector<uint8_t> &bytes) {
  const auto count = static_cast<std::size_t>(frame.shape(0).lineBytes);
  switch (frame.type) {
  case COLOR_RGB565:
  case COLOR_RGB16_ALT:
  case COLOR_RGB24:
  case kBgra:
    bytes.assign(lineOf(frame, line), lineOf(frame, line) + count);
    break;
  case kRgb565Swapped:
    bytes.clear();
    for (std::size_t x = 0; x < count; ++x) {
      bytes.push_back(lineOf(frame, line)[x ^ 1]);
    }
    break;
  default:
    expandLine(frame, line, PixelOrder::Bgr, true, bytes);
  }
}

} // namespace

void writeBmp(std::ostream &stream, const Frame &frame) {
  const Kind kind = kindOf(frame.type);
  const uint32_t lineBytes = static_cast<uint32_t>(frame.width) * kind.bits / 8;
  const uint32_t padding = (4 - lineBytes % 4) % 4;
  const std::vector<uint8_t> header =
      headerOf(frame, kind, (lineBytes + padding) * static_cast<uint32_t>(frame.height));
  writeBytes(stream, header.data(), header.size());
  constexpr std::array<uint8_t, 3> kZeros{};
  std::vector<uint8_t> bytes;
  for (int line = 0; line < frame.height; ++line) {
    fileLine(frame, line, bytes);
    writeBytes(stream, bytes.data(), bytes.size());
    writeBytes(stream, kZeros.data(), padding);
  }
}

} // namespace zqconvert
