#include "vector/filter_plan.h"

#include "base/limits.h"
#include "kernels/taps.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr auto kTaps = static_cast<int32_t>(kFilterTaps);
constexpr int32_t kBlock = 4;   ///< outputs of a block
constexpr int32_t kWindow = 16; ///< bytes of a block
constexpr int32_t kMostWindows = kTaps * kFilterGroup;

constexpr int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// Tap indices of the outputs of a group, and the window that each is looked for in.
struct GroupTaps {
  int32_t index[kFilterGroup][kTaps];
  int32_t window[kFilterGroup][kTaps];
};

/// Bytes of a window, and whether it serves a block or a single output.
struct Reach {
  int32_t bytes;
  int32_t outputs;
  bool allTaps;
};

constexpr Reach reachOf(FilterWindows kind) {
  switch (kind) {
  case FilterWindows::Near:
  case FilterWindows::Shared:
    return {kWindow, kBlock, true};
  case FilterWindows::OfTaps:
    return {kWindow, kBlock, false};
  default:
    return {kWindow / kBlock, 1, false};
  }
}

class GroupMaker {
public:
  GroupMaker(const int32_t *table, const FilterLine &line) : table_(table), line_(line) {}

  /// The taps of group g; false if one of them stands outside of what a line has.
  bool read(int32_t g) {
    for (int32_t i = 0; i < kFilterGroup; ++i) {
      const int32_t *words = entry(g, i);
      for (int32_t t = 0; t < kTaps; ++t, words += kTapWords) {
        const auto index = static_cast<int32_t>(HeldAtEnd{line_.limit}(words).self);
        taps_.index[i][t] = index;
        if (index < 0 || index + 1 >= line_.samples) {
          return false;
        }
      }
    }
    return true;
  }

  /// Places the windows of the group that was read. False if they do not hold their taps.
  bool place(FilterWindows kind, int32_t *windows) {
    const Reach reach = reachOf(kind);
    const int32_t rows = reach.allTaps ? 1 : kTaps;
    for (int32_t row = 0; row < rows; ++row) {
      for (int32_t first = 0; first < kFilterGroup; first += reach.outputs) {
        const int32_t firstTap = row;
        const int32_t endTap = reach.allTaps ? kTaps : row + 1;
        int32_t low = line_.samples - reach.bytes;
        int32_t high = 0;
        for (int32_t i = first; i < first + reach.outputs; ++i) {
          for (int32_t t = firstTap; t < endTap; ++t) {
            low = smaller(low, taps_.index[i][t]);
            high = larger(high, taps_.index[i][t]);
          }
        }
        if (low < 0 || high + 2 > low + reach.bytes) {
          return false;
        }
        *windows++ = low;
        for (int32_t i = first; i < first + reach.outputs; ++i) {
          for (int32_t t = firstTap; t < endTap; ++t) {
            taps_.window[i][t] = low;
          }
        }
      }
    }
    return true;
  }

  /// Places windows of 16 bytes in 64 that are near one another. False if they do not hold their taps.
  bool placeNear(int32_t *windows, NearWindows &near) {
    int32_t first = line_.samples - kWindowBytes;
    for (const auto &taps : taps_.index) {
      for (const int32_t index : taps) {
        first = smaller(first, index);
      }
    }
    near.first = first;
    for (int32_t block = 0; block < kFilterGroup; block += kBlock) {
      int32_t low = INT32_MAX;
      int32_t high = 0;
      for (int32_t i = block; i < block + kBlock; ++i) {
        for (const int32_t index : taps_.index[i]) {
          low = smaller(low, index);
          high = larger(high, index);
        }
      }
      const int32_t from = smaller((low - first) / 4, (kWindowBytes - kWindow) / 4);
      const int32_t window = first + 4 * from;
      if (first < 0 || high + 2 > window + kWindow) {
        return false;
      }
      *windows++ = window;
      for (int32_t i = block; i < block + kBlock; ++i) {
        near.from[i] = static_cast<uint8_t>(from + i % kBlock);
        for (int32_t &each : taps_.window[i]) {
          each = window;
        }
      }
    }
    return true;
  }

  /// Masks and weights, once the windows are placed.
  void write(int32_t g, FilterWindows kind, FilterGroup &group) const {
    for (int32_t i = 0; i < kFilterGroup; ++i) {
      const int32_t *words = entry(g, i);
      const int32_t inBlock = kind == FilterWindows::Gathered ? i % kBlock * kBlock : 0;
      for (int32_t t = 0; t < kTaps; ++t, words += kTapWords) {
        const int32_t at = taps_.index[i][t] - taps_.window[i][t] + inBlock;
        const uint8_t mask[4] = {static_cast<uint8_t>(at), 0x80, static_cast<uint8_t>(at + 1), 0x80};
        const int16_t weight[2] = {static_cast<int16_t>(16 * (kWholeWeight - words[1])),
                                   static_cast<int16_t>(16 * words[1])};
        std::memcpy(group.mask[t] + std::ptrdiff_t{4} * i, mask, sizeof mask);
        std::memcpy(group.weight[t] + std::ptrdiff_t{2} * i, weight, sizeof weight);
      }
    }
  }

private:
  /// The words of output i of group g; behind the last output those of the last.
  [[nodiscard]] const int32_t *entry(int32_t g, int32_t i) const {
    return table_ + std::ptrdiff_t{smaller(g * kFilterGroup + i, line_.outputs - 1)} * kEntryWords<kFilterTaps>;
  }

