// Groups of samples of YUV, one class for each way that rows lie. A class has
//   kSharesChroma  whether two columns have one sample of chroma: halves are even and odd pixels, one vector of chroma
//   kIsByParity    whether halves are even and odd pixels of the deal asked for, or else what Deal::Eights has in the
//   load<deal>(x)  first and second half of its blocks, whatever is asked for; loads the group from column x on
//   copy(..)       copies the samples of less than a group to a buffer

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_SOURCES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_SOURCES_INL_H
#undef ZQP_ROWS_COLOUR_SOURCES_INL_H
#else
#define ZQP_ROWS_COLOUR_SOURCES_INL_H
#endif

#include "rows/colour_sums-inl.h"

#include <cstddef>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// The two bytes of every word, each as the upper one.
HWY_INLINE V16 lowerBytes(V8 bytes) {
  return hn::ShiftLeft<8>(hn::BitCast(D16(), bytes));
}
HWY_INLINE V16 upperBytes(V8 bytes) {
  return hn::And(hn::BitCast(D16(), bytes), hn::Set(D16(), uint16_t{0xFF00}));
}
HWY_INLINE V8 fromMiddle(V8 bytes) {
  return hn::Xor(bytes, hn::Set(D8(), uint8_t{0x80}));
}

/// Room for the samples of a group.
template <class Sample>
struct SampleBuffer {
  Sample y[static_cast<size_t>(2 * kGroup)];
  Sample u[static_cast<size_t>(kGroup)];
  Sample v[static_cast<size_t>(kGroup)];
};

template <class Sample>
HWY_INLINE void copySamples(const Sample *from, int32_t count, Sample *to) {
  std::memcpy(to, from, static_cast<size_t>(count) * sizeof(Sample));
}

/// Three rows; chroma for pairs of columns.
struct HalfSource {
  using Rows = YuvBytes;
  using Sample = uint8_t;
  static constexpr bool kSharesChroma = true;
  static constexpr bool kIsByParity = true;

  template <Deal deal>
  static HWY_INLINE GroupSamples load(const Rows &rows, ptrdiff_t x) {
    const hn::Half<D8> half;
    const V8 y = dealOut<deal>(hn::LoadU(D8(), rows.y + x));
    const V8 both = hn::Combine(D8(), hn::LoadU(half, rows.v + x / 2), hn::LoadU(half, rows.u + x / 2));
    const V8 samples = dealHalves<deal>(fromMiddle(both));
    const VI u = hn::BitCast(DI(), hn::InterleaveLower(D8(), hn::Zero(D8()), samples));
    const VI v = hn::BitCast(DI(), hn::InterleaveUpper(D8(), hn::Zero(D8()), samples));
    return {{lowerBytes(y), upperBytes(y)}, {u, u}, {v, v}};
  }

  static HWY_INLINE Rows copy(const Rows &rows, int32_t x, int32_t pixels, SampleBuffer<Sample> &buffer) {
    copySamples(rows.y + x, pixels, buffer.y);
    copySamples(rows.u + x / 2, (pixels + 1) / 2, buffer.u);
    copySamples(rows.v + x / 2, (pixels + 1) / 2, buffer.v);
    return {buffer.y, buffer.u, buffer.v};
  }
};

/// Chroma in pairs.
template <bool isVFirst>
struct PairsSource {
  using Rows = YuvBytes;
  using Sample = uint8_t;
  static constexpr bool kSharesChroma = true;
  static constexpr bool kIsByParity = true;

  template <Deal deal>
  static HWY_INLINE GroupSamples load(const Rows &rows, ptrdiff_t x) {
    const V8 y = dealOut<deal>(hn::LoadU(D8(), rows.y + x));
    const V8 pairs = dealOut<deal>(fromMiddle(hn::LoadU(D8(), rows.u + x)));
    const VI first = signedOf(lowerBytes(pairs));
    const VI second = signedOf(upperBytes(pairs));
    const VI u = isVFirst ? second : first;
    const VI v = isVFirst ? first : second;
    return {{lowerBytes(y), upperBytes(y)}, {u, u}, {v, v}};
  }

  static HWY_INLINE Rows copy(const Rows &rows, int32_t x, int32_t pixels, SampleBuffer<Sample> &buffer) {
    copySamples(rows.y + x, pixels, buffer.y);
    copySamples(rows.u + x, (pixels + 1) / 2 * 2, buffer.u);
    return {buffer.y, buffer.u, nullptr};
  }
};

/// Groups of four bytes for two columns: where luma begins, and u, and v.
template <int luma, int u, int v>
struct PackedSource {
  using Rows = YuvBytes;
  using Sample = uint8_t;
  static constexpr bool kSharesChroma = true;
  static constexpr bool kIsByParity = true;

