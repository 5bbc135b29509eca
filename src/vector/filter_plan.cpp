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

/// Bytes of a window.
constexpr int32_t windowBytes(FilterWindows kind) {
  return kind == FilterWindows::Gathered ? kWindow / kBlock : kWindow;
}

/// Outputs of a group, and taps, that share something.
struct Part {
  int32_t firstOutput;
  int32_t outputs;
  int32_t firstTap;
  int32_t taps;
};

/// The first and the last of the places where the taps of a part stand.
struct Extent {
  int32_t low;
  int32_t high;
};

class GroupMaker {
public:
  GroupMaker(const int32_t *table, const FilterLine &line, FilterWindows kind)
      : table_(table), line_(line), kind_(kind) {}

  /// The taps of group g.
  void read(int32_t g) {
    for (int32_t i = 0; i < kFilterGroup; ++i) {
      const int32_t *words = entry(g, i);
      for (int32_t t = 0; t < kTaps; ++t, words += kTapWords) {
        index_[i][t] = static_cast<int32_t>(tap(words).self);
      }
    }
  }

  /// Places the windows of the group that was read. False if windows inside the line do not hold its taps.
  bool place(int32_t *windows, NearWindows *near) {
    const int32_t rows = windowRows(kind_);
    const int32_t taps = kTaps / rows;
    for (int32_t row = 0; row < rows; ++row, windows += windowsOfGroup(kind_)) {
      const Part whole{0, kFilterGroup, row * taps, taps};
      if (!(isNear(kind_) ? placeNear(whole, windows, near[row]) : placeAlone(whole, windows))) {
        return false;
      }
    }
    return true;
  }

  /// Masks and weights, once the windows are placed.
  void write(int32_t g, FilterGroup &group) const {
    for (int32_t i = 0; i < kFilterGroup; ++i) {
      const int32_t *words = entry(g, i);
      const int32_t inBlock = kind_ == FilterWindows::Gathered ? i % kBlock * kBlock : 0;
      for (int32_t t = 0; t < kTaps; ++t, words += kTapWords) {
        const int32_t at = index_[i][t] - window_[i][t] + inBlock;
        const uint8_t mask[4] = {static_cast<uint8_t>(at), 0x80, static_cast<uint8_t>(at + 1), 0x80};
        const int32_t next = tap(words).weights.next;
        const int16_t weight[2] = {static_cast<int16_t>(16 * (kWholeWeight - next)), static_cast<int16_t>(16 * next)};
        std::memcpy(group.mask[t] + std::ptrdiff_t{4} * i, mask, sizeof mask);
        std::memcpy(group.weight[t] + std::ptrdiff_t{2} * i, weight, sizeof weight);
      }
    }
  }

  /// The group that was written, for bytes of the line as they lie. False if these do not hold its taps.
  bool writeInLine(const FilterGroup &group, int32_t bytes, FilterGroup &inLine, int32_t &first) const {
    const Extent taps = extentOf({0, kFilterGroup, 0, kTaps});
    first = smaller(taps.low, line_.samples - bytes);
    std::memcpy(inLine.weight, group.weight, sizeof group.weight);
    for (int32_t at = 0; at < kWindowBytes; at += kWindow) { // a block has one window for all taps
      const auto further = static_cast<uint8_t>(window_[at / 4][0] - first);
      for (int32_t t = 0; t < kTaps; ++t) {
        for (int32_t i = at; i < at + kWindow; ++i) {
          inLine.mask[t][i] = static_cast<uint8_t>(group.mask[t][i] + further);
        }
      }
    }
    return first >= 0 && taps.high + 2 <= first + bytes;
  }

private:
  /// The words of output i of group g; behind the last output those of the last.
  [[nodiscard]] const int32_t *entry(int32_t g, int32_t i) const {
    return table_ + std::ptrdiff_t{smaller(g * kFilterGroup + i, line_.outputs - 1)} * kEntryWords<kFilterTaps>;
  }

  [[nodiscard]] SampleTap tap(const int32_t *words) const {
    return line_.isEvenAtEnd ? EvenAtEnd{line_.limit}(words) : HeldAtEnd{line_.limit}(words);
  }

