#include "sameformat/packed422_resize.h"

#include "base/limits.h"
#include "sameformat/bilinear.h"
#include "sameformat/packed_line.h"
#include "vector/resized_planes.h"

namespace zqcc {

namespace {

/// One output line. Chroma positions count macropixels and end at the last whole one; luma positions count pixels.
template <std::size_t taps, int luma, bool swapped>
class LineResizer {
public:
  explicit LineResizer(const Job &job)
      : xTable_(job.xTable), chromaTap_{job.params.inWidth / 2},
        lastSlot_(isCut(job.params.inWidth, job.inRoom) ? job.params.inWidth - 1
                                                        : macropixelsOf(job.params.inWidth) * 2 - 1) {}

  /// Macropixel k of the line: output pixels 2k and 2k + 1.
  void make(const SourceLines (&lines)[taps], std::ptrdiff_t k, uint8_t (&bytes)[kMacropixelBytes]) const {
    makeLone(lines, k, bytes);
    bytes[kRightLuma] = lumaOf(lines, 2 * k + 1);
  }

  /// The macropixel of a lone last pixel 2k. Nothing is sampled for the place beside it, whose luma stays 0.
  void makeLone(const SourceLines (&lines)[taps], std::ptrdiff_t k, uint8_t (&bytes)[kMacropixelBytes]) const {
    constexpr int chroma = 1 - luma;
    const auto firstByte = [](std::ptrdiff_t macropixel) { return macropixel * kMacropixelBytes + chroma; };
    const auto secondByte = [](std::ptrdiff_t macropixel) { return macropixel * kMacropixelBytes + chroma + 2; };
    bytes[chroma] = sampleByte<taps>(lines, entry(k), chromaTap_, firstByte);
    bytes[chroma + 2] = sampleByte<taps>(lines, entry(k), chromaTap_, secondByte);
    bytes[kLeftLuma] = lumaOf(lines, 2 * k);
    bytes[kRightLuma] = 0;
  }

private:
  static constexpr int kLeftLuma = swapped ? luma + 2 : luma;
  static constexpr int kRightLuma = swapped ? luma : luma + 2;

  [[nodiscard]] uint8_t lumaOf(const SourceLines (&lines)[taps], std::ptrdiff_t pixel) const {
    const auto byteOf = [this](std::ptrdiff_t at) { return slotOf(at) * 2 + luma; };
    return sampleByte<taps>(lines, entry(pixel), AsBuilt{}, byteOf);
  }

  [[nodiscard]] const int32_t *entry(std::ptrdiff_t position) const { return xTable_ + position * kEntryWords<taps>; }

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

template <std::size_t taps, int luma, bool swapped>
void resizeLines(const Job &job) {
  const ConvertParams &p = job.params;
  const LineResizer<taps, luma, swapped> resizer(job);
  const std::ptrdiff_t outPitch = p.outStride;
  const std::ptrdiff_t pairs = p.outWidth / 2;
  const auto tail = static_cast<std::size_t>(lineBytes(p.outWidth, outPitch) - pairs * kMacropixelBytes);
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const SourceLineSet<taps, AsBuilt> lines(p.inBuf[0], p.inStride, job.yTable + j * kEntryWords<taps>, AsBuilt{});
    uint8_t *out = p.outBuf[0] + j * outPitch;
    uint8_t bytes[kMacropixelBytes];
    for (std::ptrdiff_t k = 0; k < pairs; ++k, out += kMacropixelBytes) {
      resizer.make(lines.pair, k, bytes);
      std::memcpy(out, bytes, sizeof bytes);
    }
    if (tail > 0) {
      resizer.makeLone(lines.pair, pairs, bytes);
      std::memcpy(out, bytes, tail);
    }
  }
}

/// resizeLines for the byte order of the picture.
template <std::size_t taps, bool swapped>
void resizeOrder(const Job &job) {
  if (packedLayout(job.packedVariant).firstLuma() == 0) {
    resizeLines<taps, 0, swapped>(job);
  } else {
    resizeLines<taps, 1, swapped>(job);
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
    resizeOrder<1, false>(job);
  }
}

void resizePacked422Swapped(const Job &job) {
  if (!resizedPackedByRows(job)) {
    resizeOrder<1, true>(job);
  }
}

void resizePacked422AntiAlias(const Job &job) {
  resizeOrder<kFilterTaps, false>(job);
}

} // namespace zqcc
