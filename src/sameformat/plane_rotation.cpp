#include "sameformat/plane_rotation.h"

#include "sameformat/transpose.h"
#include "sameformat/words.h"

namespace zqcc {

namespace {

/// Compilers know this as one instruction where the processor has it.
uint64_t reverseBytes(uint64_t word) {
  word = (word & 0x00FF00FF00FF00FFU) << 8 | (word >> 8 & 0x00FF00FF00FF00FFU);
  word = (word & 0x0000FFFF0000FFFFU) << 16 | (word >> 16 & 0x0000FFFF0000FFFFU);
  return word << 32 | word >> 32;
}

/// dst[width - 1 - x] = src[x]
void reverseLine(const uint8_t *src, uint8_t *dst, int32_t width) {
  uint8_t *end = dst + width;
  int32_t x = 0;
  for (; x + 8 <= width; x += 8) {
    storeBytes(end - x - 8, reverseBytes(loadBytes<uint64_t>(src + x)));
  }
  for (; x < width; ++x) {
    *(end - x - 1) = src[x];
  }
}

} // namespace

void rotatePlaneLeft(LevelSet levels, const uint8_t *src, uint8_t *dst, int32_t width, int32_t height,
                     std::ptrdiff_t srcPitch, std::ptrdiff_t dstPitch) {
  quarterTurn<uint8_t>(levels, Turn::Left, {src, srcPitch, dst, dstPitch, width, height});
}

void rotatePlaneRight(LevelSet levels, const uint8_t *src, uint8_t *dst, int32_t width, int32_t height,
                      std::ptrdiff_t srcPitch, std::ptrdiff_t dstPitch) {
  quarterTurn<uint8_t>(levels, Turn::Right, {src, srcPitch, dst, dstPitch, width, height});
}

void rotateTightPlaneLeft(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t /*pitch*/,
                          uint8_t *dst) {
  rotatePlaneLeft(levels, src, dst, width, height, width, height);
}

void rotateTightPlaneRight(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t /*pitch*/,
                           uint8_t *dst) {
  rotatePlaneRight(levels, src, dst, width, height, width, height);
}

void rotateTightPlane180(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t /*pitch*/,
                         uint8_t *dst) {
  const std::ptrdiff_t pitch = width;
  if (width <= 0 || height <= 0 || reversedByRows(levels, src, dst, pitch * height)) {
    return;
  }
  for (int32_t y = 0; y < height; ++y) {
    reverseLine(src + y * pitch, dst + (height - 1 - y) * pitch, width);
  }
}

} // namespace zqcc
