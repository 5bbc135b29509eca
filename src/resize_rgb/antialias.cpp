#include "resize_rgb/antialias.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "base/table_format.h"
#include "kernels/arithmetic.h"
#include "kernels/stores.h"
#include "kernels/taps.h"
#include "resize_rgb/samplers.h"
#include "vector/filtered.h"

#include <type_traits>

namespace zqcc {
namespace {

/// A plane and how much of it the filters may read. The column limit can lie behind the samples of a line: what stands
/// there (padding, or the next line) is then part of the mean, up to the plane's last sample.
struct FilterPlane {
  const uint8_t *samples;
  std::ptrdiff_t stride;
  int32_t limitX;
  int32_t limitY;
  std::ptrdiff_t last; ///< offset of the plane's last sample

  /// The last column that may be read of a line: that of its columns, or an earlier one where the plane ends.
  [[nodiscard]] int32_t lastColumnOf(std::ptrdiff_t y) const {
    const auto column = smaller<std::ptrdiff_t>(last - y * stride, limitX - 1);
    return column > 0 ? static_cast<int32_t>(column) : 0;
  }
};

/// Mean of five bilinear samples. Only the low 8 bits of a sample count: a negative weight can lead outside 0..255.
class FivePointMean {
public:
  static constexpr std::ptrdiff_t kWords = kEntryWords<kFilterTaps>;

  /// The lines of an entry of the line table. There is always one column, however short the stride is.
  // cppcheck-suppress uninitMemberVar ; the body fills every line
  FivePointMean(const FilterPlane &plane, const int32_t *y) : columnTap_{plane.limitX > 0 ? plane.limitX : 1} {
    const HeldAtEnd lineTap{plane.limitY};
    for (Line &line : lines_) {
      const SampleTap tap = lineTap(y);
      line = {plane.samples + tap.self * plane.stride, plane.samples + tap.next * plane.stride,
              plane.lastColumnOf(tap.self), plane.lastColumnOf(tap.next), tap.weights.next};
      y += kTapWords;
    }
  }

  [[nodiscard]] int32_t sample(const int32_t *x) const {
    return meanOfTaps<kFilterTaps>([&](std::size_t t) {
      return int32_t{byteOf(lines_[t], columnTap_(x + static_cast<std::ptrdiff_t>(t) * kTapWords))};
    });
  }

private:
  struct Line {
    const uint8_t *top;
    const uint8_t *bottom;
    std::ptrdiff_t lastTop;    ///< last column of the upper line
    std::ptrdiff_t lastBottom; ///< last column of the lower line
    int32_t next;
  };

  static uint8_t byteOf(const Line &line, const SampleTap &x) {
    const auto mixed = [&x](const uint8_t *samples, std::ptrdiff_t last) {
      return mix(samples[smaller(x.self, last)], samples[smaller(x.next, last)], x.weights.next);
    };
    return static_cast<uint8_t>(mix(mixed(line.top, line.lastTop), mixed(line.bottom, line.lastBottom), line.next) >>
                                (2 * kWeightBits));
  }

  HeldAtEnd columnTap_;
  Line lines_[kFilterTaps];
};

/// Mean of all listed samples, 0 if there are none.
class BoxMean {
public:
  static constexpr std::ptrdiff_t kWords = kBoxWords;

  // cppcheck-suppress uninitMemberVar ; only counted lines are read
  BoxMean(const FilterPlane &plane, const int32_t *y) : limit_(plane.limitX) {
    for (; lineCount_ < kBoxWords && y[lineCount_] >= 0 && y[lineCount_] < plane.limitY; ++lineCount_) {
      lines_[lineCount_] = {plane.samples + y[lineCount_] * plane.stride, plane.lastColumnOf(y[lineCount_])};
    }
  }

  [[nodiscard]] int32_t sample(const int32_t *x) const {
    int32_t columns = 0;
    while (columns < kBoxWords && x[columns] >= 0 && x[columns] < limit_) {
      ++columns;
    }
    uint32_t sum = 0;
    for (int32_t l = 0; l < lineCount_; ++l) {
      for (int32_t c = 0; c < columns; ++c) {
        sum += lines_[l].samples[smaller(x[c], lines_[l].last)];
      }
    }
    const auto count = static_cast<uint32_t>(lineCount_ * columns);
    return count == 0 ? 0 : static_cast<int32_t>(sum / count);
  }

private:
  struct Line {
    const uint8_t *samples;
    int32_t last;
  };

