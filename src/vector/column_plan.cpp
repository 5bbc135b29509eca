#include "vector/column_plan.h"

#include "base/table_format.h"

namespace zqcc {
namespace {

/// Outputs of a block: those of one block of 128 bits of bytes.
constexpr int32_t kBlock = 16;
constexpr int32_t kBlocks = kPlanGroup / kBlock;
constexpr uint8_t kNoByte = 0x80;
constexpr int32_t kPairParts = 2; ///< pairs of bytes that 16 outputs are gathered as fill two windows

/// Outputs in whole groups.
std::size_t wholeOutputs(int32_t outputs) {
  return static_cast<std::size_t>(planGroups(outputs)) * kPlanGroup;
}

/// Behind the groups lies what they are made from.
template <class Group>
void *behindGroups(void *memory, int32_t outputs) {
  return static_cast<Group *>(memory) + planGroups(outputs);
}

/// First and last byte of what an output reads.
struct ByteSpan {
  int32_t first;
  int32_t last;
};

struct SpanOfTap {
  const Tap *taps;
  int32_t step;
  int32_t bytes; ///< of a sample
  ByteSpan operator()(int32_t output) const {
    const int32_t first = taps[output].index * step;
    return {first, first + step + bytes - 1};
  }
};

struct SpanOfColumn {
  const int32_t *columns;
  int32_t step;
  ByteSpan operator()(int32_t output) const {
    const int32_t byte = columns[output] * step;
    return {byte, byte};
  }
};

/// Whether a window serves so many neighbouring outputs wherever they begin in the plan.
template <class SpanOf>
bool windowServes(SpanOf spanOf, int32_t neighbours, std::size_t outputs) {
  int32_t widest = 0;
  for (int32_t i = 0; i < static_cast<int32_t>(outputs); i += neighbours) {
    const int32_t bytes = spanOf(i + neighbours - 1).last - spanOf(i).first + 1;
    widest = bytes > widest ? bytes : widest;
  }
  return widest <= kPlanWindow;
}

/// Windows for a block, 0 where none serves.
template <class SpanOf>
int32_t partsFor(SpanOf spanOf, std::size_t outputs, int32_t lineBytes) {
  constexpr int32_t kMostParts = 4;
  if (lineBytes >= kPlanWindow) {
    for (int32_t parts = 1; parts <= kMostParts; parts *= 2) {
      if (windowServes(spanOf, kBlock / parts, outputs)) {
        return parts;
      }
    }
  }
  return 0;
}

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}

/// Bytes of a line.
int32_t bytesOf(PlanLine line) {
  return (line.samples - 1) * line.step + line.bytes;
}

/// Where the windows of a group begin. `first` is its first output.
template <class SpanOf>
void placeWindows(SpanOf spanOf, int32_t first, int32_t parts, int32_t lineBytes, int32_t (&window)[4][kBlocks]) {
  const int32_t neighbours = kBlock / parts;
  for (int32_t part = 0; part < parts; ++part) {
    for (int32_t b = 0; b < kBlocks; ++b) {
      window[part][b] = smaller(spanOf(first + b * kBlock + part * neighbours).first, lineBytes - kPlanWindow);
    }
  }
}

/// The same, with windows whole lanes apart and within reach. False if they do not serve all outputs then.
template <class SpanOf>
bool placeWithinReach(SpanOf spanOf, int32_t first, int32_t parts, int32_t lineBytes, TapGroup &group) {
  const int32_t base = smaller(spanOf(first).first, lineBytes - kPlanReach);
  const int32_t neighbours = kBlock / parts;
  if (base < 0 || parts > 2) {
    return false;
  }
  for (int32_t part = 0; part < parts; ++part) {
    for (int32_t b = 0; b < kBlocks; ++b) {
      const int32_t output = first + b * kBlock + part * neighbours;
      const int32_t from = smaller((spanOf(output).first - base) & ~3, kPlanReach - kPlanWindow);
      if (spanOf(output + neighbours - 1).last - base >= from + kPlanWindow) {
        return false;
      }
      group.window[part][b] = base + from;
    }
  }
  group.base = base;
  return true;
}

void numberLanes(TapGroup &group, int32_t parts) {
  for (int32_t part = 0; part < parts; ++part) {
    for (int32_t lane = 0; lane < 16; ++lane) {
      const int32_t bytes = group.window[part][lane / 4] - group.base;
      group.lane[part][lane] = static_cast<uint32_t>(bytes / 4 + lane % 4);
    }
  }
}

/// Windows into the rows that a group's bytes are gathered in: `parts` windows a block, one behind the other.
void placeGathered(int32_t parts, int32_t (&window)[4][kBlocks]) {
  for (int32_t part = 0; part < parts; ++part) {
    for (int32_t b = 0; b < kBlocks; ++b) {
      window[part][b] = (b * parts + part) * kPlanWindow;
    }
  }
}

/// A tap's entry: byte numbers of the sample and of the next one, and the weights.
void enter(TapGroup &group, int32_t i, int32_t self, int32_t next, int32_t weight, int32_t bytes = 1) {
  const int32_t k = i / 4 % 4;
  const int32_t at = i / kBlock * kBlock + i % 4 * 4;
  uint8_t *mask = group.mask[k] + at;
  mask[0] = static_cast<uint8_t>(self);
  mask[1] = bytes == 1 ? kNoByte : static_cast<uint8_t>(self + 1);
  mask[2] = static_cast<uint8_t>(next);
  mask[3] = bytes == 1 ? kNoByte : static_cast<uint8_t>(next + 1);
  int16_t *weights = group.weight[k] + at / 2;
  weights[0] = static_cast<int16_t>(kWholeWeight - weight);
  weights[1] = static_cast<int16_t>(weight);
}

void fillGroup(TapGroup &group, const Tap *taps, int32_t parts, const PlanLine &line) {
  const int32_t neighbours = kBlock / parts;
  for (int32_t i = 0; i < kPlanGroup; ++i) {
    const int32_t self = taps[i].index * line.step - group.window[i % kBlock / neighbours][i / kBlock];
    enter(group, i, self, self + line.step, taps[i].next, line.bytes);
  }
}

/// The pairs of eight outputs fill a window.
void fillGathered(TapGroup &group, const Tap *taps) {
  placeGathered(kPairParts, group.window);
  for (int32_t i = 0; i < kPlanGroup; ++i) {
    const int32_t self = 2 * i % kPlanWindow;
    enter(group, i, self, self + 1, taps[i].next);
  }
}

void fillGroup(PickGroup &group, const int32_t *columns, int32_t parts, int32_t step) {
  const int32_t neighbours = kBlock / parts;
  for (int32_t i = 0; i < kPlanGroup; ++i) {
    const int32_t own = i % kBlock / neighbours;
    for (int32_t part = 0; part < parts; ++part) {
      group.mask[part][i] = kNoByte;
    }
    group.mask[own][i] = static_cast<uint8_t>(columns[i] * step - group.window[own][i / kBlock]);
  }
}

/// Taps that need no sample behind the last one, and as many as whole groups have.
void completeTaps(Tap *taps, int32_t outputs, int32_t samples) {
  for (int32_t i = outputs - 1; i >= 0 && taps[i].index >= samples - 1; --i) {
    taps[i] = samples > 1 ? Tap{samples - 2, kWholeWeight} : Tap{0, 0};
  }
  for (auto i = static_cast<std::size_t>(outputs); i < wholeOutputs(outputs); ++i) {
    taps[i] = taps[outputs - 1];
  }
}

/// The distance of all columns from the ones before them, 0 if they differ.
int32_t ratioOf(const int32_t *columns, int32_t outputs) {
  const int32_t ratio = outputs > 1 ? columns[1] - columns[0] : 0;
  for (int32_t i = 1; i < outputs; ++i) {
    if (columns[i] - columns[i - 1] != ratio) {
      return 0;
    }
  }
  return ratio;
}

/// Windows never fall, those behind the last output neither.
template <class Plan, class SpanOf>
ByteRange bytesReadBy(const Plan &plan, SpanOf spanOf, int32_t firstGroup, int32_t groups) {
  const int32_t endGroup = firstGroup + groups;
  if (plan.parts == 0) {
    return {spanOf(firstGroup * kPlanGroup).first, spanOf(endGroup * kPlanGroup - 1).last + 1};
  }
  return {plan.groups[firstGroup].window[0][0],
          plan.groups[endGroup - 1].window[plan.parts - 1][kBlocks - 1] + kPlanWindow};
}

} // namespace