  /// Eight bytes of luma, then four pairs of u and v.
  alignas(16) static constexpr uint8_t kOrder[16] = {
      luma, luma + 2, luma + 4, luma + 6, luma + 8, luma + 10, luma + 12, luma + 14, //
      u,    v,        u + 4,    v + 4,    u + 8,    v + 8,     u + 12,    v + 12};

  template <Deal deal>
  static HWY_INLINE GroupSamples load(const Rows &rows, ptrdiff_t x) {
    const uint8_t *at = rows.y + 2 * x;
    V8 lower = hn::LoadU(D8(), at);
    V8 upper = hn::LoadU(D8(), at + kGroup);
    dealPacked<deal>(lower, upper);
    const V8 order = hn::LoadDup128(D8(), kOrder);
    const auto first = hn::BitCast(D64(), hn::TableLookupBytes(lower, order));
    const auto second = hn::BitCast(D64(), hn::TableLookupBytes(upper, order));
    const V8 y = hn::BitCast(D8(), hn::InterleaveLower(D64(), first, second));
    const V8 pairs = fromMiddle(hn::BitCast(D8(), hn::InterleaveUpper(D64(), first, second)));
    const VI us = signedOf(lowerBytes(pairs));
    const VI vs = signedOf(upperBytes(pairs));
    return {{lowerBytes(y), upperBytes(y)}, {us, us}, {vs, vs}};
  }

  static HWY_INLINE Rows copy(const Rows &rows, int32_t x, int32_t pixels, SampleBuffer<Sample> &buffer) {
    copySamples(rows.y + static_cast<ptrdiff_t>(2) * x, (pixels + 1) / 2 * 4, buffer.y);
    return {buffer.y, nullptr, nullptr};
  }
};

template <class SampleRows>
HWY_INLINE SampleRows copyFull(const SampleRows &rows, int32_t x, int32_t pixels, auto &buffer) {
  copySamples(rows.y + x, pixels, buffer.y);
  copySamples(rows.u + x, pixels, buffer.u);
  copySamples(rows.v + x, pixels, buffer.v);
  return {buffer.y, buffer.u, buffer.v};
}

/// Chroma for every column.
struct FullSource {
  using Rows = YuvBytes;
  using Sample = uint8_t;
  static constexpr bool kSharesChroma = false;
  static constexpr bool kIsByParity = true;

  template <Deal deal>
  static HWY_INLINE GroupSamples load(const Rows &rows, ptrdiff_t x) {
    const V8 y = dealOut<deal>(hn::LoadU(D8(), rows.y + x));
    const V8 u = dealOut<deal>(fromMiddle(hn::LoadU(D8(), rows.u + x)));
    const V8 v = dealOut<deal>(fromMiddle(hn::LoadU(D8(), rows.v + x)));
    return {{lowerBytes(y), upperBytes(y)},
            {signedOf(lowerBytes(u)), signedOf(upperBytes(u))},
            {signedOf(lowerBytes(v)), signedOf(upperBytes(v))}};
  }

  static HWY_INLINE Rows copy(const Rows &rows, int32_t x, int32_t pixels, SampleBuffer<Sample> &buffer) {
    return copyFull(rows, x, pixels, buffer);
  }
};

/// Words of luma as samples in units of 1/256, and of chroma from the middle.
HWY_INLINE V16 wordsFrom(const int16_t *from) {
  return hn::ShiftLeft<1>(hn::BitCast(D16(), hn::LoadU(DI(), from)));
}
HWY_INLINE VI middleWordsFrom(const int16_t *from) {
  return signedOf(hn::Xor(wordsFrom(from), hn::Set(D16(), uint16_t{0x8000})));
}

struct WordSource {
  using Rows = YuvWords;
  using Sample = int16_t;
  static constexpr bool kSharesChroma = false;
  static constexpr bool kIsByParity = false;

  template <Deal deal>
  static HWY_INLINE GroupSamples load(const Rows &rows, ptrdiff_t x) {
    return {{wordsFrom(rows.y + x), wordsFrom(rows.y + x + kLanes)},
            {middleWordsFrom(rows.u + x), middleWordsFrom(rows.u + x + kLanes)},
            {middleWordsFrom(rows.v + x), middleWordsFrom(rows.v + x + kLanes)}};
  }

  static HWY_INLINE Rows copy(const Rows &rows, int32_t x, int32_t pixels, SampleBuffer<Sample> &buffer) {
    return copyFull(rows, x, pixels, buffer);
  }
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
