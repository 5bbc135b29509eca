// Which words every output of a row of means is made of, laid out as vector code reads it. Made at set-up by portable
// code; one layout serves every level. Samples never fall from output to output: neither the first ones nor the last.
#pragma once

#include "rows/scale.h"

namespace zqp {

enum class TapKind : int32_t {
  Plain,  ///< means of more than kFewTaps samples among them
  Kept,   ///< outputs are neighbouring samples
  Halves, ///< outputs are means of neighbouring pairs of samples
  Eight,  ///< of up to eight samples
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
  /// Of TapKind::Eight: so many pairs of words, of kTapReach words from the base of a block of kTapBlock outputs on,
  /// have all samples of an output; 0 where those are not enough.
  int32_t pairs;
  int32_t base[kTapBlocks];
  alignas(64) int32_t firstPair[kTapBlocks][kTapBlock];
  /// Eight: factors of pairs [block][pair][2 output]; then (else from the beginning on) those of an output's eight or
  /// sixteen words from its first sample on.
  alignas(64) int16_t factors[kColumnGroup * kFewTaps];
};

inline constexpr int32_t kEightFactors = kTapBlocks * kMostTapPairs * 2 * kTapBlock; ///< where those begin

} // namespace zqp