std::size_t tapPlanBytes(int32_t outputs) {
  return static_cast<std::size_t>(planGroups(outputs)) * sizeof(TapGroup) + wholeOutputs(outputs) * sizeof(Tap);
}

Tap *planTaps(void *memory, int32_t outputs) {
  return static_cast<Tap *>(behindGroups<TapGroup>(memory, outputs));
}

TapPlan makeTapPlan(void *memory, int32_t outputs, PlanLine line) {
  auto *const groups = static_cast<TapGroup *>(memory);
  Tap *const taps = planTaps(memory, outputs);
  completeTaps(taps, outputs, line.samples);
  line.step = line.samples > 1 ? line.step : 0; // a single sample is its own neighbour
  const SpanOfTap spanOf{taps, line.step, line.bytes};
  const int32_t parts = partsFor(spanOf, wholeOutputs(outputs), bytesOf(line));
  bool withinReach = parts != 0;
  for (int32_t g = 0; g < planGroups(outputs) && withinReach; ++g) {
    withinReach = placeWithinReach(spanOf, g * kPlanGroup, parts, bytesOf(line), groups[g]);
  }
  for (int32_t g = 0; g < planGroups(outputs); ++g) {
    const int32_t first = g * kPlanGroup;
    if (parts == 0) {
      fillGathered(groups[g], taps + first);
      continue;
    }
    if (withinReach) {
      numberLanes(groups[g], parts);
    } else {
      placeWindows(spanOf, first, parts, bytesOf(line), groups[g].window);
    }
    fillGroup(groups[g], taps + first, parts, line);
  }
  return {groups, parts, taps, line.step, withinReach};
}

