#include "yuv/yuv_to_yuv.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "kernels/copy_lines.h"
#include "tables/packed_layout.h"
#include "vector/parts.h"
#include "vector/tile.h"

#include <cstring>

namespace zqcc {
namespace {

ChromaLimits chromaLimits(const ConvertParams &p) {
  const PictureSize planes = planesSize(p);
  return halfPitchLimits(p.inType, planes.width, planes.height, p.inStride);
}

/// The input's chroma line that makes line `k` of the output.
int32_t sourceLine(int32_t k, const ChromaLimits &limits) {
  return smaller(2 * k, limits.line);
}

void copyChroma(const ConvertParams &p, int plane) {
  const int32_t columns = p.outWidth / 2;
  const ChromaLimits limits = chromaLimits(p);
  const auto whole = static_cast<std::size_t>(smaller(columns, limits.column + 1));
  const auto missing = static_cast<std::size_t>(columns) - whole;
  const std::ptrdiff_t inPitch = p.inStride >> 1;
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  for (int32_t k = 0; k < p.outHeight / 2; ++k) {
    const uint8_t *from = p.inBuf[plane] + sourceLine(k, limits) * inPitch;
    uint8_t *to = p.outBuf[plane] + k * outPitch;
    std::memcpy(to, from, whole);
    std::memset(to + whole, from[limits.column], missing);
  }
}

/// `count` pairs of samples into two lines.
void splitPairs(const PairParts &parts, const uint8_t *pairs, uint8_t *first, uint8_t *second, int32_t count) {
  if (parts.part(pairs, first, second, count)) {
    return;
  }
  for (int32_t i = 0; i < count; ++i) {
    first[i] = pairs[2 * i];
    second[i] = pairs[2 * i + 1];
  }
}

/// copyChroma for both planes of pairs that have not been split. No sample is missing: the picture's input holds them.
void copyPairs(const Job &job) {
  const ConvertParams &p = job.params;
  const ChromaLimits limits = chromaLimits(p);
  const int32_t first = p.inType == COLOR_YUV420_PACK ? 1 : 2;
  const PairParts parts(job.levels);
  for (int32_t k = 0; k < p.outHeight / 2; ++k) {
    const std::ptrdiff_t line = std::ptrdiff_t{k} * (p.outStride >> 1);
    splitPairs(parts, p.inBuf[1] + std::ptrdiff_t{sourceLine(k, limits)} * p.inStride, p.outBuf[first] + line,
               p.outBuf[3 - first] + line, p.outWidth / 2);
  }
}

/// One line's luma, pixel pairs first, a lone last pixel from its own macropixel.
void unpackLuma(const uint8_t *from, uint8_t *to, int32_t width, const PackedLayout &layout) {
  int32_t x = 0;
  for (; x + 1 < width; x += 2, from += kMacropixelBytes) {
    to[x] = from[layout.left];
    to[x + 1] = from[layout.right];
  }
  if (x < width) {
    to[x] = from[layout.left];
  }
}

void unpackChroma(const uint8_t *from, uint8_t *u, uint8_t *v, int32_t columns, const PackedLayout &layout) {
  for (int32_t i = 0; i < columns; ++i, from += kMacropixelBytes) {
    u[i] = from[layout.u];
    v[i] = from[layout.v];
  }
}

void unpackLine(const MacropixelParts &parts, const uint8_t *from, const PartedLine &to, int32_t width,
                const PackedLayout &packed) {
  const PackedLayout layout = packed; // a copy, which no store can change
  const int32_t pairs = width / 2;
  if (parts.part(from, to, 2 * pairs)) {
    unpackLuma(from + pairs * kMacropixelBytes, to.y + 2 * pairs, width % 2, layout);
    return;
  }
  unpackLuma(from, to.y, width, layout);
  if (to.u != nullptr) {
    unpackChroma(from, to.u, to.v, pairs, layout);
  }
}

} // namespace

void deinterleaveChroma(LevelSet levels, const ConvertParams &params, uint8_t *first, uint8_t *second) {
  if (params.inHeight < 2 || params.inWidth <= 0) {
    return;
  }
  const int32_t pairs = params.inWidth == 1 ? 1 : params.inWidth / 2;
  const std::ptrdiff_t pitch = params.inStride >> 1;
  const PairParts parts(levels);
  for (int32_t k = 0; k < params.inHeight / 2; ++k) {
    splitPairs(parts, params.inBuf[1] + std::ptrdiff_t{k} * params.inStride, first + k * pitch, second + k * pitch,
               pairs);
  }
}

void copyPlanarToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  if (p.outHeight < 2) {
    return; // a single line has no chroma line
  }
  if (readsPairs(job)) {
    copyPairs(job);
    return;
  }
  copyChroma(p, 1);
  copyChroma(p, 2);
}

void convertPacked422ToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  const PackedLayout layout = packedLayout(job.packedVariant);
  const MacropixelParts parts(job.levels, layout);
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  for (int32_t j = 0; j < p.outHeight; ++j) {
    PartedLine to{p.outBuf[0] + std::ptrdiff_t{j} * p.outStride, nullptr, nullptr};
    if (j % 2 == 0 && j / 2 < p.outHeight / 2) {
      to.u = p.outBuf[1] + j / 2 * outPitch;
      to.v = p.outBuf[2] + j / 2 * outPitch;
    }
    unpackLine(parts, p.inBuf[0] + std::ptrdiff_t{j} * p.inStride, to, p.outWidth, layout);
  }
}

} // namespace zqcc
