// Lines of packed 4:2:2 pictures: macropixels of four bytes, two pixels each.
//
// A line of odd width ends with a macropixel of which only one pixel belongs to the picture. The whole of it is there
// when the line's stride has room; where the stride ends earlier, the line is cut after the lone pixel's two bytes.
#pragma once

#include "sameformat/words.h"
#include "tables/packed_layout.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Macropixels of a line, the lone pixel's included.
constexpr int32_t macropixelsOf(int32_t width) {
  return width / 2 + width % 2;
}

/// The lone pixel's macropixel has lost its second half.
constexpr bool isCut(int32_t width, int64_t room) {
  return width % 2 != 0 && room < macropixelsOf(width) * kMacropixelBytes;
}

/// Bytes that a line holds.
constexpr std::ptrdiff_t lineBytes(int32_t width, int64_t room) {
  return isCut(width, room) ? std::ptrdiff_t{width} * 2 : macropixelsOf(width) * kMacropixelBytes;
}

/// Reads macropixels of lines whose macropixels are all whole.
struct WholeLine {
  static uint32_t macropixel(const uint8_t *line, std::ptrdiff_t index) {
    return loadBytes<uint32_t>(line + index * kMacropixelBytes);
  }
};

/// Reads macropixels of lines that are cut. For what the lone pixel's macropixel lacks the line's last sample of the
/// same kind stands in: its own luma, and the second chroma of the macropixel before (its own first chroma where there
/// is no other).
struct CutLine {
  std::ptrdiff_t lone; ///< index of the cut macropixel
  uint32_t chromaBits; ///< the bytes of a macropixel that hold chroma

  [[nodiscard]] uint32_t macropixel(const uint8_t *line, std::ptrdiff_t index) const {
    return index < lone ? WholeLine::macropixel(line, index) : completed(line + lone * kMacropixelBytes);
  }

private:
  [[nodiscard]] uint32_t completed(const uint8_t *there) const {
    const uint32_t low = loadBytes<uint16_t>(there);
    const uint32_t before = lone > 0 ? loadBytes<uint16_t>(there - kMacropixelBytes / 2) : low;
    const uint32_t high = (low & ~chromaBits) | (before & chromaBits & 0xFFFFU);
    return low | high << 16;
  }
};

} // namespace zqcc
