// Copying a plane whose lines lie at different distances in source and destination.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Copies `lines` lines of `bytes` bytes; a size that is not positive copies nothing.
void copyLines(const uint8_t *src, std::ptrdiff_t srcPitch, uint8_t *dst, std::ptrdiff_t dstPitch, std::ptrdiff_t bytes,
               int32_t lines);

} // namespace zqcc
