#include "vector/resized.h"

#include "vector/bilinear_rows.h"
#include "vector/row_stages.h"

namespace zqcc {
namespace {

/// Chroma rows of two lines, taken as they are. Lines that follow one another often share them.
class PickedChroma {
public:
  PickedChroma(const PlaneView &view, const ResizePlan &plan, PickRow pick)
      : view_(view), plan_(plan.chroma), rule_(*chromaRuleOf(plan.kind)), pick_(pick) {}

  void columns(int32_t first, int32_t count) {
    groups_ = rule_.perColumn ? groupsOf(first, count) : groupsOf(first / 2, (count + 1) / 2);
    lines_[0] = lines_[1] = -1;
  }

  void lines(const TapPair &y, SampleRows (&rows)[2]) {
    for (int l = 0; l < 2; ++l) {
      const int at = rule_.perLine ? l : 0;
      const int32_t line = rule_.line(view_, y, at);
      if (lines_[at] != line) {
        pick_(view_.u + line * view_.cStride, plan_, groups_.first, groups_.count, u_.line[at]);
        pick_(view_.v + line * view_.cStride, plan_, groups_.first, groups_.count, v_.line[at]);
        lines_[at] = line;
      }
      rows[l].u = u_.line[at];
      rows[l].v = v_.line[at];
    }
  }

private:
  const PlaneView &view_;
  const PickPlan &plan_;
  const ChromaRule &rule_;
  PickRow pick_;
  ChunkGroups groups_{};
  int32_t lines_[2] = {-1, -1};
  SampleBuffer u_;
  SampleBuffer v_;
};

/// Bilinear luma and chroma by rule.
class BilinearYuv {
public:
  BilinearYuv(const Job &job, const PlaneView &view, const ScaleStages &stages)
      : job_(job), view_(view), stages_(stages), chroma_(view, *job.plan, stages.pick), y_(lineTaps()) {}

  void columns(int32_t first, int32_t count) {
    groups_ = groupsOf(first, count);
    chroma_.columns(first, count);
    luma_.forget();
    y_ = lineTaps();
  }

  void lines(int32_t /*j*/, int32_t lineCount, SampleRows (&rows)[2]) {
    const TapPair y = y_.next(lineCount);
    const auto fill = [this](int32_t line, int32_t *row) {
      stages_.fill(view_.y + line * view_.yStride, job_.plan->luma, groups_.first, groups_.count, row);
    };
    luma_.mixed(stages_.mix, y.first, groups_.count, samples_.line[0], fill);
    if (lineCount == 2) {
      luma_.mixed(stages_.mix, y.second, groups_.count, samples_.line[1], fill);
    }
    rows[0].y[0] = samples_.line[0];
    rows[0].y[1] = rows[1].y[0] = samples_.line[1];
    chroma_.lines(y, rows);
  }

private:
  [[nodiscard]] LineTaps lineTaps() const { return {job_.yTable, weightingOf(job_.plan->kind)}; }

  const Job &job_;
  const PlaneView &view_;
  ScaleStages stages_;
  PickedChroma chroma_;
  LineTaps y_;
  ChunkGroups groups_{};
  KeptRows luma_;
  SampleBuffer samples_;
};

/// Luma is taken as it is, too.
class PointYuv {
public:
  PointYuv(const Job &job, const PlaneView &view, const ScaleStages &stages)
      : job_(job), view_(view), pick_(stages.pick), chroma_(view, *job.plan, stages.pick), y_(lineTaps()) {}

  void columns(int32_t first, int32_t count) {
    groups_ = groupsOf(first, count);
    chroma_.columns(first, count);
    y_ = lineTaps();
  }

  void lines(int32_t /*j*/, int32_t lineCount, SampleRows (&rows)[2]) {
    const TapPair y = y_.next(lineCount);
    const int32_t line[2] = {y.first.index, y.second.index};
    for (int l = 0; l < lineCount; ++l) {
      pick_(view_.y + line[l] * view_.yStride, job_.plan->picked, groups_.first, groups_.count, samples_.line[l]);
    }
    rows[0].y[0] = samples_.line[0];
    rows[0].y[1] = rows[1].y[0] = samples_.line[1];
    chroma_.lines(y, rows);
  }

private:
  [[nodiscard]] LineTaps lineTaps() const { return {job_.yTable, weightingOf(job_.plan->kind)}; }

  const Job &job_;
  const PlaneView &view_;
  PickRow pick_;
  PickedChroma chroma_;
  LineTaps y_;
  ChunkGroups groups_{};
  SampleBuffer samples_;
};

/// Lines of three planes.
class PlanarLines {
public:
  PlanarLines(const PlaneView &view, const TapPlan &plan, const ScaleStages &stages)
      : plan_(plan), fill_(stages.fill), stride_(view.yStride), planes_{view.y, view.u, view.v} {}

  void columns(const ChunkGroups &groups, int32_t /*outputs*/) { groups_ = groups; }

  void fill(int32_t line, int32_t *const row[3]) const {
    for (int c = 0; c < 3; ++c) {
      fill_(planes_[c] + line * stride_, plan_, groups_.first, groups_.count, row[c]);
    }
  }

private:
  const TapPlan &plan_;
  FillRow fill_;
  std::ptrdiff_t stride_;
  const uint8_t *planes_[3];
  ChunkGroups groups_{};
};

} // namespace

bool resizeByPlan(const Job &job, const PlaneView &view, Turn turn, const Target &target) {
  return false;
}

} // namespace zqcc
