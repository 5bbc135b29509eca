#include "resize_rgb/antialias.h"

#include "base/limits.h"
#include "base/table_format.h"
#include "kernels/arithmetic.h"
#include "kernels/five_point.h"
#include "kernels/mean_planes.h"
#include "kernels/scratch.h"
#include "kernels/stores.h"
#include "resize_rgb/box_mean.h"
#include "vector/filtered.h"

#include <type_traits>

namespace zqcc {
namespace {

// A mean is built for a chunk of output columns and the column limit of the planes that it serves; line() makes a line
// of its samples.

/// Mean of five bilinear samples.
class FivePointMean {
public:
  static constexpr std::ptrdiff_t kWords = kEntryWords<kFilterTaps>;

  /// There is always one column, however short the stride is.
  FivePointMean(const int32_t *x, int32_t count, int32_t limitX)
      : columns_(x, count, HeldAtEnd{limitX > 0 ? limitX : 1}, 1), count_(count) {}

  void line(const MeanPlane &plane, const int32_t *y, uint8_t *samples) const {
    FiveSums sums;
    columns_.sumLine(plane.samples, plane.stride, y, HeldAtEnd{plane.limitY}, LOW_BYTES, sums);
    for (int32_t i = 0; i < count_; ++i) {
      samples[i] = fifthOfBytes(sums[i]);
    }
  }

private:
  FivePointColumns columns_;
  int32_t count_;
};

/// How many of a box's listed samples lie below a limit.
int32_t listedBelow(const int32_t *entry, int32_t limit) {
  int32_t count = 0;
  while (count < kMostOfBox && entry[count] >= 0 && entry[count] < limit) {
    ++count;
  }
  return count;
}

/// From the first to the second of the listed samples; nothing where only one is listed.
int32_t spacingOf(const int32_t *entry) {
  return entry[1] > entry[0] ? entry[1] - entry[0] : 0;
}

/// Mean of all listed samples, 0 if there are none.
class BoxMean {
public:
  static constexpr std::ptrdiff_t kWords = kBoxWords;

  /// Boxes near the end of a line have fewer columns than those before them: boxes of a number of columns follow one
  /// another.
  // cppcheck-suppress uninitMemberVar ; as many boxes as are read
  BoxMean(const int32_t *x, int32_t count, int32_t limitX) : spacing_(spacingOf(x)) {
    for (int32_t i = 0; i < count; ++i, x += kWords) {
      const int32_t columns = listedBelow(x, limitX);
      at_[i] = columns > 0 ? x[0] : 0;
      if (i == 0 || columns != runs_[runCount_ - 1].columns) {
        runs_[runCount_++].columns = columns;
      }
      runs_[runCount_ - 1].end = i + 1;
    }
  }

  void line(const MeanPlane &plane, const int32_t *y, uint8_t *samples) const {
    const int32_t lines = listedBelow(y, plane.limitY);
    const BoxLines box{plane.samples + (lines > 0 ? y[0] : 0) * plane.stride, spacingOf(y) * plane.stride, spacing_,
                       lines};
    int32_t from = 0;
    for (int32_t run = 0; run < runCount_; from = runs_[run++].end) {
      meansOfBoxes(box, lines > 0 ? runs_[run].columns : 0, at_ + from, runs_[run].end - from, samples + from);
    }
  }

private:
  struct Run {
    int32_t columns;
    int32_t end; ///< the box behind the last one
  };

