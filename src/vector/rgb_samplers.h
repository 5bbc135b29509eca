// Samplers of RGB: every component bilinear. Red stands in luma's place, green and blue in chroma's.
#pragma once

#include "base/job.h"
#include "vector/bilinear_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

// How source lines of three components are interpolated: columns() says which groups, fill() makes one line.

template <std::size_t mostColumns>
class PlanarComponents {
public:
  PlanarComponents(const PlaneView &view, const TapPlan &plan, const ScaleStages &stages)
      : plan_(plan), fill_(stages.fill), stride_(view.yStride), planes_{view.y, view.u, view.v} {}

  void columns(const ChunkGroups &groups) { groups_ = groups; }

  void fill(int32_t line, int32_t (&row)[3][mostColumns]) const {
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

/// Pixels become rows of their components first, those of the chunk.
template <int pixelBytes, std::size_t mostColumns>
class FetchedComponents {
public:
  // cppcheck-suppress uninitMemberVar ; samples are fetched before they are read
  FetchedComponents(const PlaneView &view, const TapPlan &plan, const ScaleStages &stages)
      : plan_(plan), fill_(stages.fill), fetch_(pixelBytes == 3 ? stages.fetchRgb24 : stages.fetchRgb565),
        stride_(view.yStride), bytes_(view.v) {}

  void columns(const ChunkGroups &groups) {
    groups_ = groups;
    range_ = bytesRead(plan_, groups.first, groups.count);
  }

  void fill(int32_t line, int32_t (&row)[3][mostColumns]) {
    const uint8_t *from = bytes_ + line * stride_ + std::ptrdiff_t{range_.first} * pixelBytes;
    fetch_({nullptr, nullptr, from}, {samples_[0], samples_[1], samples_[2]}, range_.end - range_.first);
    for (int c = 0; c < 3; ++c) {
      const uint8_t *samples = samples_[c]; // from the first that is taken on
      fill_(samples - range_.first, plan_, groups_.first, groups_.count, row[c]);
    }
  }

private:
  /// Four outputs lie in a window of 16, or the plan does not have samples in rows: source columns of neighbouring
  /// outputs are less than five apart. The last window reaches beyond them.
  static constexpr std::size_t kSamples = 5 * mostColumns + 16;

  const TapPlan &plan_;
  FillRow fill_;
  FetchRows fetch_;
  std::ptrdiff_t stride_;
  const uint8_t *bytes_;
  ChunkGroups groups_{};
  ByteRange range_{};
  alignas(64) uint8_t samples_[3][(kSamples + 63) / 64 * 64];
};

/// 16-bit pixels that windows serve are interpolated as they lie.
template <std::size_t mostColumns>
class WordComponents {
public:
  WordComponents(const PlaneView &view, const TapPlan &plan, const ScaleStages &stages)
      : plan_(plan), fill_(stages.fillWords), stride_(view.yStride), words_(view.v) {}

  void columns(const ChunkGroups &groups) { groups_ = groups; }

  void fill(int32_t line, int32_t (&row)[3][mostColumns]) const {
    int32_t *const rows[3] = {row[0], row[1], row[2]};
    fill_(words_ + line * stride_, plan_, groups_.first, groups_.count, rows);
  }

private:
  const TapPlan &plan_;
  FillWordRows fill_;
  std::ptrdiff_t stride_;
  const uint8_t *words_;
  ChunkGroups groups_{};
};

template <std::size_t mostColumns>
using Rgb24Components = FetchedComponents<3, mostColumns>;
template <std::size_t mostColumns>
using Rgb565Components = FetchedComponents<2, mostColumns>;

template <template <std::size_t> class Components, std::size_t mostColumns>
class RgbSampler {
public:
  static constexpr std::size_t kColumns = mostColumns;

  // cppcheck-suppress uninitMemberVar ; samples are made before they are read
  RgbSampler(const Job &job, const PlaneView &view, const ScaleStages &stages)
      : lineTaps_(job.yTable, weightingOf(job.plan->kind), job.plan->kind == PlanKind::Rgb16Turned), taps_(lineTaps_),
        mix_(stages.mix), components_(view, job.plan->luma, stages) {}

  void columns(int32_t first, int32_t count) {
    groups_ = groupsOf(first, count);
    components_.columns(groups_);
    kept_.forget();
    taps_ = lineTaps_;
  }

  void lines(int32_t /*j*/, int32_t lineCount, SampleRows (&rows)[2]) {
    const TapPair y = taps_.next(lineCount);
    makeLine(y.first, 0);
    if (lineCount == 2) {
      makeLine(y.second, 1);
    }
    for (int l = 0; l < 2; ++l) {
      rows[l] = {{samples_[0].line[l], nullptr}, samples_[1].line[l], samples_[2].line[l]};
    }
  }

private:
  void makeLine(const Tap &y, int l) {
    kept_.mixed(mix_, y, groups_.count, {samples_[0].line[l], samples_[1].line[l], samples_[2].line[l]},
                [this](int32_t line, auto &row) { components_.fill(line, row); });
  }

  const LineTaps lineTaps_; ///< from the first line on
  LineTaps taps_;
  MixRows mix_;
  ChunkGroups groups_{};
  Components<mostColumns> components_;
  KeptRows<3, mostColumns> kept_;
  SampleBuffer<mostColumns> samples_[3];
};

} // namespace zqcc
