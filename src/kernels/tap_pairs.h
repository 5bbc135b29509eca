// Taps of grouped tables one by one, and how special ratios weigh them.
#pragma once

#include "kernels/table_groups.h"

#include <cstdint>

namespace zqcc {

/// Source index and the weight, out of 1024, of the sample behind it; the sample itself has the rest.
struct Tap {
  int32_t index;
  int32_t next;
};

/// Taps of two lines that are made together; a lone last one stands twice.
struct TapPair {
  Tap first;
  Tap second;
};

/// Weights as the table holds them. A weighting turns the words of the i-th output of a group into a tap.
struct TableWeights {
  static Tap tap(const int32_t *words, int32_t /*i*/) { return {words[0], words[1]}; }
};

/// Weights of the next sample at phases 0, 1/3 and 2/3. 1024 has no third: phase 1/3 gives the nearer sample 683 and
/// phase 2/3 gives it 682.
inline constexpr int32_t kPhaseNext[3] = {0, 341, 682};

/// Three outputs of four samples: phases 0, 1/3, 2/3 by the place within the group, whatever the table's weights are.
struct ThreeQuarterWeights {
  static Tap tap(const int32_t *words, int32_t i) { return {words[0], kPhaseNext[i % 3]}; }
};

/// Three outputs of two samples: phases 0, 2/3, 1/3.
struct ThreeHalfWeights {
  static Tap tap(const int32_t *words, int32_t i) { return {words[0], kPhaseNext[2 * i % 3]}; }
};

/// Reads the taps of a table one after the other, across its groups.
template <class Weights>
class TapReader {
public:
  explicit TapReader(const int32_t *table) : walk_(table) {}

  Tap next() {
    walk_.enter();
    const Tap tap = Weights::tap(walk_.tap(), walk_.taken());
    walk_.take(1);
    return tap;
  }

  /// The taps of the next two outputs, or of a lone last one twice.
  TapPair nextPair(bool lone) {
    const Tap first = next();
    return {first, lone ? first : next()};
  }

private:
  GroupWalk walk_;
};

} // namespace zqcc
