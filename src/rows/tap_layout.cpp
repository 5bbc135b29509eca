#include "rows/tap_layout.h"

#include <cstring>

namespace zqp {
namespace {

constexpr int32_t kFour = 4;
constexpr int32_t kEight = 8;

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}
int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// Of a group.
struct Outputs {
  const Taps *columns;
  const int32_t *weights;
  int32_t count; ///< up to kColumnGroup

  const Taps &operator[](int32_t i) const { return columns[smaller(i, count - 1)]; }

  /// Whether output i is so many samples, each of which counts the same, and the next one's follow at once.
  [[nodiscard]] bool areEven(int32_t samples) const {
    for (int32_t i = 0; i < count; ++i) {
      const Taps &taps = columns[i];
      if (taps.count != samples || taps.first != columns[0].first + i * samples) {
        return false;
      }
      for (int32_t k = 0; k < samples; ++k) {
        if (weights[taps.weight + k] * samples != 1 << kFewTapsBits) {
          return false;
        }
      }
    }
    return true;
  }

  [[nodiscard]] int32_t mostSamples() const {
    int32_t most = 0;
    for (int32_t i = 0; i < count; ++i) {
      most = larger(most, columns[i].count);
    }
    return most;
  }
};

TapKind kindOf(const Outputs &outputs) {
  const int32_t most = outputs.mostSamples();
  if (most > kFewTaps) {
    return TapKind::Plain;
  }
  if (most <= 2 && outputs.areEven(most)) {
    return most == 1 ? TapKind::Kept : TapKind::Halves;
  }
  return most <= kFour ? TapKind::Four : most <= kEight ? TapKind::Eight : TapKind::Sixteen;
}

/// Factors of `words` words from an output's first sample on.
void enterWords(const Outputs &outputs, int32_t words, int16_t *factors) {
  for (int32_t i = 0; i < kColumnGroup; ++i, factors += words) {
    const Taps &taps = outputs[i];
    for (int32_t k = 0; k < taps.count; ++k) {
      factors[k] = static_cast<int16_t>(outputs.weights[taps.weight + k]);
    }
  }
}

/// Pairs that output i wants.
int32_t pairsOf(const Taps &taps, int32_t base) {
  return ((taps.first - base) % 2 + taps.count + 1) / 2;
}

/// Numbers of pairs, from the first sample of a block on. False if the block is out of reach.
bool placePairs(const Outputs &outputs, TapGroup &group) {
  for (int32_t i = 0; i < kColumnGroup; ++i) {
    const Taps &taps = outputs[i];
    const int32_t block = i / kTapBlock;
    if (i % kTapBlock == 0) {
      group.base[block] = taps.first;
    }
    group.firstPair[block][i % kTapBlock] = (taps.first - group.base[block]) / 2;
    group.pairs = larger(group.pairs, pairsOf(taps, group.base[block]));
  }
  for (const auto &block : group.firstPair) {
    if (block[kTapBlock - 1] + group.pairs > kTapReach / 2) {
      return false;
    }
  }
  return group.pairs <= kMostTapPairs;
}

void enterPairs(const Outputs &outputs, TapGroup &group) {
  for (int32_t i = 0; i < kColumnGroup; ++i) {
    const Taps &taps = outputs[i];
    const int32_t block = i / kTapBlock;
    const int32_t odd = (taps.first - group.base[block]) % 2;
    for (int32_t k = 0; k < taps.count; ++k) {
      const int32_t pair = block * group.pairs + (odd + k) / 2;
      group.factors[(pair * kTapBlock + i % kTapBlock) * 2 + (odd + k) % 2] =
          static_cast<int16_t>(outputs.weights[taps.weight + k]);
    }
  }
}

void layOutGroup(const Outputs &outputs, TapGroup &group) {
  std::memset(&group, 0, sizeof group);
  group.kind = kindOf(outputs);
  group.run = outputs.count;
  if (group.kind == TapKind::Sixteen) {
    enterWords(outputs, kFewTaps, group.factors);
  } else if (group.kind == TapKind::Four || group.kind == TapKind::Eight) {
    enterWords(outputs, group.kind == TapKind::Four ? kFour : kEight, group.factors + kWordFactors);
    if (placePairs(outputs, group)) {
      enterPairs(outputs, group);
    } else {
      group.pairs = 0;
    }
  }
}

/// Whether the outputs of a group go on as those of the one before it do.
bool goesOn(const Taps *columns, const TapGroup &group) {
  if ((group.kind != TapKind::Kept && group.kind != TapKind::Halves) || group.kind != (&group - 1)->kind) {
    return false;
  }
  return columns[0].first == columns[-1].first + columns[-1].count;
}

} // namespace

size_t tapLayoutBytes(int32_t outputs) {
  return static_cast<size_t>(outputs / kColumnGroup + (outputs % kColumnGroup != 0 ? 1 : 0)) * sizeof(TapGroup);
}

void layOutTaps(const Taps *columns, const int32_t *weights, int32_t outputs, int32_t /*samples*/, uint8_t *layout) {
  auto *group = reinterpret_cast<TapGroup *>(layout);
  for (int32_t first = 0; first < outputs; first += kColumnGroup, ++group) {
    layOutGroup({columns + first, weights, smaller(outputs - first, kColumnGroup)}, *group);
  }
  for (int32_t first = (outputs - 1) / kColumnGroup * kColumnGroup; first > 0; first -= kColumnGroup) {
    --group;
    if (goesOn(columns + first, *group)) {
      (group - 1)->run += group->run;
    }
  }
}

} // namespace zqp
