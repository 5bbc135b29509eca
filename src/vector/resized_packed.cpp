#include "base/limits.h"
#include "kernels/taps.h"
#include "tables/packed_layout.h"
#include "vector/bilinear_rows.h"
#include "vector/fetch.h"
#include "vector/packed_rows.h"
#include "vector/resized_planes.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr int32_t kChunkMacropixels = kChunkColumns / 2;

/// Macropixels of the source that a chunk is made of at most: see the samples of RGB pixels that are fetched.
constexpr int32_t kSourceMacropixels = (5 * kChunkColumns + 2 * kPlanWindow) / 2;

/// Packed 4:2:2 of even input width, bilinear: source lines are parted into rows of luma and of both chroma samples,
/// rows of these are mixed, and what comes out is put together again.
class PackedResizer {
public:
  explicit PackedResizer(const Job &job)
      : p_(job.params), plan_(*job.plan), yTable_(job.yTable), bytes_(packedLayout(job.packedVariant)),
        stages_(scaleStagesOf(job.levels)), store_(STORE_MACROPIXELS.in(job.levels)),
        fetch_((bytes_.isSwapped() ? SWAPPED_PACKED_ROWS : PACKED_ROWS).in(job.levels)) {}

  void resize() {
    for (int32_t first = 0; first < p_.outWidth; first += kChunkColumns) {
      resizeChunk(first, smaller(p_.outWidth - first, kChunkColumns));
    }
  }

private:
  /// Groups of luma's plan and of chroma's, and the macropixels that both read.
  void beginChunk(int32_t first, int32_t count) {
    luma_ = groupsOf(first, count);
    chroma_ = groupsOf(first / 2, (count + 1) / 2);
    const ByteRange luma = bytesRead(plan_.luma, luma_.first, luma_.count);
    const ByteRange chroma = bytesRead(plan_.chromaTaps, chroma_.first, chroma_.count);
    first_ = smaller(luma.first / 2, chroma.first);
    const int32_t end = larger((luma.end + 1) / 2, chroma.end);
    // Not fewer than the stage can do; the line has as many.
    first_ = smaller(first_, p_.inWidth / 2 - kLeastPixels / 2);
    end_ = larger(end, first_ + kLeastPixels / 2);
    lumaRows_.forget();
    chromaRows_.forget();
  }

  void resizeChunk(int32_t first, int32_t count) {
    beginChunk(first, count);
    uint8_t *to = p_.outBuf[0] + std::ptrdiff_t{first} * 2;
    for (int32_t j = 0; j < p_.outHeight; ++j, to += p_.outStride) {
      const SampleTap tap = AsBuilt{}(yTable_ + j * kTapWords);
      makeRows({static_cast<int32_t>(tap.self), tap.weights.next});
      storeLine(count, to);
    }
  }

  void makeRows(const Tap &y) {
    const auto fillLuma = [this](int32_t line, auto &row) {
      part(line);
      stages_.fill(source_.y - 2 * first_, plan_.luma, luma_.first, luma_.count, row[0]);
    };
    const auto fillChroma = [this](int32_t line, auto &row) {
      part(line);
      stages_.fill(source_.u - first_, plan_.chromaTaps, chroma_.first, chroma_.count, row[0]);
      stages_.fill(source_.v - first_, plan_.chromaTaps, chroma_.first, chroma_.count, row[1]);
    };
    lumaRows_.mixed(stages_.mix, y, luma_.count, {mixed_.y}, fillLuma);
    chromaRows_.mixed(stages_.mix, y, chroma_.count, {mixed_.u, mixed_.v}, fillChroma);
  }

  uint8_t *x;
};

} // namespace
} // namespace zqcc
