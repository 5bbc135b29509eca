#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/scale_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/interpolated-inl.h"
#include "vector/scale_rows.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Blocks of 128 bits in a vector.
constexpr int32_t kBlocks = static_cast<int32_t>(hn::MaxLanes(kSamples)) / 16;

// --- Interpolation --------------------------------------------------------------------------------------------------

/// The windows of a group, read one by one.
template <int32_t numberOf>
struct Windows {
  static constexpr int32_t parts = numberOf;
  const uint8_t *line;
  const TapGroup &group;

  HWY_INLINE Windows(const uint8_t *from, const TapGroup &of) : line(from), group(of) {}
  HWY_INLINE SampleVec of(int32_t part, int32_t b) const { return blocksAt(kSamples, line, group.window[part] + b); }
};

#if HWY_TARGET == HWY_AVX3

/// Windows within reach, taken out of two vectors.
template <int32_t numberOf>
struct WindowsWithinReach {
  static constexpr int32_t parts = numberOf;
  const TapGroup &group;
  __m512i low;
  __m512i high;

  HWY_INLINE WindowsWithinReach(const uint8_t *line, const TapGroup &of)
      : group(of), low(_mm512_loadu_si512(line + of.base)), high(_mm512_loadu_si512(line + of.base + 64)) {}
  HWY_INLINE SampleVec of(int32_t part, int32_t /*b*/) const {
    return SampleVec{_mm512_permutex2var_epi32(low, _mm512_load_si512(group.lane[part]), high)};
  }
};

#endif

/// Interpolates a group.
template <class WindowsOf>
HWY_INLINE void fillGroup(const uint8_t *line, const TapGroup &group, int32_t *row) {
  constexpr hn::ScalableTag<int16_t> kWords;
  constexpr int32_t parts = WindowsOf::parts;
  const WindowsOf source(line, group);
  for (int32_t b = 0; b < 4; b += kBlocks) {
    SampleVec windows = source.of(0, b);
    for (int32_t k = 0; k < 4; ++k) {
      if (k != 0 && k * parts % 4 == 0) {
        windows = source.of(k * parts / 4, b);
      }
      const auto pairs = hn::TableLookupBytesOr0(windows, hn::Load(kSamples, group.mask[k] + 16 * b));
      const auto weights = hn::Load(kWords, group.weight[k] + 8 * b);
      hn::StoreU(interpolated(hn::BitCast(kWords, pairs), weights), kNumbers, row + 16 * b + k * (kSet / 4));
    }
  }
}

template <class WindowsOf>
HWY_NOINLINE void fillGroups(const uint8_t *line, const TapGroup *group, int32_t groups, int32_t *row) {
  for (const TapGroup *const end = group + groups; group != end; ++group, row += kPlanGroup) {
    fillGroup<WindowsOf>(line, *group, row);
  }
}

/// Interpolates the components of a group of words, which are taken apart once they stand in pairs.
template <class WindowsOf>
HWY_INLINE void fillWordGroup(const uint8_t *line, const TapGroup &group, int32_t *const (&rows)[3],
                              std::ptrdiff_t first) {
  constexpr hn::ScalableTag<int16_t> kWords;
  constexpr hn::ScalableTag<uint16_t> kPixels;
  constexpr int32_t parts = WindowsOf::parts;
  const WindowsOf source(line, group);
  const auto fiveBits = hn::Set(kPixels, uint16_t{0xF8});
  const auto sixBits = hn::Set(kPixels, uint16_t{0xFC});
  for (int32_t b = 0; b < 4; b += kBlocks) {
    SampleVec windows = source.of(0, b);
    for (int32_t k = 0; k < 4; ++k) {
      if (k != 0 && k * parts % 4 == 0) {
        windows = source.of(k * parts / 4, b);
      }
      const auto pixels =
          hn::BitCast(kPixels, hn::TableLookupBytes(windows, hn::Load(kSamples, group.mask[k] + 16 * b)));
      const auto weights = hn::Load(kWords, group.weight[k] + 8 * b);
      const std::ptrdiff_t at = first + 16 * b + k * (kSet / 4);
      const auto store = [&](auto component, int32_t *row) HWY_ATTR {
        hn::StoreU(interpolated(hn::BitCast(kWords, component), weights), kNumbers, row + at);
      };
      store(hn::And(hn::ShiftRight<8>(pixels), fiveBits), rows[0]);
      store(hn::And(hn::ShiftRight<3>(pixels), sixBits), rows[1]);
      store(hn::And(hn::ShiftLeft<3>(pixels), fiveBits), rows[2]);
    }
  }
}