  const int32_t *table_;
  const FilterLine &line_;
  GroupTaps taps_{};
};

/// Where the columns of a line are made.
struct Room {
  FilterGroup *groups;
  int32_t *windows;
  NearWindows *near;
};

/// Groups from the first one on. False if a window does not hold its taps.
bool makeColumns(const int32_t *table, const FilterLine &line, int32_t first, const FilterPlan &plan, Room room) {
  GroupMaker maker(table, line);
  for (int32_t g = first; g < filterGroups(line.outputs); ++g, room.windows += plan.windowsPerGroup()) {
    if (!maker.read(g)) {
      return false;
    }
    const bool placed = plan.kind == FilterWindows::Near ? maker.placeNear(room.windows, *room.near++)
                                                         : maker.place(plan.kind, room.windows);
    if (!placed) {
      return false;
    }
    maker.write(g, plan.kind, *room.groups++);
  }
  return true;
}

/// Groups at the start of both lines whose taps and windows lie inside of chroma's.
int32_t commonGroups(const FilterPlan &plan, const FilterLine &luma, const FilterLine &chroma) {
  if (luma.samples == chroma.samples && luma.limit == chroma.limit && luma.outputs == chroma.outputs) {
    return filterGroups(luma.outputs);
  }
  const int32_t end = smaller(chroma.limit, chroma.samples);
  const int32_t whole = smaller(luma.outputs, chroma.outputs) / kFilterGroup;
  const int32_t *windows = plan.luma.windows;
  for (int32_t g = 0; g < whole; ++g) {
    if (plan.kind == FilterWindows::Near && plan.luma.near[g].first + kWindowBytes > end) {
      return g;
    }
    const int32_t reach = reachOf(plan.kind).bytes;
    for (int32_t k = 0; k < plan.windowsPerGroup(); ++k) {
      if (*windows++ + reach > end) {
        return g; // no tap inside its window steps back, then
      }
    }
  }
  return whole;
}

constexpr FilterWindows kKinds[] = {FilterWindows::Near, FilterWindows::Shared, FilterWindows::OfTaps,
                                    FilterWindows::Gathered};

uint64_t windowBytes(int32_t outputs) {
  return static_cast<uint64_t>(filterGroups(outputs)) * (kMostWindows * sizeof(int32_t) + sizeof(NearWindows));
}

uint64_t groupBytes(int32_t outputs) {
  return static_cast<uint64_t>(filterGroups(outputs)) * sizeof(FilterGroup);
}

} // namespace

uint64_t filterPlanBytes(const FilterLine &luma, const FilterLine &chroma) {
  return groupBytes(luma.outputs) + groupBytes(chroma.outputs) + windowBytes(luma.outputs) +
         windowBytes(chroma.outputs);
}

FilterPlan makeFilterPlan(const int32_t *table, const FilterLine &luma, const FilterLine &chroma, uint8_t *memory) {
  const int32_t lumaGroups = filterGroups(luma.outputs);
  const int32_t chromaGroups = filterGroups(chroma.outputs);
  Room lumaRoom{};
  Room chromaRoom{};
  lumaRoom.groups = reinterpret_cast<FilterGroup *>(memory);
  chromaRoom.groups = lumaRoom.groups + lumaGroups;
  lumaRoom.windows = reinterpret_cast<int32_t *>(chromaRoom.groups + chromaGroups);
  chromaRoom.windows = lumaRoom.windows + std::ptrdiff_t{lumaGroups} * kMostWindows;
  lumaRoom.near = reinterpret_cast<NearWindows *>(chromaRoom.windows + std::ptrdiff_t{chromaGroups} * kMostWindows);
  chromaRoom.near = lumaRoom.near + lumaGroups;
  FilterPlan plan{};
  plan.luma = {lumaRoom.groups, lumaRoom.windows, lumaRoom.near};
  plan.chroma = {chromaRoom.groups, chromaRoom.windows, chromaRoom.near};
  for (const FilterWindows kind : kKinds) {
    plan.kind = kind;
    if (!makeColumns(table, luma, 0, plan, lumaRoom)) {
      continue;
    }
    plan.common = commonGroups(plan, luma, chroma);
    if (makeColumns(table, chroma, plan.common, plan, chromaRoom)) {
      plan.exists = true;
      return plan;
    }
  }
  return plan;
}

} // namespace zqcc
