#include "vector/resize_plan.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "base/table_format.h"
#include "kernels/layouts.h"

#include <new>

namespace zqcc {
namespace {

constexpr std::size_t kAlignment = 64;

constexpr uint64_t aligned(uint64_t bytes) {
  return (bytes + kAlignment - 1) & ~uint64_t{kAlignment - 1};
}

template <class Rule>
constexpr ChromaRule kRule{Rule::column, Rule::line, Rule::kPerColumn, Rule::kPerLine};

/// Doubling: outputs at odd places stand between two samples, wherever the table's numbers have lost that.
struct DoubleWeights {
  static Tap tap(const int32_t *words, int32_t i) { return {words[0], i % 2 == 0 ? 0 : kWholeWeight / 2}; }
};

/// Whether a plan pays with the first frame. Portable code is as fast where rows leave most of a group empty, where few
/// lines share what is made for a column, and for pictures so small that the calls show.
bool isWorthAPlan(const ConvertParams &seen) {
  constexpr int32_t kColumns = 16;
  constexpr int32_t kLines = 4;
  constexpr int64_t kPixels = 512;
  return seen.outWidth >= kColumns && seen.outHeight >= kLines && int64_t{seen.outWidth} * seen.outHeight >= kPixels;
}

/// What a plan is made of.
struct Parts {
  bool interpolated; ///< luma, or every plane of RGB
  bool picked;       ///< luma
  int32_t chroma;    ///< outputs of chroma that is taken as it is
  int32_t samples;   ///< of a chroma line
};

int32_t chromaSamples(PlanKind kind, const ConvertParams &seen) {
  switch (kind) {
  case PlanKind::Yuv411:
    return seen.inWidth / 4;
  case PlanKind::Yuv444:
  case PlanKind::Yuv440:
  case PlanKind::QuarterHeight:
    return seen.inWidth;
  default:
    return seen.inWidth / 2;
  }
}

Parts partsOf(PlanKind kind, const ConvertParams &seen) {
  const ChromaRule *rule = chromaRuleOf(kind);
  if (kind == PlanKind::RunLength) {
    const int32_t samples = chromaSamples(kind, seen);
    // Picks are no gain where not even chroma lines fill a window.
    return samples >= kPlanWindow ? Parts{false, true, seen.outWidth, samples} : Parts{};
  }
  if (rule == nullptr) {
    const bool rgb = kind == PlanKind::PlanarRgb || kind == PlanKind::Rgb24 || kind == PlanKind::Rgb16 ||
                     kind == PlanKind::Rgb16Turned;
    return {rgb, false, 0, 0};
  }
  const int32_t samples = chromaSamples(kind, seen);
  if (samples == 0) {
    return {}; // frames of this size are refused
  }
  const int32_t outputs = rule->perColumn ? seen.outWidth : seen.outWidth / 2 + seen.outWidth % 2;
  return {kind != PlanKind::Pow2, kind == PlanKind::Pow2, outputs, samples};
}

/// Hands out the memory of a plan piece by piece.
class Pieces {
public:
  explicit Pieces(uint8_t *memory) : next_(memory + aligned(sizeof(ResizePlan))) {}

