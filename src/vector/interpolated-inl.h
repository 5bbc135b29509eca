// Samples interpolated along a line, times 1024, in the form that a level mixes them best, and how it does so. They
// come in sets of four vectors: block b of vector k holds outputs 16 b + 4 k to 16 b + 4 k + 3 of a set.

// Read once a level.
#if defined(ZQCC_VECTOR_INTERPOLATED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_INTERPOLATED_INL_H
#undef ZQCC_VECTOR_INTERPOLATED_INL_H
#else
#define ZQCC_VECTOR_INTERPOLATED_INL_H
#endif

#include "base/table_format.h"
#include "vector/words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

constexpr hn::ScalableTag<int32_t> kNumbers;
constexpr hn::ScalableTag<uint8_t> kSamples;
using NumberVec = hn::Vec<hn::ScalableTag<int32_t>>;
using SampleVec = hn::Vec<hn::ScalableTag<uint8_t>>;
using PairVec = hn::Vec<hn::ScalableTag<int16_t>>;

/// Numbers of a set.
constexpr int32_t kSet = 4 * static_cast<int32_t>(hn::MaxLanes(kNumbers));

#if HWY_TARGET == HWY_AVX3

/// A number of 18 bits as the low bits of the floating-point number 2^13 + number / 1024. A product of 32 bits takes
/// two instructions and a shift and a sum besides; product and sum of floating point take one. They are exact: rounded
/// towards zero the result has ten bits behind the point, and those before it are right.
constexpr int32_t kFloatBits = 0x46000000;

HWY_INLINE NumberVec interpolated(PairVec samples, PairVec weights) {
  return hn::Or(NumberVec{_mm512_madd_epi16(samples.raw, weights.raw)}, hn::Set(kNumbers, kFloatBits));
}

struct Mixing {
  __m512 next;

  explicit HWY_INLINE Mixing(int32_t weight) : next(_mm512_set1_ps(static_cast<float>(weight) / kWholeWeight)) {}

  HWY_INLINE NumberVec operator()(const int32_t *top, const int32_t *bottom) const {
    const __m512 a = _mm512_loadu_ps(top);
    const __m512 difference = _mm512_sub_ps(_mm512_loadu_ps(bottom), a);
    return NumberVec{
        _mm512_castps_si512(_mm512_fmadd_round_ps(difference, next, a, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC))};
  }
};

struct Unmixed {
  HWY_INLINE NumberVec operator()(const int32_t *top, const int32_t * /*bottom*/) const {
    return hn::LoadU(kNumbers, top);
  }
};

/// The samples of a set: each in the ten bits above the lowest ones of its number.
template <class Mix>
HWY_INLINE SampleVec samplesOf(const Mix &mix, const int32_t *top, const int32_t *bottom) {
  constexpr std::ptrdiff_t kLanes = kSet / 4;
  const auto a = hn::ShiftRight<10>(mix(top, bottom));
  const auto b = hn::ShiftRight<2>(mix(top + kLanes, bottom + kLanes));
  const auto c = hn::ShiftLeft<6>(mix(top + 2 * kLanes, bottom + 2 * kLanes));
  const auto d = hn::ShiftLeft<14>(mix(top + 3 * kLanes, bottom + 3 * kLanes));
  const auto ab = selectBits(hn::Set(kNumbers, 0xFF), a, b);
  const auto cd = selectBits(hn::Set(kNumbers, 0xFF0000), c, d);
  const auto bytes = hn::BitCast(kSamples, selectBits(hn::Set(kNumbers, 0xFFFF), ab, cd));
  alignas(16) static constexpr uint8_t kOrder[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
  return hn::TableLookupBytes(bytes, hn::LoadDup128(kSamples, kOrder));
}

#else

constexpr hn::ScalableTag<uint32_t> kSums;
using SumVec = hn::Vec<hn::ScalableTag<uint32_t>>;

HWY_INLINE SumVec sumsAt(const int32_t *row) {
  return hn::BitCast(kSums, hn::LoadU(kNumbers, row));
}

#if HWY_ARCH_X86

HWY_INLINE NumberVec interpolated(PairVec samples, PairVec weights) {
#if HWY_TARGET == HWY_AVX2
  return NumberVec{_mm256_madd_epi16(samples.raw, weights.raw)};
#else
  return NumberVec{_mm_madd_epi16(samples.raw, weights.raw)};
#endif
}

/// The highest bytes of four vectors, those of a block together.
HWY_INLINE SampleVec highestBytes(SumVec a, SumVec b, SumVec c, SumVec d) {
  constexpr hn::ScalableTag<int16_t> kWords;
  const auto byteOf = [](SumVec v) HWY_ATTR { return hn::BitCast(kNumbers, hn::ShiftRight<24>(v)); };
  return packBlocks(hn::ReorderDemote2To(kWords, byteOf(a), byteOf(b)),
                    hn::ReorderDemote2To(kWords, byteOf(c), byteOf(d)));
}

#else

HWY_INLINE NumberVec interpolated(PairVec samples, PairVec weights) {
  const auto low = vmull_s16(vget_low_s16(samples.raw), vget_low_s16(weights.raw));
  return NumberVec(vpaddq_s32(low, vmull_high_s16(samples.raw, weights.raw)));
}

HWY_INLINE SampleVec highestBytes(SumVec a, SumVec b, SumVec c, SumVec d) {
  const auto words = [](SumVec low, SumVec high) HWY_ATTR {
    return vreinterpretq_u8_u16(vuzp2q_u16(vreinterpretq_u16_u32(low.raw), vreinterpretq_u16_u32(high.raw)));
  };
  return SampleVec(vuzp2q_u8(words(a, b), words(c, d)));
}

#endif

/// Weights times 16 put the sample into the highest byte.
struct Mixing {
  SumVec self;
  SumVec next;

  explicit HWY_INLINE Mixing(int32_t weight)
      : self(hn::Set(kSums, static_cast<uint32_t>(16 * (kWholeWeight - weight)))),
        next(hn::Set(kSums, static_cast<uint32_t>(16 * weight))) {}

  HWY_INLINE SumVec operator()(const int32_t *top, const int32_t *bottom) const {
    return hn::Add(hn::Mul(sumsAt(top), self), hn::Mul(sumsAt(bottom), next));
  }
};

struct Unmixed {
  HWY_INLINE SumVec operator()(const int32_t *top, const int32_t * /*bottom*/) const {
    return hn::ShiftLeft<14>(sumsAt(top));
  }
};

template <class Mix>
HWY_INLINE SampleVec samplesOf(const Mix &mix, const int32_t *top, const int32_t *bottom) {
  constexpr std::ptrdiff_t kLanes = kSet / 4;
  return highestBytes(mix(top, bottom), mix(top + kLanes, bottom + kLanes), mix(top + 2 * kLanes, bottom + 2 * kLanes),
                      mix(top + 3 * kLanes, bottom + 3 * kLanes));
}

#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
