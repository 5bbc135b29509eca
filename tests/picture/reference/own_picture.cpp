#include "picture/reference/own_picture.h"

#include <random>

namespace reference {

namespace {

struct Bits {
  int shift;
  int most;
};
constexpr Bits kBits[3] = {{11, 31}, {5, 63}, {0, 31}};

} // namespace

OwnPicture::OwnPicture(int32_t format, int width, int height, Lie lie, uint32_t seed)
    : format_(&formatOf(format)), width_(width), height_(height), lie_(lie) {
  std::minstd_rand random(seed);
  for (int plane = 0; plane < planesOf(*format_); ++plane) {
    const int pixels = lineBytesOf(*format_, plane, width);
    const int stride = pixels + (lie.padding == 0 ? 0 : lie.padding + plane);
    const int bytes = lie.before + stride * (planeLinesOf(*format_, plane, height) - 1) + pixels + lie.behind;
    strides_.push_back(stride);
    memory_.emplace_back(static_cast<std::size_t>(bytes));
    for (uint8_t &byte : memory_.back()) {
      byte = static_cast<uint8_t>(random() >> 8);
    }
  }
}

std::size_t OwnPicture::byteOf(int component, int x, int y) const {
  const Place &place = format_->places[component];
  const int line = lie_.isBottomUp ? linesOf(*format_, component, height_) - 1 - y : y;
  const int inLine = x / place.perGroup * place.groupBytes + place.at[x % place.perGroup];
  return static_cast<std::size_t>(lie_.before + line * strides_[static_cast<std::size_t>(place.plane)] + inLine);
}

int OwnPicture::sample(int component, int x, int y) const {
  const std::vector<uint8_t> &memory = memory_[static_cast<std::size_t>(format_->places[component].plane)];
  const std::size_t at = byteOf(component, x, y);
  if (format_->store == Store::Bytes) {
    return memory[at];
  }
  const bool isSwapped = format_->store == Store::WordsSwapped;
  const int word = memory[at + (isSwapped ? 1 : 0)] + 256 * memory[at + (isSwapped ? 0 : 1)];
  return word >> kBits[component].shift & kBits[component].most;
}

void OwnPicture::setSample(int component, int x, int y, int value) {
  std::vector<uint8_t> &memory = memory_[static_cast<std::size_t>(format_->places[component].plane)];
  const std::size_t at = byteOf(component, x, y);
  if (format_->store == Store::Bytes) {
    memory[at] = static_cast<uint8_t>(value);
    return;
  }
  const bool isSwapped = format_->store == Store::WordsSwapped;
  uint8_t &low = memory[at + (isSwapped ? 1 : 0)];
  uint8_t &high = memory[at + (isSwapped ? 0 : 1)];
  const Bits &bits = kBits[component];
  const int word = ((low + 256 * high) & ~(bits.most << bits.shift)) | value << bits.shift;
  low = static_cast<uint8_t>(word & 255);
  high = static_cast<uint8_t>(word >> 8);
}

ZqpPicture OwnPicture::view() {
  ZqpPicture picture{};
  picture.recordSize = sizeof picture;
  picture.format = format_->number;
  picture.width = width_;
  picture.height = height_;
  for (std::size_t plane = 0; plane < memory_.size(); ++plane) {
    ZqpPlane &to = picture.planes[plane];
    to.data = memory_[plane].data() + lie_.before;
    to.stride = lie_.isBottomUp ? -strides_[plane] : strides_[plane];
    to.bytes = memory_[plane].size() - static_cast<std::size_t>(lie_.before + lie_.behind);
  }
  return picture;
}

} // namespace reference