template <class WindowsOf>
HWY_NOINLINE void fillWordGroups(const uint8_t *line, const TapGroup *group, int32_t groups, int32_t *const to[3]) {
  int32_t *const rows[3] = {to[0], to[1], to[2]};
  for (int32_t g = 0; g < groups; ++g) {
    fillWordGroup<WindowsOf>(line, group[g], rows, std::ptrdiff_t{g} * kPlanGroup);
  }
}

/// The samples of outputs and the ones behind them, pair by pair.
HWY_NOINLINE void gatherPairs(const uint8_t *line, const Tap *tap, int32_t step, std::ptrdiff_t count, uint8_t *pairs) {
  if (step == 1) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      hwy::CopyBytes<2>(line + tap[i].index, pairs + 2 * i);
    }
  } else {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      const uint8_t *from = line + std::ptrdiff_t{tap[i].index} * step;
      pairs[2 * i] = from[0];
      pairs[2 * i + 1] = from[step];
    }
  }
}

/// Windows that are too narrow for the ratio, or too wide for the line: pairs of bytes are brought together first.
HWY_NOINLINE void fillGathered(const uint8_t *line, const TapPlan &plan, int32_t firstGroup, int32_t groups,
                               int32_t *row) {
  constexpr int32_t kGroups = 8; // at a time: reading what was written byte by byte just before would stall
  uint8_t pairs[kGroups][2 * kPlanGroup];
  for (int32_t first = 0; first < groups; first += kGroups) {
    const int32_t count = groups - first < kGroups ? groups - first : kGroups;
    const std::ptrdiff_t output = std::ptrdiff_t{firstGroup + first} * kPlanGroup;
    gatherPairs(line, plan.taps + output, plan.step, std::ptrdiff_t{count} * kPlanGroup, pairs[0]);
    for (int32_t g = 0; g < count; ++g) {
      fillGroup<Windows<2>>(pairs[g], plan.groups[firstGroup + first + g],
                            row + std::ptrdiff_t{first + g} * kPlanGroup);
    }
  }
}

void fillRow(const uint8_t *line, const TapPlan &plan, int32_t firstGroup, int32_t groups, int32_t *row) {
  const TapGroup *first = plan.groups + firstGroup;
#if HWY_TARGET == HWY_AVX3
  if (plan.withinReach) {
    return plan.parts == 1 ? fillGroups<WindowsWithinReach<1>>(line, first, groups, row)
                           : fillGroups<WindowsWithinReach<2>>(line, first, groups, row);
  }
#endif
  switch (plan.parts) {
  case 0:
    return fillGathered(line, plan, firstGroup, groups, row);
  case 1:
    return fillGroups<Windows<1>>(line, first, groups, row);
  case 2:
    return fillGroups<Windows<2>>(line, first, groups, row);
  default:
    return fillGroups<Windows<4>>(line, first, groups, row);
  }
}

void fillWordRows(const uint8_t *line, const TapPlan &plan, int32_t firstGroup, int32_t groups,
                  int32_t *const rows[3]) {
  const TapGroup *first = plan.groups + firstGroup;
#if HWY_TARGET == HWY_AVX3
  if (plan.withinReach) {
    return plan.parts == 1 ? fillWordGroups<WindowsWithinReach<1>>(line, first, groups, rows)
                           : fillWordGroups<WindowsWithinReach<2>>(line, first, groups, rows);
  }
#endif
  switch (plan.parts) {
  case 1:
    return fillWordGroups<Windows<1>>(line, first, groups, rows);
  case 2:
    return fillWordGroups<Windows<2>>(line, first, groups, rows);
  default:
    return fillWordGroups<Windows<4>>(line, first, groups, rows);
  }
}

// --- Mixing ---------------------------------------------------------------------------------------------------------

