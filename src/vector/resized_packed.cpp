#include "base/limits.h"
#include "kernels/taps.h"
#include "tables/packed_layout.h"
#include "vector/bilinear_rows.h"
#include "vector/fetch.h"
#include "vector/packed_store.h"
#include "vector/parted_means.h"
#include "vector/resized_planes.h"

#include <cstring>

namespace zqcc {
namespace {

/// Columns of a bilinear chunk: wide ones measure better, see resized.cpp.
constexpr int32_t kPackedChunk = 1024;

/// Source pixels of a chunk at most: taps are less than five columns apart, windows reach beyond the last ones, and the
/// ranges of luma and chroma may begin and end at different places.
constexpr int32_t kSourcePixels = (5 * kPackedChunk + 4 * kPlanWindow + 63) / 64 * 64;

/// Fewest macropixels that stages make or part.
constexpr int32_t kLeastMacropixels = kLeastPixels / 2;

/// Rows of a chunk of the output, and how they become macropixels.
class MacropixelLines {
public:
  static constexpr int32_t kColumns = larger(kPackedChunk, PartedMeans::kColumns);

  // cppcheck-suppress uninitMemberVar ; samples are made before they are read
  explicit MacropixelLines(const Job &job)
      : p_(job.params), bytes_(packedLayout(job.packedVariant)), store_(STORE_MACROPIXELS.in(job.levels)) {}

  /// Nothing is sampled for the place beside a lone last pixel: its luma is 0, as far as the line has room for it.
  void store(int32_t count, uint8_t *to) {
    if (count % 2 != 0) {
      y[count] = 0;
    }
    const bool uFirst = bytes_.u < bytes_.v;
    const MacropixelRows rows{y, uFirst ? u : v, uFirst ? v : u};
    const MacropixelBytes order{bytes_.firstLuma() != 0, bytes_.isSwapped()};
    const int32_t macropixels = (count + 1) / 2;
    if (count % 2 == 0 && macropixels >= kLeastMacropixels) {
      store_(rows, order, to, macropixels);
      return;
    }
    uint8_t line[2 * kColumns + kMacropixelBytes];
    store_(rows, order, line, larger(macropixels, kLeastMacropixels));
    const bool cut = count % 2 != 0 && p_.outStride < (p_.outWidth + 1) * 2;
    std::memcpy(to, line, static_cast<std::size_t>(macropixels * kMacropixelBytes - (cut ? 2 : 0)));
  }

  alignas(64) uint8_t y[kColumns];
  alignas(64) uint8_t u[kColumns / 2];
  alignas(64) uint8_t v[kColumns / 2];

private:
  const ConvertParams &p_;
  PackedLayout bytes_;
  StoreMacropixels store_;
};

FetchRows partingOf(const Job &job) {
  return (packedLayout(job.packedVariant).isSwapped() ? SWAPPED_PACKED_ROWS : PACKED_ROWS).in(job.levels);
}

struct Samples {
  alignas(64) uint8_t y[kSourcePixels];
  alignas(64) uint8_t u[kSourcePixels / 2];
  alignas(64) uint8_t v[kSourcePixels / 2];
};

/// Source lines are parted into rows of luma and of both chroma samples; rows of these are interpolated and mixed, and
/// put together again.
class PackedResizer {
public:
  // cppcheck-suppress uninitMemberVar ; samples are made before they are read
  explicit PackedResizer(const Job &job)
      : p_(job.params), plan_(job.plan->kept), bytes_(packedLayout(job.packedVariant)),
        stages_(scaleStagesOf(job.levels)), part_(partingOf(job)), made_(job) {}

  void resize(const int32_t *yTable) {
    for (int32_t first = 0; first < p_.outWidth; first += kPackedChunk) {
      const int32_t count = smaller(p_.outWidth - first, kPackedChunk);
      beginChunk(first, count);
      uint8_t *to = p_.outBuf[0] + std::ptrdiff_t{first} * 2;
      for (int32_t j = 0; j < p_.outHeight; ++j, to += p_.outStride) {
        const SampleTap tap = AsBuilt{}(yTable + j * kTapWords);
        makeRows({static_cast<int32_t>(tap.self), tap.weights.next});
        made_.store(count, to);
      }
    }
  }

private:
  /// Groups of luma's plan and of chroma's, and the macropixels that both read.
  void beginChunk(int32_t first, int32_t count) {
    luma_ = groupsOf(first, count);
    chroma_ = groupsOf(first / 2, (count + 1) / 2);
    const ByteRange y = bytesRead(plan_.luma, luma_.first, luma_.count);
    const ByteRange uv = bytesRead(plan_.chroma, chroma_.first, chroma_.count);
    first_ = smaller(smaller(y.first / 2, uv.first), p_.inWidth / 2 - kLeastMacropixels);
    count_ = larger(larger((y.end + 1) / 2, uv.end) - first_, kLeastMacropixels);
    kept_.forget();
  }

