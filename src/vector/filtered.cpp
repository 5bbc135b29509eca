#include "vector/filtered.h"

#include "vector/box_rows.h"
#include "vector/filter_samplers.h"
#include "vector/five_point_rows.h"
#include "vector/resize_plan.h"
#include "vector/row_stages.h"

namespace zqcc {
namespace {

ResizeStages stagesOf(const ChromaShifts &shifts, bool isRgb) {
  const ColourStages &colour = isRgb ? kColourOf<PackRgb> : kColourOf<StudioSixBit>;
  ResizeStages stages{nullptr, colour.full, nullptr, kPlaceOf<2>, 2};
  if (shifts.columns > 0) {
    stages.pair = shifts.lines > 0 ? colour.halfPair : nullptr;
    stages.single = colour.half;
  }
  return stages;
}

template <class Rows>
bool filterBy(const Job &job, const MeanPlanes &planes, const ChromaShifts &shifts, bool isRgb) {
  const ConvertParams &p = job.params;
  using Sampler = FilterSampler<Rows>;
  Sampler sampler(job, planes, shifts);
  const SamplerCalls calls{
      &sampler, Rows::mostColumns(job, shifts.columns),
      [](void *self, int32_t first, int32_t count) { static_cast<Sampler *>(self)->columns(first, count); },
      [](void *self, int32_t j, int32_t lineCount, SampleRows(&rows)[2]) {
        static_cast<Sampler *>(self)->lines(j, lineCount, rows);
      }};
  return resizeRows(calls, stagesOf(shifts, isRgb), job.levels,
                    {Turn::Upright, p.outWidth, p.outHeight, {p.outBuf[0], p.outStride}}, *job.matrix);
}

} // namespace

bool filteredByRows(const Job &job, int32_t columnShift, int32_t lineShift, bool isRgb) {
  const ChromaShifts shifts{columnShift, lineShift};
  const MeanPlanes planes(job.params);
  if (job.plan == nullptr) {
    return false;
  }
  if (job.params.antiAlias == 3) {
    BoxRows::Room room;
    for (int i = 0; i < 2; ++i) {
      if (!BoxRows(job, planes.planes[i], i, columnShift, room).exist()) {
        return false;
      }
    }
    return filterBy<BoxRows>(job, planes, shifts, isRgb);
  }
  // A plan is made for lines that do not end before the picture does.
  const bool isPlanned = job.plan->filter.exists && job.params.inStride >= job.params.inWidth;
  return isPlanned && planes.planes[1].limitY > 0 && filterBy<FivePointRows>(job, planes, shifts, isRgb);
}

} // namespace zqcc
