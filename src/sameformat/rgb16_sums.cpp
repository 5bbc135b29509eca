#include "sameformat/rgb16_sums.h"

#include "kernels/arithmetic.h"
#include "kernels/stores.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr int kGreenBits = 5; ///< bits below green in a pixel
constexpr int kRedBits = 11;
constexpr uint32_t kFive = 0x1F;

template <bool halfwords>
uint32_t pixelAt(const uint8_t *p) {
  if constexpr (halfwords) {
    uint16_t pixel;
    std::memcpy(&pixel, __builtin_assume_aligned(p, kPixelAlignment), sizeof pixel);
    return pixel;
  } else {
    return p[0] | uint32_t{p[1]} << 8;
  }
}

/// Mixing is linear, so whole pixels can be mixed: what they give is blue's sum, green's and red's at their places, and
/// green's, the widest, needs no mixing of its own. Red's runs over the word's end, as it does in the difference.
template <bool halfwords>
void addPixels(const SourceLines &line, const TapPlace *columns, int32_t count, Rgb16Sum *sums) {
  constexpr int kShift = 2 * kWeightBits;
  const uint8_t *top = line.self;
  const uint8_t *bottom = line.next;
  const auto self = static_cast<uint32_t>(line.weights.self);
  const auto next = static_cast<uint32_t>(line.weights.next);
  for (const Rgb16Sum *const end = sums + count; sums != end; ++sums, ++columns) {
    const uint8_t *a = top + columns->at;
    const uint8_t *b = bottom + columns->at;
    const auto right = static_cast<uint32_t>(columns->next);
    const uint32_t p00 = pixelAt<halfwords>(a);
    const uint32_t p01 = pixelAt<halfwords>(a + 2);
    const uint32_t p10 = pixelAt<halfwords>(b);
    const uint32_t p11 = pixelAt<halfwords>(b + 2);
    const auto mixed = [&](uint32_t c00, uint32_t c01, uint32_t c10, uint32_t c11) {
      const uint32_t v0 = c00 * self + c10 * next;
      const uint32_t v1 = c01 * self + c11 * next;
      return (v0 << kWeightBits) + (v1 - v0) * right;
    };
    const uint32_t blue = mixed(p00 & kFive, p01 & kFive, p10 & kFive, p11 & kFive);
    const uint32_t red = mixed(p00 >> kRedBits, p01 >> kRedBits, p10 >> kRedBits, p11 >> kRedBits);
    const uint32_t green = mixed(p00, p01, p10, p11) - blue - (red << kRedBits);
    sums->word +=
        (red & kFive << kShift) + (green >> (kShift + kGreenBits) << Rgb16Sum::kGreenShift) + (blue >> kShift);
    static_assert(Rgb16Sum::kRedShift == kShift);
  }
}

constexpr uint32_t fifthOf(uint32_t sum) {
  return fifthOfBytes(static_cast<int32_t>(sum));
}

} // namespace

AddPixels addPixelsOf([[maybe_unused]] const uint8_t *pixels, [[maybe_unused]] std::ptrdiff_t pitch) {
  if constexpr (kWordsAnywhere) {
    return addPixels<true>;
  } else {
    const auto place = reinterpret_cast<std::uintptr_t>(pixels) | static_cast<std::uintptr_t>(pitch);
    return place % sizeof(uint16_t) == 0 ? addPixels<true> : addPixels<false>;
  }
}

void storeFifths(const Rgb16Sum *sums, int32_t count, uint8_t *out) {
  constexpr uint32_t kField = (1U << Rgb16Sum::kGreenShift) - 1;
  for (const Rgb16Sum *const end = sums + count; sums != end; ++sums, out += sizeof(uint16_t)) {
    const uint32_t word = sums->word;
    storePixelAnywhere(out, packRgb565(fifthOf(word >> Rgb16Sum::kRedShift),
                                       fifthOf(word >> Rgb16Sum::kGreenShift & kField), fifthOf(word & kField)));
  }
}

} // namespace zqcc