  uint8_t *take(std::size_t bytes) {
    uint8_t *piece = next_;
    next_ += aligned(bytes);
    return piece;
  }

private:
  uint8_t *next_;
};

/// Calls use(i, tap) for every output.
template <class Use>
void forEachTap(const int32_t *table, int32_t outputs, Weighting weighting, Use use) {
  forEachGroup(table, outputs, [&](const TableGroup &group, int32_t first) {
    for (int32_t i = 0; i < group.count; ++i) {
      use(first + i, weighting(group.tap(i), i));
    }
  });
}

TapPlan interpolated(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, Pieces &pieces) {
  uint8_t *memory = pieces.take(tapPlanBytes(seen.outWidth));
  Tap *taps = planTaps(memory, seen.outWidth);
  forEachTap(xTable, seen.outWidth, weightingOf(kind), [&](int32_t i, const Tap &tap) { taps[i] = tap; });
  if (kind == PlanKind::Rgb16 || kind == PlanKind::Rgb16Turned) {
    const TapPlan words = makeTapPlan(memory, seen.outWidth, {seen.inWidth, 2, 2});
    if (words.parts != 0) {
      return words;
    }
  }
  const TapPlan plan = makeTapPlan(memory, seen.outWidth, {seen.inWidth, 1});
  // Rows of a component are fetched from bytes of RGB24 unless so much of a line would go unused.
  return kind == PlanKind::Rgb24 && plan.parts == 0 ? makeTapPlan(memory, seen.outWidth, {seen.inWidth, 3}) : plan;
}

/// The column of a word of a run-length table.
constexpr int32_t runColumn(int32_t word) {
  return static_cast<int32_t>(static_cast<uint32_t>(word) >> kRunColumnShift);
}

PickPlan picked(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, Pieces &pieces) {
  uint8_t *memory = pieces.take(pickPlanBytes(seen.outWidth));
  int32_t *columns = planColumns(memory, seen.outWidth);
  if (kind == PlanKind::RunLength) {
    for (int32_t i = 0; i < seen.outWidth; ++i) {
      columns[i] = runColumn(xTable[i]);
    }
  } else {
    forEachTap(xTable, seen.outWidth, TableWeights::tap, [&](int32_t i, const Tap &tap) { columns[i] = tap.index; });
  }
  return makePickPlan(memory, seen.outWidth, {seen.inWidth, 1});
}

/// A pair of columns that share a sample has it from both of them; a lone last column is its own partner.
void chromaColumns(const ChromaRule &rule, int32_t samples, int32_t outWidth, const int32_t *xTable, int32_t *columns) {
  PlaneView view{};
  view.lastColumn = samples - 1;
  int32_t even = 0;
  forEachTap(xTable, outWidth, TableWeights::tap, [&](int32_t i, const Tap &tap) {
    if (rule.perColumn) {
      columns[i] = rule.column(view, tap.index, 0);
    } else if (i % 2 == 0) {
      even = tap.index;
      columns[i / 2] = rule.column(view, even, even);
    } else {
      columns[i / 2] = rule.column(view, even, tap.index);
    }
  });
}

/// Every column has its own sample of chroma lines that are half as long as luma's. Columns behind the last sample take
/// that one.
void halfColumns(int32_t samples, int32_t outWidth, const int32_t *xTable, int32_t *columns) {
  for (int32_t i = 0; i < outWidth; ++i) {
    columns[i] = smaller(runColumn(xTable[i]) / 2, samples - 1);
  }
}

/// The lines of five-point means. Columns of 4:2:2 chroma end at the pitch of two lines, which no tap reaches.
struct FilterLines {
  FilterLine luma;
  FilterLine chroma;
};

/// Kinds that read filtered tables.
constexpr bool isFiltered(PlanKind kind) {
  return kind == PlanKind::FivePoint || kind == PlanKind::FilteredPlanes420 || kind == PlanKind::FilteredPacked422 ||
         kind == PlanKind::FilteredRgb16;
}

/// The lines of pictures that keep their type: all of the samples, and no more. Packed ones have chroma for a lone last
/// pixel too.
FilterLines keptFilterLines(PlanKind kind, const ConvertParams &seen) {
  const FilterLine luma{seen.outWidth, seen.inWidth, seen.inWidth};
  if (kind == PlanKind::FilteredRgb16) {
    return {luma, luma}; // of each component
  }
  const int32_t lone = kind == PlanKind::FilteredPacked422 ? seen.outWidth % 2 : 0;
  return {luma, {seen.outWidth / 2 + lone, seen.inWidth / 2, seen.inWidth / 2, true}};
}

FilterLines filterLines(PlanKind kind, const ConvertParams &seen) {
  if (kind != PlanKind::FivePoint) {
    return keptFilterLines(kind, seen);
  }
  const auto outputs = [&seen](int shift) {
    return (seen.outWidth >> shift) + (seen.outWidth % (1 << shift) != 0 ? 1 : 0);
  };
  const int32_t columns = chromaShape(seen.inType, seen.inWidth, seen.inHeight, seen.inStride).columns;
  const FilterLine luma{seen.outWidth, seen.inWidth, seen.inWidth};
  if (isPlanar422(seen.inType)) {
    return {luma, {outputs(1), 2 * columns, INT32_MAX}};
  }
  const int shift = columns == seen.inWidth ? 0 : (seen.inType == COLOR_YUV411_PLANAR ? 2 : 1);
  return {luma, {outputs(shift), columns, columns}};
}

void makeParts(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, Pieces &pieces, ResizePlan &plan) {
  const Parts parts = partsOf(kind, seen);
  if (parts.interpolated) {
    plan.luma = interpolated(kind, seen, xTable, pieces);
  }
  if (parts.picked) {
    plan.picked = picked(kind, seen, xTable, pieces);
  }
  if (parts.chroma > 0) {
    uint8_t *chroma = pieces.take(pickPlanBytes(parts.chroma));
    int32_t *columns = planColumns(chroma, parts.chroma);
    if (kind == PlanKind::RunLength) {
      halfColumns(parts.samples, seen.outWidth, xTable, columns);
    } else {
      chromaColumns(*chromaRuleOf(kind), parts.samples, seen.outWidth, xTable, columns);
    }
    plan.chroma = makePickPlan(chroma, parts.chroma, {parts.samples, 1});
  }
}

} // namespace

Weighting weightingOf(PlanKind kind) {
  switch (kind) {
  case PlanKind::ThreeQuarters:
    return ThreeQuarterWeights::tap;
  case PlanKind::ThreeHalves:
    return ThreeHalfWeights::tap;
  case PlanKind::Double:
    return DoubleWeights::tap;
  default:
    return TableWeights::tap;
  }
}

const ChromaRule *chromaRuleOf(PlanKind kind) {
  switch (kind) {
  case PlanKind::General:
  case PlanKind::Pow2:
  case PlanKind::ThreeQuarters:
  case PlanKind::ThreeHalves:
  case PlanKind::Double:
    return &kRule<QuadChroma>;
  case PlanKind::Yuv444:
    return &kRule<FullChroma>;
  case PlanKind::Yuv440:
    return &kRule<HalfHeightChroma>;
  case PlanKind::Yuv411:
    return &kRule<QuarterWidthChroma>;
  case PlanKind::QuarterHeight:
    return &kRule<QuarterHeightChroma>;
  default:
    return nullptr;
  }
}

uint64_t resizePlanBytes(PlanKind kind, const ConvertParams &seen) {
  if (kind == PlanKind::None || !isWorthAPlan(seen)) {
    return 0;
  }
  if (keepsType(kind)) {
    const uint64_t bytes = keptPlanBytes(kind, seen);
    return bytes == 0 ? 0 : bytes + aligned(sizeof(ResizePlan));
  }
  if (isFiltered(kind)) {
    const FilterLines lines = filterLines(kind, seen);
    return aligned(sizeof(ResizePlan)) + filterPlanBytes(lines.luma, lines.chroma);
  }
  if (kind == PlanKind::Box) {
    return aligned(sizeof(ResizePlan)); // the table says all, but small pictures have no plan
  }
  const Parts parts = partsOf(kind, seen);
  uint64_t bytes = 0;
  bytes += parts.interpolated ? aligned(tapPlanBytes(seen.outWidth)) : 0;
  bytes += parts.picked ? aligned(pickPlanBytes(seen.outWidth)) : 0;
  bytes += parts.chroma > 0 ? aligned(pickPlanBytes(parts.chroma)) : 0;
  return bytes == 0 ? 0 : bytes + aligned(sizeof(ResizePlan));
}

void buildResizePlan(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, uint8_t *memory) {
  ResizePlan plan{kind, {}, {}, {}, {}, {}};
  Pieces pieces(memory);
  if (keepsType(kind)) {
    plan.kept = makeKeptPlan(kind, seen, xTable, pieces.take(0));
  } else if (isFiltered(kind)) {
    const FilterLines lines = filterLines(kind, seen);
    plan.filter = makeFilterPlan(xTable, lines.luma, lines.chroma, pieces.take(0));
  } else {
    makeParts(kind, seen, xTable, pieces, plan);
  }
  ::new (memory) ResizePlan(plan);
}

} // namespace zqcc
