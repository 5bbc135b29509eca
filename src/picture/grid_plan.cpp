#include "picture/grid_plan.h"

#include "zqPicture.h"

namespace zqp {
namespace {

bool isTaken(const Axis &axis) {
  return axis.sampling() == Sampling::Same || axis.sampling() == Sampling::Nearest;
}

bool isMixed(const Axis &axis) {
  return axis.sampling() == Sampling::Same || axis.sampling() == Sampling::Bilinear;
}

std::size_t countOf(int32_t count) {
  return static_cast<std::size_t>(count);
}

/// Output `k` of the padded grid, in the axis.
int32_t unpadded(const GridPlan &grid, int32_t k) {
  return k < grid.padding ? 0 : k - grid.padding;
}

void planPicked(GridPlan &grid, Arena &arena) {
  auto *at = arena.take<int32_t>(countOf(grid.outputs));
  grid.at = at;
  if (at == nullptr) {
    return;
  }
  grid.isDoubling = true;
  for (int32_t k = 0; k < grid.outputs; ++k) {
    at[k] = grid.columns.nearest(unpadded(grid, k));
    grid.isDoubling = grid.isDoubling && at[k] == k / 2;
  }
}

void planLerp(GridPlan &grid, Arena &arena) {
  auto *columns = arena.take<Lerp>(countOf(grid.outputs));
  auto *layout = arena.take<uint8_t>(lerpLayoutBytes(grid.outputs));
  grid.lerp = {columns, grid.outputs, layout};
  if (columns == nullptr) {
    return;
  }
  for (int32_t k = 0; k < grid.outputs; ++k) {
    columns[k] = grid.columns.lerp(unpadded(grid, k));
  }
  layOutLerp(columns, grid.outputs, grid.columns.samples(), layout);
}

/// The taps of all outputs of an axis; `padding` as a grid has it.
TapColumns tapsOf(const Axis &axis, int32_t outputs, int32_t padding, Arena &arena) {
  auto *taps = arena.take<Taps>(countOf(outputs));
  std::size_t weightCount = 0;
  for (int32_t k = 0; k < outputs; ++k) {
    weightCount += countOf(axis.taps(k < padding ? 0 : k - padding, nullptr).count);
  }
  auto *weights = arena.take<int32_t>(weightCount);
  if (taps != nullptr) {
    int32_t used = 0;
    for (int32_t k = 0; k < outputs; ++k) {
      taps[k] = axis.taps(k < padding ? 0 : k - padding, weights + used);
      taps[k].weight = used;
      used += taps[k].count;
    }
  }
  return {taps, weights, outputs, nullptr};
}

void planTaps(GridPlan &grid, Arena &arena) {
  grid.lineTaps = tapsOf(grid.lines, grid.lines.outputs(), 0, arena);
  for (int32_t j = 0; grid.lineTaps.columns != nullptr && j < grid.lineTaps.count; ++j) {
    const int32_t lines = grid.lineTaps.columns[j].count;
    grid.mostLines = lines > grid.mostLines ? lines : grid.mostLines;
  }
  if (grid.keepsColumns) {
    return;
  }
  grid.taps = tapsOf(grid.columns, grid.outputs, grid.padding, arena);
  auto *layout = arena.take<uint8_t>(tapLayoutBytes(grid.outputs));
  grid.taps.layout = layout;
  if (layout != nullptr) {
    layOutTaps(grid.taps.columns, grid.taps.weights, grid.outputs, grid.columns.samples(), layout);
  }
}

Span between(int32_t first, int32_t last) {
  return {first, last - first + 1};
}

} // namespace

GridPlan gridPlan(const Axis &columns, const Axis &lines, int32_t filter) {
  Way way = Way::Taps;
  if (isTaken(columns) && isTaken(lines)) {
    way = Way::Bytes;
  } else if (isMixed(columns) && isMixed(lines) && filter != ZQP_FILTER_AREA) {
    way = Way::Lerp;
  }
  return {way, false, false, false, 0, columns, lines, 0, false, false, 0, nullptr, {}, {}, {}, 0};
}

void plan(GridPlan &grid, Arena &arena) {
  grid.outputs = grid.columns.outputs() + grid.padding;
  grid.keepsColumns = grid.columns.sampling() == Sampling::Same && grid.padding == 0;
  if (grid.way == Way::Taps) {
    planTaps(grid, arena);
  } else if (grid.way == Way::Lerp && !grid.keepsColumns) {
    planLerp(grid, arena);
  } else if (grid.way == Way::Bytes && !grid.keepsColumns) {
    planPicked(grid, arena);
  }
}

Span united(const Span &a, const Span &b) {
  if (a.count == 0 || b.count == 0) {
    return a.count == 0 ? b : a;
  }
  const int32_t first = a.first < b.first ? a.first : b.first;
  const int32_t endOfA = a.first + a.count;
  const int32_t endOfB = b.first + b.count;
  return {first, (endOfA > endOfB ? endOfA : endOfB) - first};
}

Span spanOf(const GridPlan &grid, const Part &part) {
  const int32_t last = part.first + part.count - 1;
  if (!grid.isUsed || grid.way == Way::Middle || part.count == 0) {
    return {0, 0};
  }
  if (grid.keepsColumns) {
    return between(part.first, last);
  }
  if (grid.way == Way::Bytes) {
    return between(grid.at[part.first], grid.at[last]);
  }
  if (grid.way == Way::Lerp) {
    const Lerp &end = grid.lerp.columns[last];
    return between(grid.lerp.columns[part.first].at, end.at + (end.next != 0 ? 1 : 0));
  }
  const Taps &end = grid.taps.columns[last];
  return between(grid.taps.columns[part.first].first, end.first + end.count - 1);
}

} // namespace zqp
