#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/scale.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/lerp-inl.h"
#include "rows/lines-inl.h"
#include "rows/scale.h"
#include "rows/taps-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

template <class D>
HWY_INLINE void widenVectors(D d, const uint8_t *from, int32_t count, int16_t *to) {
  constexpr hn::Rebind<uint8_t, D> kSamples;
  everyVector(static_cast<int32_t>(hn::MaxLanes(d)), count, [&](int32_t at) HWY_ATTR {
    hn::StoreU(hn::ShiftLeft<kWordShift>(hn::PromoteTo(d, hn::LoadU(kSamples, from + at))), d, to + at);
  });
}

void widen(const uint8_t *from, int32_t count, int16_t *to) {
  constexpr hn::CappedTag<int16_t, 8> kFew;
  if (count >= static_cast<int32_t>(hn::MaxLanes(kWords))) {
    return widenVectors(kWords, from, count, to);
  }
  if (count >= static_cast<int32_t>(hn::MaxLanes(kFew))) {
    return widenVectors(kFew, from, count, to);
  }
  for (int32_t i = 0; i < count; ++i) {
    to[i] = static_cast<int16_t>(from[i] << kWordShift);
  }
}

void pick(const uint8_t *from, const int32_t *at, int32_t count, uint8_t *to) {
  for (int32_t i = 0; i < count; ++i) {
    to[i] = from[at[i]];
  }
}

} // namespace

extern const ScaleStages kScaleStages;
const ScaleStages kScaleStages = {widen, pick, lerpColumns, lerpLines, addLines, addToSums, wordsOfSums, tapColumns};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
