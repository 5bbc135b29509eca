// Lines of packed 4:2:2 pictures: groups of four bytes, two pixels each.
//
// A line of odd width ends with a group of which only one pixel belongs to the picture. The whole group is there when
// the line's stride has room for it; where the stride ends earlier, the line is cut after the lone pixel's two bytes.
#pragma once

#include "sameformat/words.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

inline constexpr std::ptrdiff_t kGroupBytes = 4;

/// Groups of a line, the lone pixel's included.
constexpr int32_t groupsOf(int32_t width) {
  return width / 2 + width % 2;
}

/// The lone pixel's group has lost its second half.
constexpr bool isCut(int32_t width, int64_t room) {
  return width % 2 != 0 && room < groupsOf(width) * kGroupBytes;
}

/// Bytes that a line holds.
constexpr std::ptrdiff_t lineBytes(int32_t width, int64_t room) {
  return isCut(width, room) ? std::ptrdiff_t{width} * 2 : groupsOf(width) * kGroupBytes;
}

/// Byte order as far as resampling and turning see it: which of the two chroma samples is U does not matter.
struct PackedOrder {
  int luma;     ///< byte of the group's first luma sample, the second one two bytes on
  int chroma;   ///< byte of its first chroma sample, the second one two bytes on
  bool swapped; ///< the left pixel's luma is the second one
};

/// Variants 0, 1, 4, 5 have luma in the even bytes; from 4 on the luma bytes are exchanged.
constexpr PackedOrder packedOrder(uint32_t variant) {
  const int luma = (variant & 2U) != 0 ? 1 : 0;
  return {luma, 1 - luma, variant >= 4};
}

/// Reads groups of lines whose groups are all whole.
struct WholeLine {
  static uint32_t group(const uint8_t *line, std::ptrdiff_t index) {
    return loadBytes<uint32_t>(line + index * kGroupBytes);
  }
};

/// Reads groups of lines that are cut. For what the lone pixel's group lacks the line's last sample of the same kind
/// stands in: its own luma, and the second chroma of the group before (its own first chroma where there is no other).
struct CutLine {
  std::ptrdiff_t lone; ///< index of the cut group
  uint32_t chromaBits; ///< the bytes of a group that hold chroma

  [[nodiscard]] uint32_t group(const uint8_t *line, std::ptrdiff_t index) const {
    return index < lone ? WholeLine::group(line, index) : completed(line + lone * kGroupBytes);
  }

private:
  [[nodiscard]] uint32_t completed(const uint8_t *there) const {
    const uint32_t low = loadBytes<uint16_t>(there);
    const uint32_t before = lone > 0 ? loadBytes<uint16_t>(there - kGroupBytes / 2) : low;
    const uint32_t high = (low & ~chromaBits) | (before & chromaBits & 0xFFFFU);
    return low | high << 16;
  }
};

} // namespace zqcc