  [[nodiscard]] Extent extentOf(const Part &part) const {
    Extent extent{INT32_MAX, 0};
    for (int32_t i = part.firstOutput; i < part.firstOutput + part.outputs; ++i) {
      for (int32_t t = part.firstTap; t < part.firstTap + part.taps; ++t) {
        extent.low = smaller(extent.low, index_[i][t]);
        extent.high = larger(extent.high, index_[i][t]);
      }
    }
    return extent;
  }

  void setWindow(const Part &part, int32_t window) {
    for (int32_t i = part.firstOutput; i < part.firstOutput + part.outputs; ++i) {
      for (int32_t t = part.firstTap; t < part.firstTap + part.taps; ++t) {
        window_[i][t] = window;
      }
    }
  }

  /// Windows begin with their first tap, or end with the line.
  bool placeAlone(const Part &whole, int32_t *windows) {
    const int32_t bytes = windowBytes(kind_);
    Part part = whole;
    part.outputs = kFilterGroup / windowsOfGroup(kind_);
    for (; part.firstOutput < kFilterGroup; part.firstOutput += part.outputs) {
      const Extent taps = extentOf(part);
      const int32_t window = smaller(taps.low, line_.samples - bytes);
      if (window < 0 || taps.high + 2 > window + bytes) {
        return false;
      }
      setWindow(part, window);
      *windows++ = window;
    }
    return true;
  }

  /// Windows in the 64 bytes that begin with the first tap, or end with the line.
  bool placeNear(const Part &whole, int32_t *windows, NearWindows &near) {
    near.first = smaller(extentOf(whole).low, line_.samples - kWindowBytes);
    Part part = whole;
    part.outputs = kBlock;
    for (; part.firstOutput < kFilterGroup; part.firstOutput += kBlock) {
      const Extent taps = extentOf(part);
      const int32_t from = smaller((taps.low - near.first) / 4, (kWindowBytes - kWindow) / 4);
      const int32_t window = near.first + 4 * from;
      if (near.first < 0 || taps.high + 2 > window + kWindow) {
        return false;
      }
      for (int32_t i = 0; i < kBlock; ++i) {
        near.from[part.firstOutput + i] = static_cast<uint8_t>(from + i);
      }
      setWindow(part, window);
      *windows++ = window;
    }
    return true;
  }

  const int32_t *table_;
  const FilterLine &line_;
  FilterWindows kind_;
  int32_t index_[kFilterGroup][kTaps]{};
  int32_t window_[kFilterGroup][kTaps]{};
};

/// Where the columns of a line are made.
struct Room {
  FilterGroup *groups;
  FilterGroup *inLine;
  int32_t *first; ///< of those in lines
  int32_t lineBytes;
  int32_t *windows;
  NearWindows *near;
};

/// Groups from the first one on. False if a window does not hold its taps.
bool makeColumns(const int32_t *table, const FilterLine &line, int32_t first, FilterWindows kind, Room room) {
  GroupMaker maker(table, line, kind);
  for (int32_t g = first; g < filterGroups(line.outputs); ++g) {
    maker.read(g);
    if (!maker.place(room.windows, room.near)) {
      return false;
    }
    maker.write(g, *room.groups);
    if (kind == FilterWindows::Near &&
        !maker.writeInLine(*room.groups, room.lineBytes, *room.inLine++, *room.first++)) {
      return false;
    }
    ++room.groups;
    room.windows += windowRows(kind) * windowsOfGroup(kind);
    room.near += windowRows(kind);
  }
  return true;
}

/// Groups at the start of both lines whose windows lie inside of chroma's: no tap inside its window steps back.
int32_t commonGroups(const FilterPlan &plan, const FilterLine &luma, const FilterLine &chroma) {
  if (luma.samples == chroma.samples && luma.limit == chroma.limit && luma.outputs == chroma.outputs) {
    return filterGroups(luma.outputs);
  }
  const int32_t end = smaller(chroma.limit, chroma.samples);
  const int32_t whole = smaller(luma.outputs, chroma.outputs) / kFilterGroup;
  for (int32_t g = 0; g < whole; ++g) {
    const FilterColumns columns = plan.from(plan.luma, g);
    for (int32_t row = 0; row < windowRows(plan.kind); ++row) {
      if (isNear(plan.kind) && columns.near[row].first + kWindowBytes > end) {
        return g;
      }
    }
    for (int32_t k = 0; k < windowRows(plan.kind) * windowsOfGroup(plan.kind); ++k) {
      if (columns.windows[k] + windowBytes(plan.kind) > end) {
        return g;
      }
    }
  }
  return whole;
}

