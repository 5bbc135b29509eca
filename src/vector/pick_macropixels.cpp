// A macropixel is a lane of 32 bits, and the numbers of the chosen ones stand in the column table as such lanes: no
// masks have to be made beforehand. Neighbours lie close together unless the picture becomes much smaller, so that one
// or two vectors of the line hold all of a group.
#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/pick_macropixels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "tables/packed_layout.h"
#include "vector/pick_macropixels.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

HWY_INLINE void copyMacropixels(const uint8_t *from, const int32_t *index, int32_t count, uint8_t *to) {
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    std::memcpy(to + i * kMacropixelBytes, from + index[i] * kMacropixelBytes, kMacropixelBytes);
  }
}

#if HWY_ARCH_X86 && HWY_MAX_BYTES >= 32

namespace hn = hwy::HWY_NAMESPACE;

// chooseLanes: lanes of a vector, or of two vectors one behind the other, by number.
#if HWY_MAX_BYTES >= 64
using Lanes = hn::Vec512<int32_t>;
HWY_INLINE Lanes chooseLanes(Lanes number, Lanes window) {
  return Lanes{_mm512_permutexvar_epi32(number.raw, window.raw)};
}
HWY_INLINE Lanes chooseLanes(Lanes number, Lanes first, Lanes second) {
  return Lanes{_mm512_permutex2var_epi32(first.raw, number.raw, second.raw)};
}
#else
using Lanes = hn::Vec256<int32_t>;
HWY_INLINE Lanes chooseLanes(Lanes number, Lanes window) {
  return Lanes{_mm256_permutevar8x32_epi32(window.raw, number.raw)};
}
HWY_INLINE Lanes chooseLanes(Lanes number, Lanes first, Lanes second) {
  const __m256 isSecond = _mm256_castsi256_ps(_mm256_slli_epi32(number.raw, 28)); // bit 3 becomes the sign
  return Lanes{_mm256_castps_si256(_mm256_blendv_ps(_mm256_castsi256_ps(chooseLanes(number, first).raw),
                                                    _mm256_castsi256_ps(chooseLanes(number, second).raw), isSecond))};
}
#endif

using D = hn::ScalableTag<int32_t>;
constexpr int32_t kLanes = hn::MaxLanes(D());

/// One group. Windows are moved back where they would go past the macropixels that may be read.
HWY_INLINE void pickGroup(const uint8_t *from, const int32_t *index, int32_t readable, uint8_t *to) {
  const D d;
  const hn::Repartition<uint8_t, D> bytes;
  const int32_t first = index[0];
  const int32_t reach = index[kLanes - 1] - first;
  const int32_t windows = reach < kLanes ? 1 : 2;
  const int32_t latest = readable - windows * kLanes;
  if (reach >= 2 * kLanes || latest < 0) {
    copyMacropixels(from, index, kLanes, to);
    return;
  }
  const int32_t start = first < latest ? first : latest;
  const uint8_t *window = from + start * kMacropixelBytes;
  const auto number = hn::Sub(hn::LoadU(d, index), hn::Set(d, start));
  const auto near = hn::BitCast(d, hn::LoadU(bytes, window));
  if (windows == 1) {
    hn::StoreU(hn::BitCast(bytes, chooseLanes(number, near)), bytes, to);
  } else {
    const auto far = hn::BitCast(d, hn::LoadU(bytes, window + kLanes * kMacropixelBytes));
    hn::StoreU(hn::BitCast(bytes, chooseLanes(number, near, far)), bytes, to);
  }
}

/// Groups, the last of which overlaps.
void pickMacropixels(const uint8_t *from, const int32_t *index, int32_t count, int32_t readable, uint8_t *to) {
  const int32_t last = count - kLanes;
  if (last < 0) {
    copyMacropixels(from, index, count, to);
    return;
  }
  for (int32_t i = 0; i < last; i += kLanes) {
    pickGroup(from, index + i, readable, to + i * kMacropixelBytes);
  }
  pickGroup(from, index + last, readable, to + last * kMacropixelBytes);
}

#else

/// Making byte masks of the numbers takes as many instructions as copying.
void pickMacropixels(const uint8_t *from, const int32_t *index, int32_t count, int32_t /*readable*/, uint8_t *to) {
  copyMacropixels(from, index, count, to);
}

#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<PickMacropixels> PICK_MACROPIXELS = ZQCC_EVERY_LEVEL(pickMacropixels);
} // namespace zqcc
#endif
