// Stores of one 32-bit word holding two RGB565 pixels, whatever the address.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

// Processors that store words at any address take one variant of every kernel. The others (ARMv4) get two: kernels
// for buffers whose words are aligned, and kernels that store byte by byte for the rest.
#if defined(__x86_64__) || defined(__i386__) || defined(__aarch64__) || defined(__ARM_FEATURE_UNALIGNED) ||            \
    defined(_M_X64) || defined(_M_IX86) || defined(_M_ARM64)
inline constexpr bool kWordsAnywhere = true;
#else
inline constexpr bool kWordsAnywhere = false;
#endif

/// Two pixels, `low` at the lower address, in memory order (RGB565 words are little-endian on every host).
struct AnyAddress {
  static void store(uint8_t *p, uint32_t low, uint32_t high) {
    if constexpr (kWordsAnywhere) {
      const uint32_t word = low | high << 16;
      std::memcpy(p, &word, sizeof word);
    } else {
      store(p, low);
      store(p + 2, high);
    }
  }
  static void store(uint8_t *p, uint32_t pixel) {
    if constexpr (kWordsAnywhere) {
      const auto half = static_cast<uint16_t>(pixel);
      std::memcpy(p, &half, sizeof half);
    } else {
      p[0] = static_cast<uint8_t>(pixel);
      p[1] = static_cast<uint8_t>(pixel >> 8);
    }
  }
};

/// The word's address is a multiple of four, a single pixel's a multiple of two.
struct AlignedWords {
  static void store(uint8_t *p, uint32_t low, uint32_t high) {
    const uint32_t word = low | high << 16;
    std::memcpy(__builtin_assume_aligned(p, 4), &word, sizeof word);
  }
  static void store(uint8_t *p, uint32_t pixel) {
    const auto half = static_cast<uint16_t>(pixel);
    std::memcpy(__builtin_assume_aligned(p, 2), &half, sizeof half);
  }
};

/// Calls `run` with the stores that fit words at `firstWord` and at multiples of `stride` from it.
template <class Run>
void withStores(const uint8_t *firstWord, std::ptrdiff_t stride, Run run) {
  if constexpr (!kWordsAnywhere) {
    const auto bits = reinterpret_cast<std::uintptr_t>(firstWord) | static_cast<std::uintptr_t>(stride);
    if (bits % 4 == 0) {
      run(AlignedWords{});
      return;
    }
  }
  run(AnyAddress{});
}

} // namespace zqcc
