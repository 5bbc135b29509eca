// Blocks of pictures on their way through the first-level cache: how far the next one goes, and lines that are asked
// for before it is their turn.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Units to do next of those that are left: at most `most`, and not so many that less than `least`, which is at most
/// half of it, would remain.
template <class Count>
constexpr Count nextUnits(Count left, Count most, Count least) {
  if (left <= most) {
    return left;
  }
  return left - most < least ? most - least : most;
}

/// Asks for lines before they are read or written, a few at a time: all at once would have to wait for each other.
template <bool written>
class LinesAhead {
public:
  /// `lines` lines, of which `bytes` bytes will be wanted, in `times` times.
  LinesAhead(const uint8_t *first, std::ptrdiff_t stride, int32_t lines, std::ptrdiff_t bytes, int32_t times)
      : line_(first), end_(first + lines * stride), stride_(stride), lastByte_(bytes - 1),
        advance_((lines + times - 1) / times * stride) {}

  void next() {
    const std::ptrdiff_t left = end_ - line_;
    const uint8_t *end = (stride_ < 0 ? left < advance_ : left > advance_) ? line_ + advance_ : end_;
    for (; line_ != end; line_ += stride_) {
      for (std::ptrdiff_t byte = 0; byte < lastByte_; byte += 64) {
        __builtin_prefetch(line_ + byte, kWritten);
      }
      __builtin_prefetch(line_ + lastByte_, kWritten);
    }
  }

private:
  static constexpr int kWritten = written ? 1 : 0;

  const uint8_t *line_;
  const uint8_t *end_;
  std::ptrdiff_t stride_;
  std::ptrdiff_t lastByte_;
  std::ptrdiff_t advance_;
};

} // namespace zqcc
