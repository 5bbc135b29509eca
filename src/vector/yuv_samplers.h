// Samplers of YUV: luma bilinear or nearest, chroma by its rule.
#pragma once

#include "base/job.h"
#include "vector/bilinear_rows.h"

#include <cstdint>

namespace zqcc {

/// Chroma rows of two lines, taken as they are. Lines that follow one another often share them.
template <std::size_t mostColumns>
class PickedChroma {
public:
  // cppcheck-suppress uninitMemberVar ; rows are made before they are read
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
  SampleBuffer<mostColumns> u_;
  SampleBuffer<mostColumns> v_;
};

// How luma of output lines is made: columns() says which groups, line() makes one line.

template <std::size_t mostColumns>
class BilinearLuma {
public:
  BilinearLuma(const PlaneView &view, const ResizePlan &plan, const ScaleStages &stages)
      : view_(view), plan_(plan.luma), fill_(stages.fill), mix_(stages.mix) {}

  void columns(const ChunkGroups &groups) {
    groups_ = groups;
    kept_.forget();
  }

  void line(const Tap &y, uint8_t *to) {
    kept_.mixed(mix_, y, groups_.count, {to}, [this](int32_t line, auto &row) {
      fill_(view_.y + line * view_.yStride, plan_, groups_.first, groups_.count, row[0]);
    });
  }

private:
  const PlaneView &view_;
  const TapPlan &plan_;
  FillRow fill_;
  MixRows mix_;
  ChunkGroups groups_{};
  KeptRows<1, mostColumns> kept_;
};

template <std::size_t /*mostColumns*/>
class NearestLuma {
public:
  NearestLuma(const PlaneView &view, const ResizePlan &plan, const ScaleStages &stages)
      : view_(view), plan_(plan.picked), pick_(stages.pick) {}

  void columns(const ChunkGroups &groups) { groups_ = groups; }

  void line(const Tap &y, uint8_t *to) const {
    pick_(view_.y + y.index * view_.yStride, plan_, groups_.first, groups_.count, to);
  }

private:
  const PlaneView &view_;
  const PickPlan &plan_;
  PickRow pick_;
  ChunkGroups groups_{};
};

template <template <std::size_t> class Luma, std::size_t mostColumns>
class YuvSampler {
public:
  static constexpr std::size_t kColumns = mostColumns;

  // cppcheck-suppress uninitMemberVar ; samples are made before they are read
  YuvSampler(const Job &job, const PlaneView &view, const ScaleStages &stages)
      : lineTaps_(job.yTable, weightingOf(job.plan->kind)), taps_(lineTaps_), luma_(view, *job.plan, stages),
        chroma_(view, *job.plan, stages.pick) {}

  void columns(int32_t first, int32_t count) {
    luma_.columns(groupsOf(first, count));
    chroma_.columns(first, count);
    taps_ = lineTaps_;
  }

  void lines(int32_t /*j*/, int32_t lineCount, SampleRows (&rows)[2]) {
    const TapPair y = taps_.next(lineCount);
    luma_.line(y.first, samples_.line[0]);
    if (lineCount == 2) {
      luma_.line(y.second, samples_.line[1]);
    }
    rows[0].y[0] = samples_.line[0];
    rows[0].y[1] = rows[1].y[0] = samples_.line[1];
    chroma_.lines(y, rows);
  }

private:
  const LineTaps lineTaps_; ///< from the first line on
  LineTaps taps_;
  Luma<mostColumns> luma_;
  PickedChroma<mostColumns> chroma_;
  SampleBuffer<mostColumns> samples_;
};

} // namespace zqcc
