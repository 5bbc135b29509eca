#include "yuv/yuv_to_yuv.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "kernels/copy_lines.h"
#include "tables/packed_layout.h"

#include <cstring>

namespace zqcc {
namespace {

void copyChroma(const ConvertParams &p, int plane) {
  const int32_t columns = p.outWidth / 2;
  const PictureSize planes = planesSize(p);
  const ChromaLimits limits = halfPitchLimits(p.inType, planes.width, planes.height, p.inStride);
  const auto whole = static_cast<std::size_t>(smaller(columns, limits.column + 1));
  const auto missing = static_cast<std::size_t>(columns) - whole;
  const std::ptrdiff_t inPitch = p.inStride >> 1;
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  for (int32_t k = 0; k < p.outHeight / 2; ++k) {
    const uint8_t *from = p.inBuf[plane] + smaller(2 * k, limits.line) * inPitch;
    uint8_t *to = p.outBuf[plane] + k * outPitch;
    std::memcpy(to, from, whole);
    std::memset(to + whole, from[limits.column], missing);
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

} // namespace

void deinterleaveChroma(const ConvertParams &params, uint8_t *first, uint8_t *second) {
  if (params.inHeight < 2 || params.inWidth <= 0) {
    return;
  }
  const int32_t pairs = params.inWidth == 1 ? 1 : params.inWidth / 2;
  const std::ptrdiff_t pitch = params.inStride >> 1;
  for (int32_t k = 0; k < params.inHeight / 2; ++k) {
    const uint8_t *from = params.inBuf[1] + std::ptrdiff_t{k} * params.inStride;
    for (int32_t i = 0; i < pairs; ++i) {
      first[k * pitch + i] = from[2 * i];
      second[k * pitch + i] = from[2 * i + 1];
    }
  }
}

void copyPlanarToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  if (p.outHeight < 2) {
    return; // a single line has no chroma line
  }
  copyChroma(p, 1);
  copyChroma(p, 2);
}

void convertPacked422ToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  const PackedLayout layout = packedLayout(job.packedVariant);
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const uint8_t *from = p.inBuf[0] + std::ptrdiff_t{j} * p.inStride;
    unpackLuma(from, p.outBuf[0] + std::ptrdiff_t{j} * p.outStride, p.outWidth, layout);
    if (j % 2 == 0 && j / 2 < p.outHeight / 2) {
      unpackChroma(from, p.outBuf[1] + j / 2 * outPitch, p.outBuf[2] + j / 2 * outPitch, p.outWidth / 2, layout);
    }
  }
}

} // namespace zqcc
