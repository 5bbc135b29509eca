// Which words every output of a row of means is made of, laid out as vector code reads it. Made at set-up by portable
// code; one layout serves every level. Samples never fall from output to output: neither the first ones nor the last.
#pragma once

#include "rows/scale.h"

namespace zqp {

enum class TapKind : int32_t {
  Plain,  ///< means of more than kFewTaps samples among them
  Kept,   ///< outputs are neighbouring samples
  Halves, ///< outputs are means of neighbouring pairs of samples
  Four,   ///< of up to four samples
  Eight,  ///< of up to eight
  Sixteen ///< of up to sixteen
};

inline constexpr int32_t kTapBlock = 16;
inline constexpr int32_t kTapBlocks = kColumnGroup / kTapBlock;
inline constexpr int32_t kMostTapPairs = 4;

/// Words that two of the widest vectors hold.
inline constexpr int32_t kTapReach = 64;

/// kColumnGroup outputs; what stands for outputs behind the last one repeats it.
struct alignas(64) TapGroup {
  TapKind kind;
  /// Of up to eight samples: so many pairs of words, of kTapReach words from the base of a block of kTapBlock outputs
  /// on, have all samples of an output; 0 where those are not enough.
  int32_t pairs;
  int32_t run; ///< Kept, Halves: so many outputs from the group's first one on go on like this
  int32_t base[kTapBlocks];
  alignas(64) int32_t firstPair[kTapBlocks][kTapBlock];
  /// Factors of pairs [block][pair][2 output], unless there are sixteen words; then those of an output's four, eight or
  /// sixteen words from its first sample on.
  alignas(64) int16_t factors[kColumnGroup * kFewTaps];
};

inline constexpr int32_t kWordFactors = kTapBlocks * kMostTapPairs * 2 * kTapBlock; ///< where those begin

} // namespace zqp
