#include "kernels/copy_lines.h"

#include <cstring>

namespace zqcc {

void copyLines(const uint8_t *src, std::ptrdiff_t srcPitch, uint8_t *dst, std::ptrdiff_t dstPitch, std::ptrdiff_t bytes,
               int32_t lines) {
  if (bytes <= 0) {
    return;
  }
  if (srcPitch == bytes && dstPitch == bytes && lines > 0) {
    // Without gaps all lines are one, and long copies are faster than many.
    bytes *= lines;
    lines = 1;
  }
  for (; lines > 0; --lines, src += srcPitch, dst += dstPitch) {
    std::memcpy(dst, src, static_cast<std::size_t>(bytes));
  }
}

} // namespace zqcc