/// Taps reach back by less than two samples: outputs from the second sample on have none before the first one.
int32_t leadingGroups(const int32_t *table, int32_t outputs) {
  int32_t end = 0;
  for (int32_t i = 0; i < outputs && table[0] < 2; ++i) {
    for (int32_t t = 0; t < kTaps; ++t, table += kTapWords) {
      end = table[1] < 0 ? i + 1 : end;
    }
  }
  return filterGroups(end);
}

constexpr FilterWindows kKinds[] = {FilterWindows::Near, FilterWindows::Shared, FilterWindows::NearOfTaps,
                                    FilterWindows::OfTaps, FilterWindows::Gathered};

/// Bytes of a line that hold the taps of a group: of those a group is 15 steps and less than 7 samples wide.
int32_t lineBytes(const FilterLine &line) {
  constexpr int32_t kNarrow = kWindowBytes / 2;
  return int64_t{kFilterGroup - 1} * line.samples <= int64_t{kNarrow - 7} * line.outputs ? kNarrow : kWindowBytes;
}

uint64_t placesBytes(int32_t outputs) {
  constexpr std::size_t kOfGroup = kMostWindows * sizeof(int32_t) + kFilterTaps * sizeof(NearWindows);
  return static_cast<uint64_t>(filterGroups(outputs)) * kOfGroup;
}

uint64_t groupBytes(int32_t outputs) {
  return static_cast<uint64_t>(filterGroups(outputs)) * (2 * sizeof(FilterGroup) + sizeof(int32_t));
}

} // namespace

uint64_t filterPlanBytes(const FilterLine &luma, const FilterLine &chroma) {
  return groupBytes(luma.outputs) + groupBytes(chroma.outputs) + placesBytes(luma.outputs) +
         placesBytes(chroma.outputs);
}

FilterPlan makeFilterPlan(const int32_t *table, const FilterLine &luma, const FilterLine &chroma, uint8_t *memory) {
  const int32_t lumaGroups = filterGroups(luma.outputs);
  const int32_t chromaGroups = filterGroups(chroma.outputs);
  Room lumaRoom{};
  Room chromaRoom{};
  lumaRoom.groups = reinterpret_cast<FilterGroup *>(memory);
  chromaRoom.groups = lumaRoom.groups + lumaGroups;
  lumaRoom.inLine = chromaRoom.groups + chromaGroups;
  chromaRoom.inLine = lumaRoom.inLine + lumaGroups;
  lumaRoom.first = reinterpret_cast<int32_t *>(chromaRoom.inLine + chromaGroups);
  chromaRoom.first = lumaRoom.first + lumaGroups;
  lumaRoom.lineBytes = chromaRoom.lineBytes = lineBytes(luma);
  lumaRoom.windows = chromaRoom.first + chromaGroups;
  chromaRoom.windows = lumaRoom.windows + std::ptrdiff_t{lumaGroups} * kMostWindows;
  lumaRoom.near = reinterpret_cast<NearWindows *>(chromaRoom.windows + std::ptrdiff_t{chromaGroups} * kMostWindows);
  chromaRoom.near = lumaRoom.near + std::ptrdiff_t{lumaGroups} * kTaps;
  FilterPlan plan{};
  plan.leading = leadingGroups(table, luma.outputs);
  plan.luma = {lumaRoom.groups, lumaRoom.windows, lumaRoom.near, {lumaRoom.inLine, lumaRoom.first, lumaRoom.lineBytes}};
  plan.chroma = {chromaRoom.groups,
                 chromaRoom.windows,
                 chromaRoom.near,
                 {chromaRoom.inLine, chromaRoom.first, chromaRoom.lineBytes}};
  for (const FilterWindows kind : kKinds) {
    plan.kind = kind;
    if (!makeColumns(table, luma, 0, kind, lumaRoom)) {
      continue;
    }
    plan.common = commonGroups(plan, luma, chroma);
    if (makeColumns(table, chroma, plan.common, kind, chromaRoom)) {
      plan.exists = true;
      return plan;
    }
  }
  return plan;
}

} // namespace zqcc
