// Stores of RGB565 pixels. Kernels write whole words of two pixels; processors that cannot store a word at any address
// (ARMv4) run them on aligned buffers only, see kernels/scratch.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

#if defined(__x86_64__) || defined(__i386__) || defined(__aarch64__) || defined(__ARM_FEATURE_UNALIGNED)
inline constexpr bool kWordsAnywhere = true;
#else
inline constexpr bool kWordsAnywhere = false;
#endif

inline constexpr std::size_t kWordAlignment = kWordsAnywhere ? 1 : 4;
inline constexpr std::size_t kPixelAlignment = kWordsAnywhere ? 1 : 2;

/// Two pixels, `low` at the lower address.
inline void storeWord(uint8_t *p, uint32_t low, uint32_t high) {
  const uint32_t word = low | high << 16;
  std::memcpy(__builtin_assume_aligned(p, kWordAlignment), &word, sizeof word);
}

/// One pixel in a buffer that words can be stored in.
inline void storePixel(uint8_t *p, uint32_t pixel) {
  const auto half = static_cast<uint16_t>(pixel);
  std::memcpy(__builtin_assume_aligned(p, kPixelAlignment), &half, sizeof half);
}

/// One pixel at any address.
inline void storePixelAnywhere(uint8_t *p, uint32_t pixel) {
  if constexpr (kWordsAnywhere) {
    storePixel(p, pixel);
  } else {
    p[0] = static_cast<uint8_t>(pixel);
    p[1] = static_cast<uint8_t>(pixel >> 8);
  }
}

/// Two pixels at any address.
inline void storeWordAnywhere(uint8_t *p, uint32_t low, uint32_t high) {
  if constexpr (kWordsAnywhere) {
    storeWord(p, low, high);
  } else {
    storePixelAnywhere(p, low);
    storePixelAnywhere(p + 2, high);
  }
}

} // namespace zqcc
