#include "vector/resized_planes.h"

#include "base/limits.h"
#include "kernels/taps.h"
#include "vector/bilinear_rows.h"
#include "vector/five_point_rows.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr int kPlanes = 3;

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
  return {p.inBuf[index],      p.inStride >> half, p.inHeight >> half, p.outBuf[index],
          p.outStride >> half, p.outWidth >> half, p.outHeight >> half};
}

// What makes lines of a chunk, kLines of them at a time and one at the end, of the source lines that entries of the
// line table say: whole groups.

class InterpolatedLines {
public:
  static constexpr int32_t kColumns = kMostColumns;
  static constexpr int32_t kGroup = kPlanGroup;
  static constexpr int32_t kLines = 1;
  static constexpr std::ptrdiff_t kWords = kTapWords;

  InterpolatedLines(const Plane &plane, const TapPlan &plan, const ScaleStages &stages)
      : plane_(plane), plan_(plan), stages_(stages), tapAt_{plane.lines} {}

  static int32_t mostColumns() { return kColumns; }

  void columns(int32_t first, int32_t count) {
    groups_ = groupsOf(first, count);
    kept_.forget();
  }

  void make(const int32_t *entry, uint8_t *to) {
    const SampleTap tap = tapAt_(entry);
    const auto fill = [this](int32_t line, auto &row) {
      stages_.fill(plane_.from + line * plane_.fromStride, plan_, groups_.first, groups_.count, row[0]);
    };
    kept_.mixed(stages_.mix, {static_cast<int32_t>(tap.self), tap.weights.next}, groups_.count, {to}, fill);
  }

private:
  const Plane &plane_;
  const TapPlan &plan_;
  const ScaleStages &stages_;
  HeldAtEnd tapAt_;
  ChunkGroups groups_{};
  KeptRows<1, kColumns> kept_;
};

/// The same of a plan whose lines do not lie between samples either.
class NearestLines {
public:
  static constexpr int32_t kColumns = kMostColumns;
  static constexpr int32_t kGroup = kPlanGroup;
  static constexpr int32_t kLines = 1;
  static constexpr std::ptrdiff_t kWords = kTapWords;

  NearestLines(const Plane &plane, const PickPlan &plan, const ScaleStages &stages)
      : plane_(plane), plan_(plan), pick_(stages.pick) {}

  static int32_t mostColumns() { return kColumns; }

  void columns(int32_t first, int32_t count) { groups_ = groupsOf(first, count); }

  void make(const int32_t *entry, uint8_t *to) const {
    pick_(plane_.from + entry[0] * plane_.fromStride, plan_, groups_.first, groups_.count, to);
  }

private:
  const Plane &plane_;
  const PickPlan &plan_;
  PickRow pick_;
  ChunkGroups groups_{};
};

class FilteredLines {
public:
  static constexpr int32_t kColumns = FivePointRows::kColumns;
  static constexpr int32_t kGroup = kFilterGroup;
  static constexpr int32_t kLines = 2;
  static constexpr std::ptrdiff_t kWords = kEntryWords<kFilterTaps>;

  // cppcheck-suppress uninitMemberVar ; windows are laid out before they are read
  FilteredLines(const Job &job, const Plane &plane, int number)
      : rows_(job, {plane.from, plane.fromStride, 0, plane.lines, 0}, number, 1, room_, {true, number > 0}),
        mostColumns_(FivePointRows::mostColumns(job, 1) >> (number > 0 ? 1 : 0)) {}

  FilteredLines(const FilteredLines &) = delete; // rows know where their room is
  FilteredLines &operator=(const FilteredLines &) = delete;

  [[nodiscard]] int32_t mostColumns() const { return mostColumns_; }

  void columns(int32_t first, int32_t count) { rows_.columns(first, count); }
  void make(const int32_t *entry, uint8_t *to) { rows_.row(entry, to); }
  void make(const int32_t *entry, uint8_t *const (&to)[2]) {
    FivePointRows::two(rows_, entry, to[0], rows_, entry + kWords, to[1]);
  }

private:
  FivePointRows::Room room_;
  FivePointRows rows_;
  int32_t mostColumns_;
};

/// Lines whose chunk is no whole number of groups are made in a buffer.
template <class Lines>
void resizePlane(const Plane &plane, const int32_t *yTable, Lines lines) {
  SampleBuffer<Lines::kColumns> samples;
  for (int32_t first = 0; first < plane.width; first += lines.mostColumns()) {
    const int32_t count = smaller(plane.width - first, lines.mostColumns());
    const bool fits = count % Lines::kGroup == 0;
    lines.columns(first, count);
    for (int32_t j = 0; j < plane.height; j += Lines::kLines) {
      uint8_t *line = plane.to + first + j * plane.toStride;
      const bool isWhole = j + Lines::kLines <= plane.height;
      // cppcheck-suppress uninitvar ; lines are made before they are read
      uint8_t *const to[2] = {fits ? line : samples.line[0], fits && isWhole ? line + plane.toStride : samples.line[1]};
      if constexpr (Lines::kLines == 2) {
        isWhole ? lines.make(yTable + j * Lines::kWords, to) : lines.make(yTable + j * Lines::kWords, to[0]);
      } else {
        lines.make(yTable + j * Lines::kWords, to[0]);
      }
      for (int32_t l = 0; !fits && l < (isWhole ? Lines::kLines : 1); ++l) {
        std::memcpy(line + l * plane.toStride, samples.line[l], static_cast<std::size_t>(count));
      }
    }
  }
}

/// Where output lines overlap, the order of the stores shows; it is that of the portable code.
bool isServed(const Plane &plane) {
  return plane.lines >= 2 && plane.toStride >= plane.width;
}

} // namespace

bool resizePlanesByPlan(const Job &job) {
  const ConvertParams &p = job.params;
  const ScaleStages stages = scaleStagesOf(job.levels);
  if (stages.mix == nullptr || !isServed(planeOf(p, 0)) || !isServed(planeOf(p, 1))) {
    return false;
  }
  const KeptPlan &plan = job.plan->kept;
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(p, i);
    if (job.plan->kind == PlanKind::Planes420Nearest) {
      resizePlane(plane, job.yTable, NearestLines(plane, i == 0 ? plan.pickedLuma : plan.pickedChroma, stages));
    } else {
      resizePlane(plane, job.yTable, InterpolatedLines(plane, i == 0 ? plan.luma : plan.chroma, stages));
    }
  }
  return true;
}

bool filterPlanesByPlan(const Job &job) {
  const ConvertParams &p = job.params;
  if (!FivePointRows::serve(job) || !isServed(planeOf(p, 0)) || !isServed(planeOf(p, 1))) {
    return false;
  }
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(p, i);
    resizePlane(plane, job.yTable, FilteredLines(job, plane, i));
  }
  return true;
}

} // namespace zqcc
