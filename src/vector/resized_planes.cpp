#include "vector/resized_planes.h"

#include "base/limits.h"
#include "kernels/taps.h"
#include "vector/bilinear_rows.h"

#include <cstring>

namespace zqcc {
namespace {

struct Plane {
  const uint8_t *from;
  std::ptrdiff_t fromStride;
  int32_t lines; ///< of the source
  uint8_t *to;
  std::ptrdiff_t toStride;
  int32_t width; ///< of the output
  int32_t height;
};

Plane planeOf(const ConvertParams &p, int index) {
  const int half = index > 0 ? 1 : 0;
  return {p.inBuf[index],  p.inStride >> half,  p.inHeight >> half, p.outBuf[index],
          p.outStride >> half, p.outWidth >> half, p.outHeight >> half};
}

/// The way of a plane's lines: all of it, one chunk of columns after the other.
class PlaneResizer {
public:
  explicit PlaneResizer(const ScaleStages &stages) : stages_(stages) {}

  void resize(const Plane &plane, const TapPlan &plan, const int32_t *yTable) {
    for (int32_t first = 0; first < plane.width; first += kChunkColumns) {
      resizeChunk(plane, plan, yTable, first, smaller(plane.width - first, kChunkColumns));
    }
  }

private:
  void resizeChunk(const Plane &plane, const TapPlan &plan, const int32_t *yTable, int32_t first, int32_t count) {
    const ChunkGroups groups = groupsOf(first, count);
    const HeldAtEnd tapAt{plane.lines};
    const bool fits = count % kPlanGroup == 0;
    kept_.forget();
    uint8_t *to = plane.to + first;
    for (int32_t j = 0; j < plane.height; ++j, to += plane.toStride) {
      const SampleTap tap = tapAt(yTable + j * kTapWords);
      kept_.mixed(stages_.mix, {static_cast<int32_t>(tap.self), tap.weights.next}, groups.count,
                  {fits ? to : samples_.line[0]}, [&](int32_t line, auto &row) {
                    stages_.fill(plane.from + line * plane.fromStride, plan, groups.first, groups.count, row[0]);
                  });
      if (!fits) {
        std::memcpy(to, samples_.line[0], static_cast<std::size_t>(count));
      }
    }
  }

  const ScaleStages &stages_;
  KeptRows<1> kept_;
  SampleBuffer samples_;
};

/// Where output lines overlap, the order of the stores shows; it is that of the portable code.
bool isServed(const Plane &plane) {
  return plane.lines >= 2 && plane.toStride >= plane.width;
}

} // namespace

bool resizePlanesByPlan(const Job &job) {
  constexpr int kPlanes = 3;
  const ConvertParams &p = job.params;
  if (!isServed(planeOf(p, 0)) || !isServed(planeOf(p, 1))) {
    return false;
  }
  const ScaleStages stages = scaleStagesOf(job.levels);
  PlaneResizer resizer(stages);
  for (int i = 0; i < kPlanes; ++i) {
    resizer.resize(planeOf(p, i), i == 0 ? job.plan->luma : job.plan->chromaTaps, job.yTable);
  }
  return true;
}

} // namespace zqcc
