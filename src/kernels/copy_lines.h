// Copying a plane whose lines lie at different distances in source and destination.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

/// Copies `lines` lines of `bytes` bytes; a size that is not positive copies nothing.
inline void copyLines(const uint8_t *src, std::ptrdiff_t srcPitch, uint8_t *dst, std::ptrdiff_t dstPitch,
                      std::ptrdiff_t bytes, int32_t lines) {
  if (bytes <= 0) {
    return;
  }
  for (int32_t line = 0; line < lines; ++line) {
    std::memcpy(dst + line * dstPitch, src + line * srcPitch, static_cast<std::size_t>(bytes));
  }
}

} // namespace zqcc