  int32_t limit_;
  int32_t lineCount_ = 0;
  Line lines_[kBoxWords];
};

/// Planes of a frame. Luma's columns end at the stride, not at the width, and so do those of planes as large as luma's.
/// Subsampled chroma's end at its samples, or at the pitch if that is less; but 4:2:2 is read at the pitch of two lines
/// and its columns end there.
struct FilterPlanes {
  FilterPlane planes[3];

  explicit FilterPlanes(const Job &job) {
    const ConvertParams &p = job.params;
    const std::ptrdiff_t lumaLast = std::ptrdiff_t{p.inHeight - 1} * p.inStride + p.inWidth - 1;
    planes[0] = {p.inBuf[0], p.inStride, p.inStride, p.inHeight, lumaLast};
    const ChromaShape shape = chromaShape(p.inType, p.inWidth, p.inHeight, p.inStride);
    const bool isFullSize = shape.columns == p.inWidth && shape.lines == p.inHeight;
    FilterPlane chroma{nullptr, shape.pitch, isFullSize ? p.inStride : smaller(shape.columns, shape.pitch), shape.lines,
                       std::ptrdiff_t{shape.lines - 1} * shape.pitch + shape.columns - 1};
    if (isPlanar422(p.inType)) {
      chroma.stride = std::ptrdiff_t{shape.pitch} * 2;
      chroma.limitX = shape.pitch * 2;
      chroma.limitY = p.inHeight / 2;
    }
    for (int i = 1; i < 3; ++i) {
      planes[i] = chroma;
      planes[i].samples = p.inBuf[i];
    }
  }
};

/// Which table entries chroma takes for output (i, j): its planes are scaled by luma's factor, so the entry of output
/// k serves as that of chroma sample k.
template <int columnShift, int lineShift>
struct ChromaEntries {
  static constexpr int kColumnShift = columnShift;
  static constexpr int kLineShift = lineShift;
};

struct YuvPixel {
  [[nodiscard]] uint32_t pack(int32_t y, int32_t u, int32_t v) const {
    return arithmetic.pixel<0, 0>(Studio::terms(u, v), y);
  }
  StudioSixBit arithmetic;
};

struct RgbPixel {
  [[nodiscard]] static uint32_t pack(int32_t red, int32_t green, int32_t blue) {
    return PackRgb::pixel<0, 0>(PackRgb::terms(green, blue), red);
  }
};

template <class Mean, class Entries, class Pixel>
void filterFrame(const Job &job) {
  const ConvertParams &p = job.params;
  const FilterPlanes from(job);
  const Pixel pixel;
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const int32_t *chromaY = job.yTable + (j >> Entries::kLineShift) * Mean::kWords;
    const Mean first(from.planes[0], job.yTable + j * Mean::kWords);
    const Mean second(from.planes[1], chromaY);
    const Mean third(from.planes[2], chromaY);
    uint8_t *to = p.outBuf[0] + std::ptrdiff_t{j} * p.outStride;
    int32_t u = 0;
    int32_t v = 0;
    for (int32_t i = 0; i < p.outWidth; ++i, to += 2) {
      if (i % (1 << Entries::kColumnShift) == 0) {
        const int32_t *chromaX = job.xTable + (i >> Entries::kColumnShift) * Mean::kWords;
        u = second.sample(chromaX);
        v = third.sample(chromaX);
      }
      storePixelAnywhere(to, pixel.pack(first.sample(job.xTable + i * Mean::kWords), u, v));
    }
  }
}

/// Quality 3 averages a box, 1 and 2 five points; the two differ in their tables only.
template <class Entries, class Pixel>
void filterByQuality(const Job &job) {
  if (filteredByRows(job, Entries::kColumnShift, Entries::kLineShift, std::is_same_v<Pixel, RgbPixel>)) {
    return;
  }
  if (job.params.antiAlias == 3) {
    filterFrame<BoxMean, Entries, Pixel>(job);
  } else {
    filterFrame<FivePointMean, Entries, Pixel>(job);
  }
}

} // namespace

void resizeYuvToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<1, 1>, YuvPixel>(job);
}
void resizeYuv444ToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<0, 0>, YuvPixel>(job);
}
void resizeYuv440ToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<0, 1>, YuvPixel>(job);
}
void resizeYuv411ToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<2, 0>, YuvPixel>(job);
}
void resizeYuvQuarterHeightToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<0, 2>, YuvPixel>(job);
}
void resizePlanarRgbToRgb565AntiAlias(const Job &job) {
  filterByQuality<ChromaEntries<0, 0>, RgbPixel>(job);
}

} // namespace zqcc
