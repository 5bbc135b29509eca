#include "sameformat/packed422_resize.h"

#include "base/limits.h"
#include "sameformat/bilinear.h"
#include "sameformat/five_point_lines.h"
#include "sameformat/packed_line.h"
#include "vector/resized_planes.h"

namespace zqcc {

namespace {

/// One output line. Chroma positions count macropixels and end at the last whole one; luma positions count pixels.
template <int luma, bool swapped>
class LineResizer {
public:
  explicit LineResizer(const Job &job)
      : xTable_(job.xTable), chromaTap_{job.params.inWidth / 2},
        lastSlot_(isCut(job.params.inWidth, job.inRoom) ? job.params.inWidth - 1
                                                        : macropixelsOf(job.params.inWidth) * 2 - 1) {}

  /// Macropixel k of the line: output pixels 2k and 2k + 1.
  void make(const SourceLines &lines, std::ptrdiff_t k, uint8_t (&bytes)[kMacropixelBytes]) const {
    makeLone(lines, k, bytes);
    bytes[kRightLuma] = lumaOf(lines, 2 * k + 1);
  }

  /// The macropixel of a lone last pixel 2k. Nothing is sampled for the place beside it, whose luma stays 0.
  void makeLone(const SourceLines &lines, std::ptrdiff_t k, uint8_t (&bytes)[kMacropixelBytes]) const {
    constexpr int chroma = 1 - luma;
    const auto firstByte = [](std::ptrdiff_t macropixel) { return macropixel * kMacropixelBytes + chroma; };
    const auto secondByte = [](std::ptrdiff_t macropixel) { return macropixel * kMacropixelBytes + chroma + 2; };
    bytes[chroma] = sampleByte(lines, chromaTap_(words(k)), firstByte);
    bytes[chroma + 2] = sampleByte(lines, chromaTap_(words(k)), secondByte);
    bytes[kLeftLuma] = lumaOf(lines, 2 * k);
    bytes[kRightLuma] = 0;
  }

private:
  static constexpr int kLeftLuma = swapped ? luma + 2 : luma;
  static constexpr int kRightLuma = swapped ? luma : luma + 2;

  [[nodiscard]] uint8_t lumaOf(const SourceLines &lines, std::ptrdiff_t pixel) const {
    const auto byteOf = [this](std::ptrdiff_t at) { return slotOf(at) * 2 + luma; };
    return sampleByte(lines, AsBuilt{}(words(pixel)), byteOf);
  }

  [[nodiscard]] const int32_t *words(std::ptrdiff_t position) const { return xTable_ + position * kTapWords; }

  /// Place of a pixel's luma among the line's luma bytes. The lone pixel of a cut line is not exchanged with anything.
  [[nodiscard]] std::ptrdiff_t slotOf(std::ptrdiff_t pixel) const {
    if constexpr (swapped) {
      return smaller(pixel ^ 1, lastSlot_);
    } else {
      return pixel;
    }
  }

  const int32_t *xTable_;
  EvenAtEnd chromaTap_;
  std::ptrdiff_t lastSlot_;
};

template <int luma, bool swapped>
void resizeLines(const Job &job) {
  const ConvertParams &p = job.params;
  const LineResizer<luma, swapped> resizer(job);
  const std::ptrdiff_t outPitch = p.outStride;
  const std::ptrdiff_t pairs = p.outWidth / 2;
  const auto tail = static_cast<std::size_t>(lineBytes(p.outWidth, outPitch) - pairs * kMacropixelBytes);
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const SourceLines lines = linePair(p.inBuf[0], p.inStride, AsBuilt{}(job.yTable + j * kTapWords));
    uint8_t *out = p.outBuf[0] + j * outPitch;
    uint8_t bytes[kMacropixelBytes];
    for (std::ptrdiff_t k = 0; k < pairs; ++k, out += kMacropixelBytes) {
      resizer.make(lines, k, bytes);
      std::memcpy(out, bytes, sizeof bytes);
    }
    if (tail > 0) {
      resizer.makeLone(lines, pairs, bytes);
      std::memcpy(out, bytes, tail);
    }
  }
}

/// resizeLines for the byte order of the picture.
template <bool swapped>
void resizeOrder(const Job &job) {
  if (packedLayout(job.packedVariant).firstLuma() == 0) {
    resizeLines<0, swapped>(job);
  } else {
    resizeLines<1, swapped>(job);
  }
}

} // namespace

void resizePacked422Select(const Job &job) {
  if (packedLayout(job.packedVariant).isSwapped()) {
    resizePacked422Swapped(job);
  } else if (job.params.antiAlias != 0) {
    resizePacked422AntiAlias(job);
  } else {
    resizePacked422(job);
  }
}

void resizePacked422(const Job &job) {
  if (!resizedPackedByRows(job)) {
    resizeOrder<false>(job);
  }
}

void resizePacked422Swapped(const Job &job) {
  if (!resizedPackedByRows(job)) {
    resizeOrder<true>(job);
  }
}

void resizePacked422AntiAlias(const Job &job) {
  if (filteredPackedByRows(job)) {
    return;
  }
  constexpr std::ptrdiff_t kEntry = kEntryWords<kFilterTaps>;
  constexpr std::ptrdiff_t kPixelBytes = kMacropixelBytes / 2;
  const ConvertParams &p = job.params;
  const std::ptrdiff_t luma = packedLayout(job.packedVariant).firstLuma();
  const auto pathOf = [&p](std::ptrdiff_t byte) {
    return LinePath{p.inBuf[0] + byte, p.inStride, p.outBuf[0] + byte, p.outStride};
  };
  const LinePath paths[3] = {pathOf(luma), pathOf(1 - luma), pathOf(3 - luma)};
  const bool cut = isCut(p.outWidth, p.outStride);
  forEachMeanChunk(p.outWidth, [&](int32_t first, int32_t count) {
    const int32_t macropixels = macropixelsOf(count);
    const bool lone = count % 2 != 0;
    const FivePointColumns pixels(job.xTable + first * kEntry, count, AsBuilt{}, kPixelBytes);
    const FivePointColumns pairs(job.xTable + first / 2 * kEntry, macropixels, EvenAtEnd{p.inWidth / 2},
                                 kMacropixelBytes);
    for (int32_t j = 0; j < p.outHeight; ++j) {
      const auto make = [&](const FivePointColumns &columns, const LinePath &path, int32_t from, int32_t samples,
                            std::ptrdiff_t step) {
        resizeLineByFivePoints(columns, path, job.yTable, j, AsBuilt{}, from, samples, step);
      };
      make(pixels, paths[0], first, count, kPixelBytes);
      make(pairs, paths[1], first / 2, macropixels, kMacropixelBytes);
      make(pairs, paths[2], first / 2, macropixels - (lone && cut ? 1 : 0), kMacropixelBytes);
      if (lone && !cut) { // nothing is sampled for the place beside the last pixel
        paths[0].to[j * std::ptrdiff_t{p.outStride} + p.outWidth * kPixelBytes] = 0;
      }
    }
  });
}

} // namespace zqcc
