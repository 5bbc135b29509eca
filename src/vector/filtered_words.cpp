#include "vector/parted_means.h"
#include "vector/resize_rows.h"
#include "vector/resized_planes.h"
#include "vector/row_stages.h"
#include "vector/scale_rows.h"

namespace zqcc {
namespace {

/// Sampler of 16-bit pixels: the components stand at the top of bytes, red in luma's place.
class WordFilter {
public:
  static constexpr int32_t kColumns = PartedMeans::kColumns;

  // cppcheck-suppress uninitMemberVar ; samples are made before they are read
  WordFilter(const Job &job, const PartedLines &from)
      : means_(job, from, kKinds), yTable_(job.yTable), mostColumns_(PartedMeans::mostColumns(job, from.shift)) {}

  [[nodiscard]] int32_t mostColumns() const { return mostColumns_; }

  void columns(int32_t first, int32_t count) { means_.columns(first, count); }

  void lines(int32_t j, int32_t lineCount, SampleRows (&rows)[2]) {
    const int32_t *entry = yTable_ + j * kEntryWords<kFilterTaps>;
    if (lineCount == 2) {
      means_.twoRows(entry, samples_[0], samples_[1]);
    } else {
      means_.rows(entry, samples_[0]);
    }
    for (int32_t l = 0; l < 2; ++l) {
      rows[l] = {{samples_[l][0], nullptr}, samples_[l][1], samples_[l][2]};
    }
  }

private:
  /// One pair of line weights serves all five taps.
  static constexpr MeanKind kFive{true, false, true, 5};
  static constexpr MeanKind kSix{true, false, true, 6};
  static constexpr MeanKind kKinds[3] = {kFive, kSix, kFive};

  PartedMeans means_;
  alignas(64) uint8_t rows_[2][3][kColumns];
  uint8_t *const samples_[2][3] = {{rows_[0][0], rows_[0][1], rows_[0][2]}, {rows_[1][0], rows_[1][1], rows_[1][2]}};
  const int32_t *yTable_;
  int32_t mostColumns_;
};

} // namespace

bool filterWordsByPlan(const Job &job) {
  const ConvertParams &p = job.params;
  if (p.inWidth < kLeastPixels || !PartedMeans::serve(job)) {
    return false;
  }
  // Pitches count in whole pixels.
  const auto pitchOf = [](int32_t stride) { return std::ptrdiff_t{stride >> 1} * 2; };
  WordFilter sampler(job, {p.inBuf[0], pitchOf(p.inStride), p.inWidth, p.inHeight, 0, RGB565_ROWS.in(job.levels), {}});
  const ResizeStages stages{nullptr, kColourOf<PackRgb>.full, nullptr, kPlaceOf<2>, 2};
  return resizeByRows(sampler, stages, job.levels,
                      {Turn::Upright, p.outWidth, p.outHeight, {p.outBuf[0], pitchOf(p.outStride)}}, *job.matrix);
}

} // namespace zqcc
