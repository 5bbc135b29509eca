#include "resize_rgb/antialias.h"

#include "frame/picture_shape.h"
#include "kernels/arithmetic.h"
#include "kernels/stores.h"
#include "resize_rgb/samplers.h"

namespace zqcc {
namespace {

constexpr int kEntryWords = 15;
constexpr int kTaps = 5;

/// A plane and how much of it the filters may read. The column limit can lie behind the samples of a line: what stands
/// there (padding, or the next line) is then part of the mean.
struct FilterPlane {
  const uint8_t *samples;
  std::ptrdiff_t stride;
  int32_t limitX;
  int32_t limitY;
  std::ptrdiff_t last; ///< offset of the plane's last sample

  [[nodiscard]] int32_t at(int32_t x, int32_t y) const {
    const std::ptrdiff_t offset = y * stride + x;
    return samples[offset < last ? offset : last];
  }
};

constexpr int32_t atLeastZero(int32_t index) {
  return index < 0 ? 0 : index;
}

/// Mean of five bilinear samples; the t-th column tap goes with the t-th line tap.
struct FivePointMean {
  static int32_t sample(const FilterPlane &plane, const int32_t *x, const int32_t *y) {
    int32_t sum = 0;
    for (int t = 0; t < kTaps; ++t, x += 3, y += 3) {
      sum += tap(plane, {x[0], x[1]}, {y[0], y[1]});
    }
    return sum / kTaps;
  }

private:
  /// A plane of one column or line has it as its own neighbour. Only the low 8 bits count: a negative weight can lead
  /// outside 0..255.
  static int32_t tap(const FilterPlane &plane, const Tap &x, const Tap &y) {
    const int32_t left = atLeastZero(smaller(x.index, plane.limitX - 2));
    const int32_t top = atLeastZero(smaller(y.index, plane.limitY - 2));
    const int32_t right = atLeastZero(smaller(left + 1, plane.limitX - 1));
    const int32_t bottom = atLeastZero(smaller(top + 1, plane.limitY - 1));
    const int32_t upper = mix(plane.at(left, top), plane.at(right, top), x.next);
    const int32_t lower = mix(plane.at(left, bottom), plane.at(right, bottom), x.next);
    return static_cast<uint8_t>(mix(upper, lower, y.next) >> 20);
  }
  static constexpr int32_t smaller(int32_t a, int32_t b) { return a < b ? a : b; }
};

/// Mean of all listed samples, 0 if there are none.
struct BoxMean {
  static int32_t sample(const FilterPlane &plane, const int32_t *x, const int32_t *y) {
    uint32_t sum = 0;
    uint32_t count = 0;
    for (int r = 0; r < kEntryWords && y[r] >= 0 && y[r] < plane.limitY; ++r) {
      for (int c = 0; c < kEntryWords && x[c] >= 0 && x[c] < plane.limitX; ++c) {
        sum += static_cast<uint32_t>(plane.at(x[c], y[r]));
        ++count;
      }
    }
    return count == 0 ? 0 : static_cast<int32_t>(sum / count);
  }
};

/// Planes of a frame. Luma's columns end at the stride, not at the width. Chroma's end at its samples, except that
/// 4:2:2 is read at the pitch of two lines and its columns end there.
struct FilterPlanes {
  FilterPlane planes[3];

  explicit FilterPlanes(const Job &job) {
    const ConvertParams &p = job.params;
    const std::ptrdiff_t lumaLast = std::ptrdiff_t{p.inHeight - 1} * p.inStride + p.inWidth - 1;
    planes[0] = {p.inBuf[0], p.inStride, p.inStride, p.inHeight, lumaLast};
    const ChromaShape shape = chromaShape(p.inType, p.inWidth, p.inHeight, p.inStride);
    FilterPlane chroma{nullptr, shape.pitch, shape.columns, shape.lines,
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
  StudioSixBit arithmetic{*matrixEntry(0)};
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
    uint8_t *to = p.outBuf[0] + std::ptrdiff_t{j} * p.outStride;
    const int32_t *y = job.yTable + std::ptrdiff_t{j} * kEntryWords;
    const int32_t *chromaY = job.yTable + std::ptrdiff_t{j >> Entries::kLineShift} * kEntryWords;
    int32_t second = 0;
    int32_t third = 0;
    for (int32_t i = 0; i < p.outWidth; ++i, to += 2) {
      const int32_t *x = job.xTable + std::ptrdiff_t{i} * kEntryWords;
      if (i % (1 << Entries::kColumnShift) == 0) {
        const int32_t *chromaX = job.xTable + std::ptrdiff_t{i >> Entries::kColumnShift} * kEntryWords;
        second = Mean::sample(from.planes[1], chromaX, chromaY);
        third = Mean::sample(from.planes[2], chromaX, chromaY);
      }
      storePixelAnywhere(to, pixel.pack(Mean::sample(from.planes[0], x, y), second, third));
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
