// Samples interpolated along a row, and rows between rows.

// Read once a level.
#if defined(ZQP_ROWS_LERP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_LERP_INL_H
#undef ZQP_ROWS_LERP_INL_H
#else
#define ZQP_ROWS_LERP_INL_H
#endif

#include "rows/byte_pairs-inl.h"
#include "rows/lerp_layout.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

// --- Columns --------------------------------------------------------------------------------------------------------

/// The windows of the blocks of a vector, read one by one.
struct WindowsAnywhere {
  const uint8_t *base;
  const LerpTables &tables;

  HWY_INLINE WindowsAnywhere(const uint8_t *from, const LerpTables &of, int32_t /*block*/) : base(from), tables(of) {}
  HWY_INLINE ByteVec of(int32_t part, int32_t block) const { return windowsAt(base, tables.window[part] + block); }
};

#if HWY_TARGET == HWY_AVX3

/// Windows within reach, taken out of one vector or two.
template <int32_t parts>
struct WindowsWithinReach {
  const LerpTables &tables;
  __m512i low;
  __m512i high;

  HWY_INLINE WindowsWithinReach(const uint8_t *from, const LerpTables &of, int32_t block)
      : tables(of), low(_mm512_loadu_si512(from + (block == 0 ? 0 : of.half))),
        high(parts == 1 ? low : _mm512_loadu_si512(from + (block == 0 ? 0 : of.half) + 64)) {}
  HWY_INLINE ByteVec of(int32_t part, int32_t block) const {
    const __m512i lanes = _mm512_load_si512(tables.lane[block / 4][part]);
    return ByteVec{parts == 1 ? _mm512_permutexvar_epi32(lanes, low) : _mm512_permutex2var_epi32(low, lanes, high)};
  }
};

#else

template <int32_t parts>
using WindowsWithinReach = WindowsAnywhere;

#endif

/// Words of pairs of a nearer and a farther byte. Factors of bytes make the word at once.
template <bool byteWeights>
HWY_INLINE WordVec wordsOfPairs(ByteVec pairs, WordVec weights) {
  if constexpr (byteWeights) {
    return sumPairs(pairs, weights);
  } else {
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
    const auto minusNear = sumPairs(pairs, pairFactors(-128, 0));
    return hn::Sub(hn::MulFixedPoint15(sumPairs(pairs, pairFactors(64, -64)), weights), minusNear);
#else
    const auto near = evenBytes(pairs);
    const auto distance = hn::ShiftLeft<6>(hn::Sub(near, oddBytes(pairs)));
    return hn::Add(hn::ShiftLeft<7>(near), hn::MulFixedPoint15(distance, weights));
#endif
  }
}

template <class Windows, int32_t parts, bool byteWeights>
HWY_INLINE void lerpGroup(const uint8_t *from, const LerpTables &tables, int16_t *to) {
  constexpr auto kBlocks = static_cast<int32_t>(hn::MaxLanes(kWords)) / kLerpBlock;
  for (int32_t block = 0; block < kLerpBlocks; block += kBlocks) {
    const Windows windows(from, tables, block);
    const auto part = [&](int32_t number) HWY_ATTR {
      return hn::TableLookupBytesOr0(windows.of(number, block),
                                     hn::Load(kBytes, tables.mask[number] + kLerpWindow * block));
    };
    ByteVec pairs = part(0);
    if constexpr (parts == 2) {
      pairs = hn::Or(pairs, part(1));
    }
    const auto weights = hn::Load(kWords, tables.weight + kLerpBlock * block);
    hn::StoreU(wordsOfPairs<byteWeights>(pairs, weights), kWords, to + kLerpBlock * block);
  }
}

/// Groups from `place` on; the last one may be cut short.
template <class Windows, int32_t parts, bool byteWeights>
HWY_NOINLINE void lerpGroups(const uint8_t *from, const LerpTables *tables, const LerpPlace *place, int32_t count,
                             int16_t *to) {
  for (; count >= kColumnGroup; count -= kColumnGroup, to += kColumnGroup, ++place) {
    lerpGroup<Windows, parts, byteWeights>(from + place->base, tables[place->tables], to);
  }
  if (count > 0) {
    alignas(64) int16_t words[kColumnGroup];
    lerpGroup<Windows, parts, byteWeights>(from + place->base, tables[place->tables], words);
    std::memcpy(to, words, static_cast<size_t>(count) * sizeof *to);
  }
}

