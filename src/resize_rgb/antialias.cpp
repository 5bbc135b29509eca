#include "resize_rgb/antialias.h"

#include "base/picture_shape.h"
#include "kernels/arithmetic.h"
#include "kernels/layouts.h"
#include "kernels/stores.h"
#include "resize_rgb/samplers.h"

namespace zqcc {
namespace {

constexpr int kEntryWords = 15;
constexpr int kTaps = 5;

/// A plane and how much of it the filters may read. The column limit can lie behind the samples of a line: what stands
/// there (padding, or the next line) is then part of the mean, up to the plane's last sample.
struct FilterPlane {
  const uint8_t *samples;
  std::ptrdiff_t stride;
  int32_t limitX;
  int32_t limitY;
  std::ptrdiff_t last; ///< offset of the plane's last sample

  /// How far a line may be read: its columns, or less where the plane ends.
  [[nodiscard]] int32_t columnsOf(int32_t y) const {
    const std::ptrdiff_t left = last - y * stride + 1;
    return left < limitX ? static_cast<int32_t>(left) : limitX;
  }
};

constexpr int32_t atLeastZero(int32_t index) {
  return index < 0 ? 0 : index;
}

/// Mean of five bilinear samples; the t-th column tap goes with the t-th line tap. Only the low 8 bits of a sample
/// count: a negative weight can lead outside 0..255.
class FivePointMean {
public:
  /// The lines of an entry of the line table. A plane of one line has it as its own neighbour.
  // cppcheck-suppress uninitMemberVar ; the body fills every line
  FivePointMean(const FilterPlane &plane, const int32_t *y) : limit_(plane.limitX) {
    for (int t = 0; t < kTaps; ++t) {
      const int32_t top = atLeastZero(smaller(y[3 * t], plane.limitY - 2));
      const int32_t bottom = atLeastZero(smaller(top + 1, plane.limitY - 1));
      lines_[t] = {plane.samples + top * plane.stride, plane.samples + bottom * plane.stride,
                   atLeastZero(plane.columnsOf(top) - 1), atLeastZero(plane.columnsOf(bottom) - 1), y[3 * t + 1]};
    }
  }

  [[nodiscard]] int32_t sample(const int32_t *x) const {
    int32_t sum = 0;
    for (int t = 0; t < kTaps; ++t) {
      sum += tap(lines_[t], {x[3 * t], x[3 * t + 1]});
    }
    return sum / kTaps;
  }

private:
  struct Line {
    const uint8_t *top;
    const uint8_t *bottom;
    int32_t lastTop;    ///< last column of the upper line
    int32_t lastBottom; ///< last column of the lower line
    int32_t next;
  };

  /// A plane of one column has it as its own neighbour.
  [[nodiscard]] int32_t tap(const Line &line, const Tap &x) const {
    const int32_t left = atLeastZero(smaller(x.index, limit_ - 2));
    const int32_t right = left + 1;
    const int32_t upper = mix(line.top[smaller(left, line.lastTop)], line.top[smaller(right, line.lastTop)], x.next);
    const int32_t lower =
        mix(line.bottom[smaller(left, line.lastBottom)], line.bottom[smaller(right, line.lastBottom)], x.next);
    return static_cast<uint8_t>(mix(upper, lower, line.next) >> 20);
  }

  int32_t limit_;
  Line lines_[kTaps];
};

/// Mean of all listed samples, 0 if there are none.
class BoxMean {
public:
  // cppcheck-suppress uninitMemberVar ; only counted lines are read
  BoxMean(const FilterPlane &plane, const int32_t *y) : limit_(plane.limitX) {
    for (; lineCount_ < kEntryWords && y[lineCount_] >= 0 && y[lineCount_] < plane.limitY; ++lineCount_) {
      lines_[lineCount_] = {plane.samples + y[lineCount_] * plane.stride,
                            atLeastZero(plane.columnsOf(y[lineCount_]) - 1)};
    }
  }

  [[nodiscard]] int32_t sample(const int32_t *x) const {
    int32_t columns = 0;
    while (columns < kEntryWords && x[columns] >= 0 && x[columns] < limit_) {
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
  Line lines_[kEntryWords];
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
    const int32_t *chromaY = job.yTable + std::ptrdiff_t{j >> Entries::kLineShift} * kEntryWords;
    const Mean first(from.planes[0], job.yTable + std::ptrdiff_t{j} * kEntryWords);
    const Mean second(from.planes[1], chromaY);
    const Mean third(from.planes[2], chromaY);
    uint8_t *to = p.outBuf[0] + std::ptrdiff_t{j} * p.outStride;
    int32_t u = 0;
    int32_t v = 0;
    for (int32_t i = 0; i < p.outWidth; ++i, to += 2) {
      if (i % (1 << Entries::kColumnShift) == 0) {
        const int32_t *chromaX = job.xTable + std::ptrdiff_t{i >> Entries::kColumnShift} * kEntryWords;
        u = second.sample(chromaX);
        v = third.sample(chromaX);
      }
      storePixelAnywhere(to, pixel.pack(first.sample(job.xTable + std::ptrdiff_t{i} * kEntryWords), u, v));
    }
  }
}

/// Quality 3 averages a box, 1 and 2 five points; the two differ in their tables only.
template <class Entries, class Pixel>
void filterByQuality(const Job &job) {
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
