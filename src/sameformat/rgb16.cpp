#include "sameformat/rgb16.h"

#include "kernels/copy_lines.h"
#include "kernels/layouts.h"
#include "kernels/stores.h"
#include "kernels/table_groups.h"
#include "sameformat/bilinear.h"
#include "sameformat/rgb16_sums.h"
#include "sameformat/transpose.h"
#include "vector/resized.h"
#include "vector/resized_planes.h"

namespace zqcc {

namespace {

constexpr std::ptrdiff_t kPixelBytes = 2;

struct Channels {
  int32_t red;
  int32_t green;
  int32_t blue;

  Channels &operator+=(const Channels &other) {
    red += other.red;
    green += other.green;
    blue += other.blue;
    return *this;
  }
  Channels operator/(int32_t count) const { return {red / count, green / count, blue / count}; }
};

Channels loadPixel(const uint8_t *p) {
  const int32_t pixel = p[0] | p[1] << 8;
  return {pixel >> 11, pixel >> 5 & 0x3F, pixel & 0x1F};
}

uint32_t pack(const Channels &c) {
  return static_cast<uint32_t>(c.red) << 11 | static_cast<uint32_t>(c.green) << 5 | static_cast<uint32_t>(c.blue);
}

SampleTap tapOf(const TableGroup &group, int32_t i) {
  return AsBuilt{}(group.tap(i));
}

Channels samplePixel(const SourceLines &line, const SampleTap &column) {
  const Channels p00 = loadPixel(line.self + column.self * kPixelBytes);
  const Channels p01 = loadPixel(line.self + column.next * kPixelBytes);
  const Channels p10 = loadPixel(line.next + column.self * kPixelBytes);
  const Channels p11 = loadPixel(line.next + column.next * kPixelBytes);
  return {bilinear(p00.red, p01.red, p10.red, p11.red, column.weights, line.weights),
          bilinear(p00.green, p01.green, p10.green, p11.green, column.weights, line.weights),
          bilinear(p00.blue, p01.blue, p10.blue, p11.blue, column.weights, line.weights)};
}

struct Source {
  const uint8_t *pixels;
  std::ptrdiff_t pitch;

  [[nodiscard]] SourceLines lines(const SampleTap &tap) const { return linePair(pixels, pitch, tap); }
};

/// Two pixels of an output line leave as one word; the last one of an odd line leaves alone.
void resizeRgb16Block(const TableGroup &x, const TableGroup &y, const Source &src, uint8_t *tile,
                      std::ptrdiff_t dstPitch) {
  for (int32_t j = 0; j < y.count; ++j) {
    const SourceLines lines = src.lines(tapOf(y, j));
    uint8_t *out = tile + j * dstPitch;
    int32_t i = 0;
    for (; i + 1 < x.count; i += 2, out += 2 * kPixelBytes) {
      storeWordAnywhere(out, pack(samplePixel(lines, tapOf(x, i))), pack(samplePixel(lines, tapOf(x, i + 1))));
    }
    if (i < x.count) {
      storePixelAnywhere(out, pack(samplePixel(lines, tapOf(x, i))));
    }
  }
}

/// A tile of the turned picture. `tile` is where the pixel of the first column and line goes, `columnStep` the way to
/// the next column's output line, `lineStep` (2 or -2) the way to the next source line's pixel beside it.
template <std::ptrdiff_t lineStep>
void resizeRotateRgb16Block(const TableGroup &x, const TableGroup &y, const Source &src, uint8_t *tile,
                            std::ptrdiff_t columnStep) {
  int32_t j = 0;
  for (; j + 1 < y.count; j += 2) {
    const SampleTap first = tapOf(y, j);
    SampleTap second = tapOf(y, j + 1);
    second.weights = first.weights; // the pair is weighed alike; only the position of its second line counts
    const SourceLines a = src.lines(first);
    const SourceLines b = src.lines(second);
    uint8_t *out = tile + j * lineStep + (lineStep < 0 ? lineStep : 0);
    for (int32_t i = 0; i < x.count; ++i, out += columnStep) {
      const SampleTap column = tapOf(x, i);
      const uint32_t pixelA = pack(samplePixel(a, column));
      const uint32_t pixelB = pack(samplePixel(b, column));
      storeWordAnywhere(out, lineStep > 0 ? pixelA : pixelB, lineStep > 0 ? pixelB : pixelA);
    }
  }
  if (j < y.count) {
    const SourceLines lone = src.lines(tapOf(y, j));
    uint8_t *out = tile + j * lineStep;
    for (int32_t i = 0; i < x.count; ++i, out += columnStep) {
      storePixelAnywhere(out, pack(samplePixel(lone, tapOf(x, i))));
    }
  }
}

constexpr auto resizeRotateRgb16BlockLeft = resizeRotateRgb16Block<kPixelBytes>;
constexpr auto resizeRotateRgb16BlockRight = resizeRotateRgb16Block<-kPixelBytes>;

/// Fills the tile of every pair of groups, so that a tile's sources stay within 17 x 17 pixels. The output position
/// (i, j) of the untouched orientation lies at origin + i * columnStep + j * lineStep; `kernelStep` is the kernel's.
template <class Kernel>
void forEachTile(const Job &job, uint8_t *origin, std::ptrdiff_t columnStep, std::ptrdiff_t lineStep,
                 std::ptrdiff_t kernelStep, Kernel kernel) {
  const ConvertParams &p = job.params;
  const Source src{p.inBuf[0], p.inStride};
  forEachGroup(job.yTable, p.outHeight, [&](const TableGroup &y, int32_t top) {
    forEachGroup(job.xTable, p.outWidth, [&](const TableGroup &x, int32_t left) {
      kernel(x, y, src, origin + left * columnStep + top * lineStep, kernelStep);
    });
  });
}

/// Masking the means keeps what a filter's overshoot leaves in a channel's bits.
uint32_t samplePixelMean(const SourceLines (&lines)[kFilterTaps], const int32_t *entry) {
  const Channels mean = meanOfTaps<kFilterTaps>([&](std::size_t t) {
    return samplePixel(lines[t], AsBuilt{}(entry + static_cast<std::ptrdiff_t>(t) * kTapWords));
  });
  return pack({mean.red & 0x1F, mean.green & 0x3F, mean.blue & 0x1F});
}

constexpr std::ptrdiff_t kFilterWords = kEntryWords<kFilterTaps>;

/// Output columns of a filtered picture.
class FilteredColumns {
public:
  // cppcheck-suppress uninitMemberVar ; as many taps as are read
  FilteredColumns(const int32_t *entries, int32_t count) : entries_(entries), count_(count) {
    for (int32_t i = 0; i < count; ++i) {
      const int32_t *words = entries + i * kFilterWords;
      for (auto &taps : taps_) {
        taps[i] = {static_cast<uint32_t>(words[0] * kPixelBytes), words[1]};
        leading_ = words[1] < 0 ? i + 1 : leading_;
        words += kTapWords;
      }
    }
  }