template <class Mix>
HWY_INLINE void mixSets(const Mix mix, const int32_t *top, const int32_t *bottom, int32_t groups, uint8_t *to) {
  for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{groups} * kPlanGroup; i += kSet) {
    hn::StoreU(samplesOf(mix, top + i, bottom + i), kSamples, to + i);
  }
}

void mixRows(const int32_t *top, const int32_t *bottom, int32_t next, int32_t groups, uint8_t *to) {
  if (next == 0) {
    mixSets(Unmixed(), top, top, groups, to);
  } else {
    mixSets(Mixing(next), top, bottom, groups, to);
  }
}

// --- Nearest samples ------------------------------------------------------------------------------------------------

template <int32_t parts>
HWY_INLINE void pickGroup(const uint8_t *line, const PickGroup &group, uint8_t *to) {
  for (int32_t b = 0; b < 4; b += kBlocks, to += 16 * kBlocks) {
    const auto part = [&](int32_t number) HWY_ATTR {
      return hn::TableLookupBytesOr0(blocksAt(kSamples, line, group.window[number] + b),
                                     hn::Load(kSamples, group.mask[number] + 16 * b));
    };
    SampleVec samples = part(0);
    if constexpr (parts >= 2) {
      samples = hn::Or(samples, part(1));
    }
    if constexpr (parts == 4) {
      samples = hn::Or(samples, hn::Or(part(2), part(3)));
    }
    hn::StoreU(samples, kSamples, to);
  }
}

template <int32_t parts>
HWY_NOINLINE void pickGroups(const uint8_t *line, const PickGroup *group, int32_t groups, uint8_t *to) {
  for (const PickGroup *const end = group + groups; group != end; ++group, to += kPlanGroup) {
    pickGroup<parts>(line, *group, to);
  }
}

/// Every second byte; no masks are needed where a group's windows follow one another.
HWY_NOINLINE void pickEven(const uint8_t *line, const PickGroup *group, int32_t groups, uint8_t *to) {
  constexpr std::ptrdiff_t kBytes = 16 * kBlocks;
  for (const PickGroup *const end = group + groups; group != end; ++group, to += kPlanGroup) {
    if (group->window[1][3] - group->window[0][0] != 2 * kPlanGroup - kPlanWindow) {
      pickGroup<2>(line, *group, to);
      continue;
    }
    const uint8_t *from = line + group->window[0][0];
    for (std::ptrdiff_t i = 0; i < kPlanGroup; i += kBytes) {
      const auto low = hn::LoadU(kSamples, from + 2 * i);
      const auto high = hn::LoadU(kSamples, from + 2 * i + kBytes);
      hn::StoreU(hn::ConcatEven(kSamples, high, low), kSamples, to + i);
    }
  }
}

HWY_NOINLINE void pickSingly(const uint8_t *line, const PickPlan &plan, int32_t firstGroup, int32_t groups,
                             uint8_t *to) {
  const int32_t *column = plan.columns + std::ptrdiff_t{firstGroup} * kPlanGroup;
  for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{groups} * kPlanGroup; ++i) {
    to[i] = line[std::ptrdiff_t{column[i]} * plan.step];
  }
}

void pickRow(const uint8_t *line, const PickPlan &plan, int32_t firstGroup, int32_t groups, uint8_t *to) {
  const PickGroup *first = plan.groups + firstGroup;
  switch (plan.parts) {
  case 0:
    return pickSingly(line, plan, firstGroup, groups, to);
  case 1:
    return pickGroups<1>(line, first, groups, to);
  case 2:
    return plan.ratio == 2 && plan.step == 1 ? pickEven(line, first, groups, to)
                                             : pickGroups<2>(line, first, groups, to);
  default:
    return pickGroups<4>(line, first, groups, to);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<FillRow> FILL_ROW = ZQCC_EVERY_LEVEL(fillRow);
constexpr PerLevel<FillWordRows> FILL_WORD_ROWS = ZQCC_EVERY_LEVEL(fillWordRows);
constexpr PerLevel<MixRows> MIX_ROWS = ZQCC_EVERY_LEVEL(mixRows);
constexpr PerLevel<PickRow> PICK_ROW = ZQCC_EVERY_LEVEL(pickRow);

} // namespace zqcc
#endif
