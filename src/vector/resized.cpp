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

} // namespace

bool resizeByPlan(const Job &job, const PlaneView &view, Turn turn, const Target &target) {
  const ResizeTarget to{turn, job.params.outWidth, job.params.outHeight, target};
  switch (job.plan->kind) {
  case PlanKind::Pow2:
    return resizeBy<YuvSampler<NearestLuma>>(job, view, to);
  case PlanKind::General:
  case PlanKind::ThreeQuarters:
  case PlanKind::ThreeHalves:
  case PlanKind::Double:
  case PlanKind::Yuv444:
  case PlanKind::Yuv440:
  case PlanKind::Yuv411:
  case PlanKind::QuarterHeight:
    return resizeBy<YuvSampler<BilinearLuma>>(job, view, to);
  case PlanKind::Rgb24:
    if (job.plan->luma.step == 1) {
      return resizeBy<RgbSampler<Rgb24Components>>(job, view, to);
    }
    return resizeBy<RgbSampler<PlanarComponents>>(job, view, to);
  case PlanKind::PlanarRgb:
    return resizeBy<RgbSampler<PlanarComponents>>(job, view, to);
  default:
    return false;
  }
}

} // namespace zqcc
