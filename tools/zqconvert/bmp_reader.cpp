#include "picture_readers.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace zqconvert {

namespace {

constexpr std::size_t kFileHeader = 14;
constexpr uint32_t kPlainHeader = 40;
/// Longer headers and colour tables than any program writes are taken for damage.
constexpr uint32_t kMostBytesBefore = 1U << 20;
constexpr uint32_t kRgb = 0;
constexpr uint32_t kBitFields = 3;
constexpr uint32_t kAlphaBitFields = 6;

uint32_t little(const uint8_t *bytes, int count) {
  uint32_t value = 0;
  for (int i = 0; i < count; ++i) {
    value |= uint32_t{bytes[i]} << (8 * i);
  }
  return value;
}

/// A number of the headers, `count` bytes long.
uint32_t little(const std::vector<uint8_t> &header, std::size_t at, int count) {
  return little(header.data() + at, count);
}

} // namespace

/// Everything before the pixels: both headers, masks, and colour tables, which nobody needs.
std::vector<uint8_t> BmpReader::readHeader() {
  std::vector<uint8_t> header(kFileHeader + kPlainHeader);
  readBytes(header.data(), 2);
  if (header[0] != 'B' || header[1] != 'M') {
    refuse("not a bitmap");
  }
  readBytes(header.data() + 2, header.size() - 2);
  const uint32_t second = little(header, kFileHeader, 4);
  const uint32_t pixels = little(header, 10, 4);
  if (second < kPlainHeader || second > kMostBytesBefore || pixels > kMostBytesBefore ||
      pixels < kFileHeader + second) {
    refuse("a bitmap whose headers have sizes that are not taken");
  }
  header.resize(pixels);
  readBytes(header.data() + kFileHeader + kPlainHeader, header.size() - kFileHeader - kPlainHeader);
  return header;
}

void BmpReader::setMasks(const std::array<uint32_t, 4> &masks) {
  for (std::size_t i = 0; i < masks.size(); ++i) {
    const uint32_t bits = masks.at(i);
    const int shift = bits == 0 ? 0 : std::countr_zero(bits);
    const uint32_t most = bits >> shift;
    const bool oneRun = (uint64_t{most} & (uint64_t{most} + 1)) == 0;
    if (!oneRun || (i < 3 && bits == 0) || (bits_ == 16 && bits > 0xFFFF)) {
      refuse("a bitmap whose colour masks make no sense");
    }
    masks_.at(i) = {bits, shift, most};
  }
}

/// The masks follow the plain header; longer headers hold them at the same place.
void BmpReader::readMasks(const std::vector<uint8_t> &header) {
  const uint32_t compression = little(header, 30, 4);
  constexpr std::size_t kMasks = kFileHeader + kPlainHeader;
  if (compression == kRgb) {
    setMasks(bits_ == 16 ? std::array<uint32_t, 4>{0x7C00, 0x03E0, 0x001F, 0}
                         : std::array<uint32_t, 4>{0x00FF0000, 0x0000FF00, 0x000000FF, 0});
    return;
  }
  const bool fields = compression == kBitFields || compression == kAlphaBitFields;
  const bool hasAlpha = compression == kAlphaBitFields || little(header, kFileHeader, 4) >= 56;
  if (!fields || bits_ == 24 || header.size() < kMasks + (hasAlpha ? 16U : 12U)) {
    refuse("a compressed bitmap; uncompressed ones of 16, 24 and 32 bits are taken");
  }
  setMasks({little(header, kMasks, 4), little(header, kMasks + 4, 4), little(header, kMasks + 8, 4),
            hasAlpha ? little(header, kMasks + 12, 4) : 0});
}

int BmpReader::typeOfPixels() const {
  if (masks_[3].bits != 0) {
    return kBgra;
  }
  const bool is565 = bits_ == 16 && masks_[0].bits == 0xF800 && masks_[1].bits == 0x07E0 && masks_[2].bits == 0x001F;
  return is565 ? COLOR_RGB565 : COLOR_RGB24;
}

BmpReader::BmpReader(std::istream &stream, const std::string &name) : PictureReader(stream, name) {
  const std::vector<uint8_t> header = readHeader();
  const auto width = static_cast<int32_t>(little(header, 18, 4));
  const auto height = static_cast<int32_t>(little(header, 22, 4));
  bits_ = little(header, 28, 2);
  bottomUp_ = height > 0;
  if (width <= 0 || height == 0 || height == std::numeric_limits<int32_t>::min()) {
    refuse("a bitmap without pixels");
  }
  if (bits_ != 16 && bits_ != 24 && bits_ != 32) {
    refuse("a bitmap of " + std::to_string(bits_) + " bits; uncompressed ones of 16, 24 and 32 bits are taken");
  }
  readMasks(header);
  setShape(typeOfPixels(), {width, bottomUp_ ? height : -height});
}

/// Values of any number of bits are spread over the whole range, to the nearest.
uint8_t BmpReader::componentOf(uint32_t pixel, const Mask &mask) {
  const uint64_t value = (pixel & mask.bits) >> mask.shift;
  return static_cast<uint8_t>((value * 255 + mask.most / 2) / mask.most);
}

void BmpReader::convertLine(const uint8_t *in, uint8_t *out) const {
  const int step = static_cast<int>(bits_ / 8);
  for (int x = 0; x < info().width; ++x, in += step) {
    const uint32_t pixel = little(in, step);
    for (const std::size_t i : {2U, 1U, 0U}) {
      *out++ = componentOf(pixel, masks_.at(i));
    }
    if (info().type == kBgra) {
      *out++ = componentOf(pixel, masks_[3]);
    }
  }
}

void BmpReader::readPixels(Frame &frame) {
  const std::size_t used = static_cast<std::size_t>(frame.width) * bits_ / 8;
  const std::size_t pitch = (used + 3) / 4 * 4;
  const auto lines = static_cast<std::size_t>(frame.height);
  std::vector<uint8_t> pixels;
  for (std::size_t line = 0; line < lines; ++line) {
    pixels.resize((line + 1) * pitch);
    // Some programs leave out what fills the last line up.
    readBytes(pixels.data() + line * pitch, line + 1 == lines ? used : pitch);
  }
  const auto stride = static_cast<std::size_t>(frame.stride);
  frame.planes[0].resize(lines * stride);
  for (std::size_t line = 0; line < lines; ++line) {
    const uint8_t *in = pixels.data() + (bottomUp_ ? lines - 1 - line : line) * pitch;
    uint8_t *out = frame.planes[0].data() + line * stride;
    if (frame.type == COLOR_RGB565) {
      std::copy_n(in, used, out);
    } else {
      convertLine(in, out);
    }
  }
}

} // namespace zqconvert