  void makeLine(const SourceLines (&lines)[kFilterTaps], AddPixels add, uint8_t *out) const {
    for (int32_t i = 0; i < leading_; ++i) {
      storePixelAnywhere(out + i * kPixelBytes, samplePixelMean(lines, entries_ + i * kFilterWords));
    }
    Rgb16Sum sums[kMeanChunk] = {};
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      add(lines[t], taps_[t] + leading_, count_ - leading_, sums);
    }
    storeFifths(sums, count_ - leading_, out + leading_ * kPixelBytes);
  }

private:
  const int32_t *entries_;
  int32_t count_;
  int32_t leading_ = 0; ///< columns up to the last one of a negative weight, which the sums have no room for
  TapPlace taps_[kFilterTaps][kMeanChunk];
};

template <Turn turn>
bool resizedWordsByRows(const Job &job) {
  const ConvertParams &p = job.params;
  return resizedByRows(job, Rgb565Words::view(p, p.inWidth, p.inHeight), turn,
                       targetOf<turn, kPixelBytes>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight));
}

} // namespace

void copyRgb16(const Job &job) {
  const ConvertParams &p = job.params;
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth * kPixelBytes, p.outHeight);
}

void rotateRgb16(const Job &job) {
  const ConvertParams &p = job.params;
  quarterTurn<uint16_t>(job.levels, turnOf(p.rotation),
                        {p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight});
}

void resizeRgb16(const Job &job) {
  if (resizedWordsByRows<Turn::Upright>(job)) {
    return;
  }
  const ConvertParams &p = job.params;
  forEachTile(job, p.outBuf[0], kPixelBytes, p.outStride, p.outStride, resizeRgb16Block);
}

void resizeRotateRgb16(const Job &job) {
  const ConvertParams &p = job.params;
  const std::ptrdiff_t pitch = p.outStride;
  if (turnOf(p.rotation) == Turn::Left) {
    if (!resizedWordsByRows<Turn::Left>(job)) {
      forEachTile(job, p.outBuf[0] + (p.outWidth - 1) * pitch, -pitch, kPixelBytes, -pitch, resizeRotateRgb16BlockLeft);
    }
  } else if (!resizedWordsByRows<Turn::Right>(job)) {
    forEachTile(job, p.outBuf[0] + (p.outHeight - 1) * kPixelBytes, pitch, -kPixelBytes, pitch,
                resizeRotateRgb16BlockRight);
  }
}

void resizeRgb16AntiAlias(const Job &job) {
  if (filteredWordsByRows(job)) {
    return;
  }
  const ConvertParams &p = job.params;
  // This routine counts its pitches in whole pixels.
  const std::ptrdiff_t srcPitch = (p.inStride >> 1) * kPixelBytes;
  const std::ptrdiff_t dstPitch = (p.outStride >> 1) * kPixelBytes;
  const AddPixels add = addPixelsOf(p.inBuf[0], srcPitch);
  forEachMeanChunk(p.outWidth, [&](int32_t first, int32_t count) {
    const FilteredColumns columns(job.xTable + first * kFilterWords, count);
    uint8_t *out = p.outBuf[0] + first * kPixelBytes;
    for (int32_t j = 0; j < p.outHeight; ++j, out += dstPitch) {
      SourceLines lines[kFilterTaps];
      for (std::size_t t = 0; t < kFilterTaps; ++t) {
        const int32_t *words = job.yTable + j * kFilterWords + static_cast<std::ptrdiff_t>(t) * kTapWords;
        lines[t] = linePair(p.inBuf[0], srcPitch, AsBuilt{}(words));
        lines[t].weights = lines[0].weights; // one pair of line weights serves all five
      }
      columns.makeLine(lines, add, out);
    }
  });
}

} // namespace zqcc
