// Taps of resampling tables as they are used: two neighbouring samples and how much each of them counts.
#pragma once

#include "base/table_format.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Weights, out of 1024, of a sample and of the one after it. Those of filtered taps may lie outside 0..1024.
struct TapWeights {
  int32_t self;
  int32_t next;
};

struct SampleTap {
  std::ptrdiff_t self; ///< position of the sample
  std::ptrdiff_t next; ///< position of its neighbour
  TapWeights weights;
};

// How the words of a table become a tap. Tables are built for the full picture; where they serve planes that are
// smaller, entries near the end may point past it.

/// The tap as set-up built it: both samples lie inside.
struct AsBuilt {
  SampleTap operator()(const int32_t *words) const {
    return {words[0], std::ptrdiff_t{words[0]} + 1, {words[2], words[1]}};
  }
};

/// The last two of `count` samples; a single one serves twice.
inline SampleTap tapAtEnd(std::ptrdiff_t count, TapWeights weights) {
  return {count > 1 ? count - 2 : 0, count - 1, weights};
}

/// At the last sample or past it: the even mean of the last two.
struct EvenAtEnd {
  std::ptrdiff_t count;
  SampleTap operator()(const int32_t *words) const {
    return words[0] < count - 1 ? AsBuilt{}(words) : tapAtEnd(count, {kWholeWeight / 2, kWholeWeight / 2});
  }
};

/// At the last sample or past it: the last two, weighed as the table says.
struct HeldAtEnd {
  std::ptrdiff_t count;
  SampleTap operator()(const int32_t *words) const {
    return words[0] < count - 1 ? AsBuilt{}(words) : tapAtEnd(count, {words[2], words[1]});
  }
};

/// Mean of a position with `taps` taps a direction, of which the t-th column tap goes with the t-th line tap:
/// `valueOf(t)` is what the two of them give, truncated before it is summed.
template <std::size_t taps, class ValueOf>
auto meanOfTaps(ValueOf valueOf) {
  decltype(valueOf(0)) sum{};
  for (std::size_t t = 0; t < taps; ++t) {
    sum += valueOf(t);
  }
  return sum / static_cast<int32_t>(taps);
}

} // namespace zqcc
