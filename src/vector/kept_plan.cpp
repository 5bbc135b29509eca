#include "vector/kept_plan.h"

#include "base/limits.h"
#include "base/table_format.h"
#include "kernels/taps.h"

namespace zqcc {
namespace {

constexpr std::size_t kAlignment = 64;

constexpr std::size_t aligned(std::size_t bytes) {
  return (bytes + kAlignment - 1) & ~(kAlignment - 1);
}

/// Outputs of a line, and samples of its source.
struct Line {
  int32_t outputs;
  int32_t samples;
};

Line lumaOf(const ConvertParams &seen) {
  return {seen.outWidth, seen.inWidth};
}

constexpr bool hasPairs(PlanKind kind) {
  return kind == PlanKind::SemiPlanar;
}

/// Packed lines, and upright semi-planar ones, have a sample for a lone last pixel too. Both bytes of a pair are
/// samples.
Line chromaOf(PlanKind kind, const ConvertParams &seen) {
  const int32_t lone = kind == PlanKind::Packed422 || kind == PlanKind::SemiPlanar ? seen.outWidth % 2 : 0;
  const int32_t each = hasPairs(kind) ? 2 : 1;
  return {(seen.outWidth / 2 + lone) * each, seen.inWidth / 2 * each};
}

TapPlan interpolated(const Line &line, const int32_t *xTable, uint8_t *memory) {
  Tap *taps = planTaps(memory, line.outputs);
  const EvenAtEnd tapAt{line.samples}; // luma's taps lie inside its line as they are
  for (int32_t i = 0; i < line.outputs; ++i) {
    const SampleTap tap = tapAt(xTable + i * kTapWords);
    taps[i] = {static_cast<int32_t>(tap.self), tap.weights.next};
  }
  return makeTapPlan(memory, line.outputs, {line.samples, 1});
}

/// Columns behind the last one take that one: chroma has the first half of what is luma's.
PickPlan picked(const Line &line, const int32_t *xTable, std::ptrdiff_t words, uint8_t *memory) {
  int32_t *columns = planColumns(memory, line.outputs);
  for (int32_t i = 0; i < line.outputs; ++i) {
    columns[i] = smaller(xTable[i * words], line.samples - 1);
  }
  return makePickPlan(memory, line.outputs, {line.samples, 1});
}

/// Pair k is that of luma column 2k. Half of its entry is entry k, which turned pairs go by.
PickPlan pickedPairs(const Line &line, const int32_t *xTable, uint8_t *memory) {
  int32_t *columns = planColumns(memory, line.outputs);
  for (int32_t i = 0; i < line.outputs; i += 2) {
    columns[i] = smaller(xTable[i] / 2 * 2, line.samples - 2);
    columns[i + 1] = columns[i] + 1;
  }
  return makePickPlan(memory, line.outputs, {line.samples, 1});
}

constexpr bool isPicked(PlanKind kind) {
  return kind == PlanKind::Planes420Nearest || kind == PlanKind::Planes420Turned || hasPairs(kind);
}

/// Words of the column table for a position.
constexpr std::ptrdiff_t wordsOf(PlanKind kind) {
  return kind == PlanKind::Planes420Nearest ? kTapWords : 1;
}

/// A sample and its neighbour are needed, and outputs for every plane.
bool isPlanned(const Line &chroma) {
  return chroma.samples >= 2 && chroma.outputs > 0;
}

} // namespace

uint64_t keptPlanBytes(PlanKind kind, const ConvertParams &seen) {
  const Line luma = lumaOf(seen);
  const Line chroma = chromaOf(kind, seen);
  if (!isPlanned(chroma)) {
    return 0;
  }
  const auto bytesOf = isPicked(kind) ? pickPlanBytes : tapPlanBytes;
  return uint64_t{aligned(bytesOf(luma.outputs))} + aligned(bytesOf(chroma.outputs));
}

KeptPlan makeKeptPlan(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, uint8_t *memory) {
  const Line luma = lumaOf(seen);
  const Line chroma = chromaOf(kind, seen);
  KeptPlan plan{};
  if (isPicked(kind)) {
    plan.pickedLuma = picked(luma, xTable, wordsOf(kind), memory);
    uint8_t *behind = memory + aligned(pickPlanBytes(luma.outputs));
    plan.pickedChroma =
        hasPairs(kind) ? pickedPairs(chroma, xTable, behind) : picked(chroma, xTable, wordsOf(kind), behind);
  } else {
    plan.luma = interpolated(luma, xTable, memory);
    plan.chroma = interpolated(chroma, xTable, memory + aligned(tapPlanBytes(luma.outputs)));
  }
  return plan;
}

} // namespace zqcc