template <class Windows, int32_t parts>
HWY_INLINE void lerpGroups(const uint8_t *from, const LerpTables *tables, const LerpPlace *place, bool byteWeights,
                           int32_t count, int16_t *to) {
  return byteWeights ? lerpGroups<Windows, parts, true>(from, tables, place, count, to)
                     : lerpGroups<Windows, parts, false>(from, tables, place, count, to);
}

/// Outputs too far apart for windows, or rows shorter than one.
inline HWY_NOINLINE void lerpSingly(const uint8_t *from, const Lerp *column, int32_t count, int16_t *to) {
  for (int32_t i = 0; i < count; ++i) {
    const uint8_t *sample = from + column[i].at;
    const int32_t distance = sample[column[i].next != 0 ? 1 : 0] - sample[0];
    to[i] = static_cast<int16_t>((sample[0] << kWordShift) + ((distance * column[i].next + 128) >> 8));
  }
}

HWY_INLINE void lerpByLayout(const uint8_t *from, const LerpColumns &columns, int32_t first, int32_t count,
                             int16_t *to) {
  const auto &layout = *reinterpret_cast<const LerpLayout *>(columns.layout);
  const auto *tables = reinterpret_cast<const LerpTables *>(columns.layout + sizeof(LerpLayout));
  const int32_t groups = (columns.count + kColumnGroup - 1) / kColumnGroup;
  const auto *place = reinterpret_cast<const LerpPlace *>(tables + groups) + first / kColumnGroup;
  const bool bytes = layout.byteWeights;
  if (layout.withinReach) {
    return layout.parts == 1 ? lerpGroups<WindowsWithinReach<1>, 1>(from, tables, place, bytes, count, to)
                             : lerpGroups<WindowsWithinReach<2>, 2>(from, tables, place, bytes, count, to);
  }
  return layout.parts == 1 ? lerpGroups<WindowsAnywhere, 1>(from, tables, place, bytes, count, to)
                           : lerpGroups<WindowsAnywhere, 2>(from, tables, place, bytes, count, to);
}

inline void lerpColumns(const uint8_t *from, const LerpColumns &columns, int32_t first, int32_t count, int16_t *to) {
  if (kIsEmulated || reinterpret_cast<const LerpLayout *>(columns.layout)->parts == 0) {
    return lerpSingly(from, columns.columns + first, count, to);
  }
  lerpByLayout(from, columns, first, count, to);
}

// --- Lines ----------------------------------------------------------------------------------------------------------

template <class D>
HWY_INLINE void lerpVectors(D d, const int16_t *upper, const int16_t *lower, int32_t next, int32_t count, int16_t *to) {
  constexpr auto kLanes = static_cast<int32_t>(hn::MaxLanes(d));
  const auto weight = hn::Set(d, static_cast<int16_t>(next));
  const auto mixed = [&](int32_t i) HWY_ATTR {
    const auto above = hn::LoadU(d, upper + i);
    return hn::Add(above, hn::MulFixedPoint15(hn::Sub(hn::LoadU(d, lower + i), above), weight));
  };
  // The output may be one of the rows: what the last vector is made of is read before anything is written.
  const auto last = mixed(count - kLanes);
  for (int32_t i = 0; i < count - kLanes; i += kLanes) {
    hn::StoreU(mixed(i), d, to + i);
  }
  hn::StoreU(last, d, to + count - kLanes);
}

HWY_INLINE void lerpPlainly(const int16_t *upper, const int16_t *lower, int32_t next, int32_t count, int16_t *to) {
  for (int32_t i = 0; i < count; ++i) {
    to[i] = static_cast<int16_t>(upper[i] + (((lower[i] - upper[i]) * next + (1 << 14)) >> 15));
  }
}

inline void lerpLines(const int16_t *upper, const int16_t *lower, int32_t next, int32_t count, int16_t *to) {
  constexpr hn::CappedTag<int16_t, 8> kFew;
  if (kIsEmulated || count < static_cast<int32_t>(hn::MaxLanes(kFew))) {
    return lerpPlainly(upper, lower, next, count, to);
  }
  if (count < static_cast<int32_t>(hn::MaxLanes(kWords))) {
    return lerpVectors(kFew, upper, lower, next, count, to);
  }
  lerpVectors(kWords, upper, lower, next, count, to);
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
