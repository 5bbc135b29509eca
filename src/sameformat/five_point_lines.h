// Lines of samples resized by means of five bilinear samples.
#pragma once

#include "base/limits.h"
#include "kernels/five_point.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Where lines of samples that are resized alike come from and go to: the first sample of each picture, and how far
/// lines are apart.
struct LinePath {
  const uint8_t *from;
  std::ptrdiff_t fromPitch;
  uint8_t *to;
  std::ptrdiff_t toPitch;
};

/// Line j of a chunk of `count` samples that are `step` bytes apart. A mean can lie outside 0..255, since its samples
/// can; its low byte is kept.
template <class TapOf>
void resizeLineByFivePoints(const FivePointColumns &columns, const LinePath &path, const int32_t *yTable, int32_t j,
                            TapOf lineTap, int32_t first, int32_t count, std::ptrdiff_t step) {
  FiveSums sums;
  columns.sumLine(path.from, path.fromPitch, yTable + j * kEntryWords<kFilterTaps>, lineTap, WHOLE_SAMPLES, sums);
  uint8_t *to = path.to + j * path.toPitch + first * step;
  for (int32_t i = 0; i < count; ++i, to += step) {
    *to = static_cast<uint8_t>(sums[i] / static_cast<int32_t>(kFilterTaps));
  }
}

} // namespace zqcc