  void fill(int32_t line, int32_t (&row)[3][kPackedChunk]) {
    const uint8_t *from = p_.inBuf[0] + std::ptrdiff_t{line} * p_.inStride + first_ * kMacropixelBytes;
    part_({from + bytes_.left, from + bytes_.u, from + bytes_.v}, {source_.y, source_.u, source_.v}, 2 * count_);
    const uint8_t *const parted[3] = {source_.y, source_.u, source_.v}; // from the first macropixel on
    stages_.fill(parted[0] - 2 * first_, plan_.luma, luma_.first, luma_.count, row[0]);
    stages_.fill(parted[1] - first_, plan_.chroma, chroma_.first, chroma_.count, row[1]);
    stages_.fill(parted[2] - first_, plan_.chroma, chroma_.first, chroma_.count, row[2]);
  }

  void makeRows(const Tap &y) {
    const auto rows = kept_.neighbours(y, [this](int32_t line, auto &row) { fill(line, row); });
    stages_.mix(rows.top[0], rows.bottom[0], y.next, luma_.count, made_.y);
    stages_.mix(rows.top[1], rows.bottom[1], y.next, chroma_.count, made_.u);
    stages_.mix(rows.top[2], rows.bottom[2], y.next, chroma_.count, made_.v);
  }

  const ConvertParams &p_;
  const KeptPlan &plan_;
  PackedLayout bytes_;
  ScaleStages stages_;
  FetchRows part_;
  ChunkGroups luma_{};
  ChunkGroups chroma_{};
  int32_t first_ = 0; ///< macropixels of the source that the chunk reads
  int32_t count_ = 0;
  KeptRows<3, kPackedChunk> kept_;
  Samples source_;
  MacropixelLines made_;
};

/// The same by five-point means.
class PackedFilter {
public:
  explicit PackedFilter(const Job &job)
      : p_(job.params), columns_(PartedMeans::mostColumns(job, 1)), means_(job, linesOf(job), kKinds), made_(job),
        second_(job) {}

  void resize(const int32_t *yTable) {
    for (int32_t first = 0; first < p_.outWidth; first += columns_) {
      const int32_t count = smaller(p_.outWidth - first, columns_);
      means_.columns(first, count);
      uint8_t *to = p_.outBuf[0] + std::ptrdiff_t{first} * 2;
      const int32_t *entry = yTable;
      int32_t j = 0;
      for (; j + 2 <= p_.outHeight;
           j += 2, entry += 2 * kEntryWords<kFilterTaps>, to += 2 * std::ptrdiff_t{p_.outStride}) {
        means_.twoRows(entry, {made_.y, made_.u, made_.v}, {second_.y, second_.u, second_.v});
        made_.store(count, to);
        second_.store(count, to + p_.outStride);
      }
      if (j < p_.outHeight) {
        means_.rows(entry, {made_.y, made_.u, made_.v});
        made_.store(count, to);
      }
    }
  }

private:
  static constexpr MeanKind kWhole{true, false, false, 8};
  static constexpr MeanKind kKinds[3] = {kWhole, kWhole, kWhole};
  static_assert(PartedMeans::kColumns <= MacropixelLines::kColumns);

  static PartedLines linesOf(const Job &job) {
    const ConvertParams &p = job.params;
    const PackedLayout bytes = packedLayout(job.packedVariant);
    return {p.inBuf[0], p.inStride, p.inWidth / 2, p.inHeight, 1, partingOf(job), {bytes.left, bytes.u, bytes.v}};
  }

  const ConvertParams &p_;
  int32_t columns_; ///< of a chunk
  PartedMeans means_;
  MacropixelLines made_;
  MacropixelLines second_;
};

/// Whole macropixels of the source, as many as a stage parts; and lines that do not overlap, or the order of the stores
/// would show.
bool isServed(const Job &job) {
  const ConvertParams &p = job.params;
  return STORE_MACROPIXELS.in(job.levels) != nullptr && p.inWidth % 2 == 0 && p.inWidth >= kLeastPixels &&
         p.outStride >= std::ptrdiff_t{p.outWidth} * 2;
}

} // namespace

bool resizePackedByPlan(const Job &job) {
  const KeptPlan &plan = job.plan->kept;
  if (!isServed(job) || plan.luma.parts == 0 || plan.chroma.parts == 0) { // samples must lie in windows
    return false;
  }
  PackedResizer(job).resize(job.yTable);
  return true;
}

bool filterPackedByPlan(const Job &job) {
  if (!isServed(job) || !PartedMeans::serve(job)) {
    return false;
  }
  PackedFilter(job).resize(job.yTable);
  return true;
}

} // namespace zqcc
