// Which bytes of a source line every output column is made of, laid out as vector code reads it: windows of 16 bytes
// and the numbers of the bytes in them. Plans are made at set-up by portable code and serve every level.
#pragma once

#include "kernels/tap_pairs.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Outputs that a group of a plan stands for; the last group may be cut short.
inline constexpr int32_t kPlanGroup = 64;

/// Bytes of a window, and outputs of a block of 128 bits of bytes.
inline constexpr int32_t kPlanWindow = 16;

constexpr int32_t planGroups(int32_t outputs) {
  return outputs / kPlanGroup + (outputs % kPlanGroup != 0 ? 1 : 0);
}

/// Bytes that two of the widest vectors read one behind the other.
inline constexpr int32_t kPlanReach = 128;

/// Interpolation: two bytes and their weights for an output. Output 16 b + 4 k + i of a group stands in block b, lane i
/// of vector k, so that narrowing within blocks brings outputs into their order. What stands for outputs behind the
/// last one reads nothing and weighs nothing.
struct alignas(64) TapGroup {
  uint8_t mask[4][64];   ///< [k][16 b + 4 i]: number of the byte in its window, 0x80, that of the next one, 0x80
  int16_t weight[4][32]; ///< [k][8 b + 2 i]: 1024 - next, next
  int32_t window[4][4];  ///< [part][b]: first byte of the window in the line
  /// Of a plan within reach: where kPlanReach bytes begin, and windows as 32-bit lanes of them, [part][4 b + i].
  uint32_t lane[2][16];
  int32_t base;
};

/// Every pointer is into the memory that the plan was made in.
struct TapPlan {
  const TapGroup *groups;
  /// Windows that serve the 16 outputs of a block: 1, 2 or 4; the part of vector k is k * parts / 4. 0 where not even
  /// four outputs lie in a window, or lines are shorter than one: pairs of bytes are gathered by `taps` then, into rows
  /// of pairs that the windows point into.
  int32_t parts;
  const Tap *taps; ///< of every output, and of what stands behind the last one
  int32_t step;    ///< distance of neighbouring samples in bytes
  /// There are one or two parts, and the windows of every group lie within kPlanReach bytes of the line, whole lanes of
  /// 32 bits apart: they can be taken out of vectors.
  bool withinReach;
};

/// Nearest samples: one byte for an output.
struct alignas(64) PickGroup {
  uint8_t mask[4][64];  ///< [part][16 b + i]: number of the byte in its window, 0x80 for the outputs of other parts
  int32_t window[4][4]; ///< [part][b]: first byte of the window in the line
};

struct PickPlan {
  const PickGroup *groups;
  int32_t parts; ///< windows that serve the 16 outputs of a block: 1, 2 or 4; 0 where bytes are gathered by `columns`
  const int32_t *columns;
  int32_t step;
  int32_t ratio; ///< columns are this far apart, all of them; 0 if they are not
};

/// The lines that a plan is made for. `step` is the distance of neighbouring samples in bytes.
struct PlanLine {
  int32_t samples;
  int32_t step;
  int32_t bytes = 1; ///< of a sample: 2 for words, which lie side by side and are not gathered
};

// A plan is made in memory of its caller's, which begins at a multiple of 64 bytes. The caller writes what every output
// is made of to the place in that memory that planTaps or planColumns names, and has the plan made from there. Samples
// lie inside the line, 0 <= index < samples, and never fall. Of a tap at the last sample, whatever its weights, the
// sample alone counts.

std::size_t tapPlanBytes(int32_t outputs);
Tap *planTaps(void *memory, int32_t outputs);
TapPlan makeTapPlan(void *memory, int32_t outputs, PlanLine line);

std::size_t pickPlanBytes(int32_t outputs);
int32_t *planColumns(void *memory, int32_t outputs);
PickPlan makePickPlan(void *memory, int32_t outputs, PlanLine line);

/// Bytes [first, end) of a line.
struct ByteRange {
  int32_t first;
  int32_t end;
};

/// What stages read of a line for groups [firstGroup, firstGroup + groups), for callers that make that part of the line
/// themselves. Stages are then given the address where the first byte of the line would be.
ByteRange bytesRead(const TapPlan &plan, int32_t firstGroup, int32_t groups);
ByteRange bytesRead(const PickPlan &plan, int32_t firstGroup, int32_t groups);

} // namespace zqcc
