// Saturation by table: an 8-bit-scale value outside its range costs one load, the same as one inside it.
#pragma once

#include "base/limits.h"

#include <cstdint>

namespace zqcc {

/// A byte table reached through a base that points inside it, so that indices from First to Last, negative ones
/// included, are valid. The base comes from memory and not from a constant: with it in a register, shift, index and
/// load are one instruction on ARM.
template <int First, int Last>
class ClipTable {
public:
  explicit ClipTable(const uint8_t *base) : base_(base) {}

  /// `index` lies in First..Last.
  uint32_t operator[](int32_t index) const { return base_[index]; }

  /// Any index: past either end the end value stands.
  [[nodiscard]] uint32_t at(int32_t index) const { return base_[clampTo(index, First, Last)]; }

private:
  const uint8_t *base_;
};

/// Positions in CLIP_BASES. All tables cover the same signed range of an 8-bit-scale value, -384..639, shifted by 0, 2,
/// 3 and 2.
enum ClipTableIndex : unsigned { CLIP_EIGHT, CLIP_SIX, CLIP_FIVE, CLIP_SIX_HALVED, CLIP_TABLE_COUNT };

extern const uint8_t *const CLIP_BASES[CLIP_TABLE_COUNT];

/// Video range: a component that goes through this table never leaves 16..235.
inline ClipTable<-384, 639> clipEight() {
  return ClipTable<-384, 639>(CLIP_BASES[CLIP_EIGHT]);
}

/// 0..63.
inline ClipTable<-96, 159> clipSix() {
  return ClipTable<-96, 159>(CLIP_BASES[CLIP_SIX]);
}

/// 0..31, but not a plain clamp: 29 stands twice, so that full intensity needs an 8-bit value of 256 after dithering.
inline ClipTable<-48, 79> clipFive() {
  return ClipTable<-48, 79>(CLIP_BASES[CLIP_FIVE]);
}

/// The 6-bit table with its values halved: a 5-bit component where the 6-bit index is at hand.
inline ClipTable<-96, 159> clipSixHalved() {
  return ClipTable<-96, 159>(CLIP_BASES[CLIP_SIX_HALVED]);
}

} // namespace zqcc
