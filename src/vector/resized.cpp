#include "vector/resized.h"

#include "base/job.h"
#include "vector/rgb_samplers.h"
#include "vector/row_stages.h"
#include "vector/yuv_samplers.h"

namespace zqcc {
namespace {

/// Fixed BT.601 by the way that chroma comes; the top bits of RGB.
ResizeStages stagesOf(PlanKind kind) {
  const ChromaRule *rule = chromaRuleOf(kind);
  const ColourStages &colour = rule != nullptr ? kColourOf<StudioSixBit> : kColourOf<PackRgb>;
  ResizeStages stages{nullptr, colour.full, nullptr, kPlaceOf<2>, 2};
  if (rule != nullptr && !rule->perColumn) {
    stages.pair = rule->perLine ? nullptr : colour.halfPair;
    stages.single = colour.half;
  }
  return stages;
}

template <class Sampler>
bool resizeBy(const Job &job, const PlaneView &view, const ResizeTarget &to) {
  Sampler sampler(job, view, scaleStagesOf(job.levels));
  return resizeByRows(sampler, stagesOf(job.plan->kind), job.levels, to, *job.matrix);
}

// Wide chunks measure better wherever pixels are written line by line; what the samplers keep of them stays within
// 48 KB of stack, and in the second-level cache. Turned pixels have a block to share the stack with.

template <template <std::size_t> class Luma>
bool resizeYuvBy(const Job &job, const PlaneView &view, const ResizeTarget &to) {
  return isQuarterTurn(to.turn) ? resizeBy<YuvSampler<Luma, 512>>(job, view, to)
                                : resizeBy<YuvSampler<Luma, 2048>>(job, view, to);
}

bool resizePlanarRgb(const Job &job, const PlaneView &view, const ResizeTarget &to) {
  return isQuarterTurn(to.turn) ? resizeBy<RgbSampler<PlanarComponents, 512>>(job, view, to)
                                : resizeBy<RgbSampler<PlanarComponents, 1024>>(job, view, to);
}

bool resizeRgb24(const Job &job, const PlaneView &view, const ResizeTarget &to) {
  if (job.plan->luma.step != 1) {
    return resizePlanarRgb(job, view, to);
  }
  return isQuarterTurn(to.turn) ? resizeBy<RgbSampler<Rgb24Components, 384>>(job, view, to)
                                : resizeBy<RgbSampler<Rgb24Components, 512>>(job, view, to);
}

/// Components cannot be gathered from words that hold parts of three of them.
bool resizeRgb16(const Job &job, const PlaneView &view, const ResizeTarget &to) {
  if (job.plan->luma.parts == 0) {
    return false;
  }
  if (job.plan->luma.step == 2) {
    return isQuarterTurn(to.turn) ? resizeBy<RgbSampler<WordComponents, 512>>(job, view, to)
                                  : resizeBy<RgbSampler<WordComponents, 1024>>(job, view, to);
  }
  return isQuarterTurn(to.turn) ? resizeBy<RgbSampler<Rgb565Components, 384>>(job, view, to)
                                : resizeBy<RgbSampler<Rgb565Components, 512>>(job, view, to);
}

} // namespace

bool resizeByPlan(const Job &job, const PlaneView &view, Turn turn, const Target &target) {
  const ResizeTarget to{turn, job.params.outWidth, job.params.outHeight, target};
  switch (job.plan->kind) {
  case PlanKind::Pow2:
    return resizeYuvBy<NearestLuma>(job, view, to);
  case PlanKind::General:
  case PlanKind::ThreeQuarters:
  case PlanKind::ThreeHalves:
  case PlanKind::Double:
  case PlanKind::Yuv444:
  case PlanKind::Yuv440:
  case PlanKind::Yuv411:
  case PlanKind::QuarterHeight:
    return resizeYuvBy<BilinearLuma>(job, view, to);
  case PlanKind::Rgb24:
    return resizeRgb24(job, view, to);
  case PlanKind::PlanarRgb:
    return resizePlanarRgb(job, view, to);
  case PlanKind::Rgb16:
  case PlanKind::Rgb16Turned:
    return resizeRgb16(job, view, to);
  default:
    return false;
  }
}

} // namespace zqcc