std::size_t pickPlanBytes(int32_t outputs) {
  return static_cast<std::size_t>(planGroups(outputs)) * sizeof(PickGroup) + wholeOutputs(outputs) * sizeof(int32_t);
}

int32_t *planColumns(void *memory, int32_t outputs) {
  return static_cast<int32_t *>(behindGroups<PickGroup>(memory, outputs));
}

PickPlan makePickPlan(void *memory, int32_t outputs, PlanLine line) {
  auto *const groups = static_cast<PickGroup *>(memory);
  int32_t *const columns = planColumns(memory, outputs);
  for (auto i = static_cast<std::size_t>(outputs); i < wholeOutputs(outputs); ++i) {
    columns[i] = columns[outputs - 1];
  }
  const SpanOfColumn spanOf{columns, line.step};
  const int32_t parts = partsFor(spanOf, wholeOutputs(outputs), bytesOf(line));
  for (int32_t g = 0; parts != 0 && g < planGroups(outputs); ++g) {
    const int32_t first = g * kPlanGroup;
    placeWindows(spanOf, first, parts, bytesOf(line), groups[g].window);
    fillGroup(groups[g], columns + first, parts, line.step);
  }
  return {groups, parts, columns, line.step, ratioOf(columns, outputs)};
}

ByteRange bytesRead(const TapPlan &plan, int32_t firstGroup, int32_t groups) {
  const TapGroup *group = plan.groups + firstGroup;
  if (plan.withinReach) {
    return {group->base, group[groups - 1].base + kPlanReach};
  }
  return bytesReadBy(plan, SpanOfTap{plan.taps, plan.step, 1}, firstGroup, groups);
}

ByteRange bytesRead(const PickPlan &plan, int32_t firstGroup, int32_t groups) {
  return bytesReadBy(plan, SpanOfColumn{plan.columns, plan.step}, firstGroup, groups);
}

} // namespace zqcc