  int32_t spacing_;
  int32_t runCount_ = 0;
  Run runs_[kMostOfBox + 1];
  int32_t at_[kMeanChunk];
};

using MeanRow = uint8_t[kMeanChunk];
using ConvertMeans = void (*)(const MeanRow (&rows)[3], int32_t count, uint8_t *to);

/// Pixels of a line of samples. Where words fit two of them leave as one.
template <int columnShift, class Arithmetic, bool wordsFitHere>
void convertMeans(const MeanRow (&rows)[3], int32_t count, uint8_t *to) {
  const Arithmetic arithmetic{};
  const auto termsAt = [&](int32_t i) {
    return arithmetic.terms(rows[1][i >> columnShift], rows[2][i >> columnShift]);
  };
  int32_t i = 0;
  for (; i + 1 < count; i += 2, to += 4) {
    const auto left = termsAt(i);
    const auto right = columnShift == 0 ? termsAt(i + 1) : left;
    const uint32_t first = arithmetic.template pixel<0, 0>(left, rows[0][i]);
    const uint32_t second = arithmetic.template pixel<0, 0>(right, rows[0][i + 1]);
    if constexpr (wordsFitHere) {
      storeWord(to, first, second);
    } else {
      storeWordAnywhere(to, first, second);
    }
  }
  if (i < count) {
    storePixelAnywhere(to, arithmetic.template pixel<0, 0>(termsAt(i), rows[0][i]));
  }
}

/// How pixels share chroma. Its planes are scaled by luma's factor: the table entry of output k serves as that of
/// chroma sample k, and pixel (i, j) takes chroma sample (i >> columnShift, j >> lineShift).
struct Sharing {
  int columnShift;
  int lineShift;
  ConvertMeans convert;
};

/// Chroma is made once for all lines that share it.
template <class Mean>
void filterFrame(const Job &job, const Sharing &sharing) {
  const ConvertParams &p = job.params;
  const MeanPlanes from(p);
  forEachMeanChunk(p.outWidth, [&](int32_t first, int32_t count) {
    MeanRow rows[3];
    const int32_t chromaCount = ((count - 1) >> sharing.columnShift) + 1;
    const Mean luma(job.xTable + first * Mean::kWords, count, from.planes[0].limitX);
    const Mean chroma(job.xTable + (first >> sharing.columnShift) * Mean::kWords, chromaCount, from.planes[1].limitX);
    uint8_t *to = p.outBuf[0] + std::ptrdiff_t{first} * 2;
    for (int32_t j = 0; j < p.outHeight; ++j, to += p.outStride) {
      luma.line(from.planes[0], job.yTable + j * Mean::kWords, rows[0]);
      if (j % (1 << sharing.lineShift) == 0) {
        const int32_t *y = job.yTable + (j >> sharing.lineShift) * Mean::kWords;
        chroma.line(from.planes[1], y, rows[1]);
        chroma.line(from.planes[2], y, rows[2]);
      }
      sharing.convert(rows, count, to);
    }
  });
}

/// Quality 3 averages a box, 1 and 2 five points; the two differ in their tables only.
template <class Arithmetic, int columnShift, int lineShift>
void filterByQuality(const Job &job) {
  if (filteredByRows(job, columnShift, lineShift, std::is_same_v<Arithmetic, PackRgb>)) {
    return;
  }
  const ConvertParams &p = job.params;
  const bool words = wordsFit<Turn::Upright>({p.outBuf[0], p.outStride});
  const Sharing sharing{columnShift, lineShift,
                        words ? convertMeans<columnShift, Arithmetic, true>
                              : convertMeans<columnShift, Arithmetic, false>};
  if (p.antiAlias == 3) {
    filterFrame<BoxMean>(job, sharing);
  } else {
    filterFrame<FivePointMean>(job, sharing);
  }
}

} // namespace

void resizeYuvToRgb565AntiAlias(const Job &job) {
  filterByQuality<StudioSixBit, 1, 1>(job);
}
void resizeYuv444ToRgb565AntiAlias(const Job &job) {
  filterByQuality<StudioSixBit, 0, 0>(job);
}
void resizeYuv440ToRgb565AntiAlias(const Job &job) {
  filterByQuality<StudioSixBit, 0, 1>(job);
}
void resizeYuv411ToRgb565AntiAlias(const Job &job) {
  filterByQuality<StudioSixBit, 2, 0>(job);
}
void resizeYuvQuarterHeightToRgb565AntiAlias(const Job &job) {
  filterByQuality<StudioSixBit, 0, 2>(job);
}
void resizePlanarRgbToRgb565AntiAlias(const Job &job) {
  filterByQuality<PackRgb, 0, 0>(job);
}

} // namespace zqcc
