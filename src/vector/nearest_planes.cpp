#include "vector/nearest_planes.h"

#include "vector/picked_block.h"
#include "vector/place16.h"
#include "vector/place8.h"
#include "vector/resize_plan.h"
#include "vector/scale_rows.h"

#include <cstring>

namespace zqcc {
namespace {

/// Samples of a half turn that are picked before they are reversed.
constexpr int32_t kReversed = 512;

/// Output lines that overlap show the order of the stores, which is that of the portable code.
bool overlap(const PickedPlane &plane, int32_t bytes) {
  return plane.toStride < bytes;
}

/// Calls make(line, to) for every output line, of which `step` is the distance; those that have their source in common
/// with the one before are copies of it.
template <class Make>
void makeLines(const PickedPlane &plane, uint8_t *to, std::ptrdiff_t step, int32_t bytes, Make make) {
  const uint8_t *made = nullptr;
  for (int32_t j = 0; j < plane.height; ++j, to += step) {
    const uint8_t *line = plane.lines(j);
    if (line == made) {
      std::memcpy(to, to - step, static_cast<std::size_t>(bytes));
    } else {
      make(line, to);
      made = line;
    }
  }
}

/// Whole groups are picked where they belong, what is left through a buffer. `bytes` are a line's.
bool pickUpright(PickRow pick, const PickPlan &plan, const PickedPlane &plane, int32_t bytes) {
  if (overlap(plane, bytes)) {
    return false;
  }
  const int32_t groups = bytes / kPlanGroup;
  const int32_t left = bytes % kPlanGroup;
  makeLines(plane, plane.to, plane.toStride, bytes, [&](const uint8_t *line, uint8_t *to) {
    pick(line, plan, 0, groups, to);
    if (left > 0) {
      alignas(64) uint8_t group[kPlanGroup];
      pick(line, plan, groups, 1, group);
      std::memcpy(to + groups * kPlanGroup, group, static_cast<std::size_t>(left));
    }
  });
  return true;
}

/// The first line is the output's last, and ends where that does.
bool pickHalfTurn(PickRow pick, ReverseRow reverse, const PickPlan &plan, const PickedPlane &plane) {
  if (overlap(plane, plane.width) || reverse == nullptr || plane.width < kLeastSamples) {
    return false;
  }
  uint8_t *first = plane.to + plane.height * plane.toStride - plane.width;
  makeLines(plane, first, -plane.toStride, plane.width, [&](const uint8_t *line, uint8_t *to) {
    alignas(64) uint8_t samples[kReversed + kPlanGroup];
    int32_t some = 0;
    for (int32_t left = plane.width; left > 0; left -= some) {
      some = left < kReversed + kLeastSamples ? left : kReversed;
      pick(line, plan, (plane.width - left) / kPlanGroup, planGroups(some), samples);
      reverse(samples, to + (left - some), some);
    }
  });
  return true;
}

/// The left turn begins with the output's last line, the right turn with the source's last one.
bool pickQuarterTurn(PickRow pick, const UnitExchange &units, bool left, const PickPlan &plan,
                     const PickedPlane &plane) {
  uint8_t *const to = left ? plane.to + (plane.width - 1) * plane.toStride : plane.to;
  const PickedTurn turn{units, to, left ? -plane.toStride : plane.toStride, plane.width, plane.height};
  if (overlap(plane, plane.height * units.unitBytes) || !isTurnedByBlocks(turn)) {
    return false;
  }
  const int32_t last = plane.height - 1;
  turnPickedLines(
      turn, [&](int32_t line) { return plane.lines(left ? line : last - line); },
      [&](const uint8_t *line, int32_t byte, int32_t bytes, uint8_t *row) {
        pick(line, plan, byte / kPlanGroup, planGroups(bytes), row);
      });
  return true;
}

} // namespace

bool pickPlaneByPlan(const Job &job, Turn turn, PlaneUnit unit, const PickedPlane &plane) {
  const PickRow pick = PICK_ROW.in(job.levels);
  const KeptPlan &kept = job.plan->kept;
  const PickPlan &plan = unit == PlaneUnit::Luma ? kept.pickedLuma : kept.pickedChroma;
  if (pick == nullptr || plane.width <= 0 || plane.height <= 0) {
    return false;
  }
  const bool pairs = unit == PlaneUnit::ChromaPair;
  if (isQuarterTurn(turn)) {
    const TransposeBlock transpose = (pairs ? TRANSPOSE_BLOCK16 : TRANSPOSE_BLOCK8).in(job.levels);
    return pickQuarterTurn(pick, {transpose, pairs ? 2 : 1}, turn == Turn::Left, plan, plane);
  }
  if (turn == Turn::Half) {
    return pickHalfTurn(pick, REVERSE_ROW8.in(job.levels), plan, plane);
  }
  return pickUpright(pick, plan, plane, plane.width);
}

} // namespace zqcc
