// Copies of lines that are too short for calls of a function that copies any number of bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

/// Where a line begins, and how far on the next one does.
template <class Byte>
struct LineStart {
  Byte *first;
  std::ptrdiff_t step;
};

/// Copies `lines` lines of `chunk` bytes.
template <std::size_t chunk>
void copyChunks(LineStart<const uint8_t> from, LineStart<uint8_t> to, int32_t lines) {
  for (; lines > 0; --lines, from.first += from.step, to.first += to.step) {
    std::memcpy(to.first, from.first, chunk);
  }
}

/// Copies `lines` lines of `bytes` bytes, at least `chunk`, which is how many go at a time; the last ones overlap.
template <std::size_t chunk>
void copyShortLines(LineStart<const uint8_t> from, LineStart<uint8_t> to, std::ptrdiff_t bytes, int32_t lines) {
  const std::ptrdiff_t last = bytes - static_cast<std::ptrdiff_t>(chunk);
  if (last == 0) {
    copyChunks<chunk>(from, to, lines);
    return;
  }
  for (; lines > 0; --lines, from.first += from.step, to.first += to.step) {
    for (std::ptrdiff_t i = 0; i < last; i += static_cast<std::ptrdiff_t>(chunk)) {
      std::memcpy(to.first + i, from.first + i, chunk);
    }
    std::memcpy(to.first + last, from.first + last, chunk);
  }
}

} // namespace zqcc
