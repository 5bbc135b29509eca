#include "sameformat/semi_planar.h"

#include "base/limits.h"
#include "kernels/copy_lines.h"
#include "sameformat/chroma_pairs.h"
#include "sameformat/nearest.h"
#include "sameformat/transpose.h"
#include "vector/nearest_planes.h"

#include <cstring>

namespace zqcc {

namespace {

/// Turns a plane. The left turn reads its lines from line 0 down, the right turn from line srcLines - 1 up; when that
/// runs out of lines, the first one fills what remains.
template <class Unit>
void turnLines(LevelSet levels, Turn turn, const PlaneTurn &plane, int32_t srcLines) {
  PlaneTurn part = plane;
  if (turn == Turn::Right) {
    part.lines = smaller(plane.lines, srcLines);
    part.src += std::ptrdiff_t{srcLines - part.lines} * plane.srcPitch;
  }
  quarterTurn<Unit>(levels, turn, part);
  part.dst += part.lines * static_cast<std::ptrdiff_t>(sizeof(Unit));
  part.lines = plane.lines - part.lines;
  part.src = plane.src;
  part.srcPitch = 0;
  quarterTurn<Unit>(levels, turn, part);
}

constexpr auto rotateLumaPlane = turnLines<uint8_t>;
constexpr auto rotateChromaPairs = turnLines<uint16_t>; ///< widths count pairs

void resizeLuma(const Job &job) {
  const ConvertParams &p = job.params;
  const PickedLines lines{p.inBuf[0], p.inStride, p.inHeight - 1, job.yTable};
  if (pickedByRows(job, Turn::Upright, PlaneUnit::Luma, {lines, p.outBuf[0], p.outStride, p.outWidth, p.outHeight})) {
    return;
  }
  const std::ptrdiff_t srcPitch = p.inStride;
  const std::ptrdiff_t dstPitch = p.outStride;
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const uint8_t *line = p.inBuf[0] + job.yTable[j] * srcPitch;
    uint8_t *out = p.outBuf[0] + j * dstPitch;
    for (int32_t i = 0; i < p.outWidth; ++i) {
      out[i] = line[job.xTable[i]];
    }
  }
}

/// Pair k of a chroma line follows the luma at column 2k; what is behind the input's last pair takes that one. `bytes`
/// is odd where the output line ends in the middle of a pair.
void resizePairs(const uint8_t *line, const PairLine &input, const int32_t *xTable, uint8_t *out, int32_t bytes) {
  const auto pairAt = [&](int32_t k) {
    return chromaPair(line, smaller(xTable[std::ptrdiff_t{k} * 2] >> 1, input.lastFirst), input.lastSecond);
  };
  const int32_t whole = bytes / 2;
  for (int32_t k = 0; k < whole; ++k) {
    const uint16_t pair = pairAt(k);
    std::memcpy(out + k * kPairBytes, &pair, kPairBytes);
  }
  if (bytes % 2 != 0) {
    const uint16_t pair = pairAt(whole);
    std::memcpy(out + whole * kPairBytes, &pair, 1);
  }
}

/// Every column has a pair of its own: no plan knows of a lone column's, which depends on the frame's stride.
bool hasWholePairs(const ConvertParams &p) {
  return p.inWidth % 2 == 0;
}

/// Chroma line l follows the luma of line 2l. The lone last line of an odd input has no chroma of its own and takes the
/// last there is.
void resizeChroma(const Job &job) {
  const ConvertParams &p = job.params;
  const std::ptrdiff_t srcPitch = p.inStride;
  const std::ptrdiff_t dstPitch = p.outStride;
  const int32_t lastLine = p.inHeight / 2 - 1;
  const int32_t lines = p.outHeight / 2;
  const PairLine input = pairLine(p.inWidth, p.inStride);
  const int32_t bytes = pairLineBytes(p.outWidth, p.outStride);
  const PickedLines picked{p.inBuf[1], p.inStride, lastLine, job.yTable, 1};
  if (hasWholePairs(p) &&
      pickedByRows(job, Turn::Upright, PlaneUnit::Chroma, {picked, p.outBuf[1], p.outStride, bytes, lines})) {
    return;
  }
  for (int32_t l = 0; l < lines; ++l) {
    const uint8_t *line = p.inBuf[1] + smaller(job.yTable[std::ptrdiff_t{l} * 2] >> 1, lastLine) * srcPitch;
    resizePairs(line, input, job.xTable, p.outBuf[1] + l * dstPitch, bytes);
  }
}

} // namespace

void copyYuv420SemiPlanar(const Job &job) {
  const ConvertParams &p = job.params;
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  const int32_t bytes = smaller(pairLineBytes(p.outWidth, p.inStride), pairLineBytes(p.outWidth, p.outStride));
  copyLines(p.inBuf[1], p.inStride, p.outBuf[1], p.outStride, bytes, p.outHeight / 2);
}

void rotateYuv420SemiPlanar(const Job &job) {
  const ConvertParams &p = job.params;
  const Turn turn = turnOf(p.rotation);
  rotateLumaPlane(job.levels, turn, {p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight},
                  p.inHeight);
  rotateChromaPairs(job.levels, turn,
                    {p.inBuf[1], p.inStride, p.outBuf[1], p.outStride, p.outWidth / 2, p.outHeight / 2},
                    p.inHeight / 2);
}

void resizeYuv420SemiPlanar(const Job &job) {
  resizeLuma(job);
  resizeChroma(job);
}

void resizeRotateYuv420SemiPlanar(const Job &job) {
  const ConvertParams &p = job.params;
  const Turn turn = turnOf(p.rotation);
  const PickedLines luma{p.inBuf[0], p.inStride, p.inHeight - 1, job.yTable};
  if (!pickedByRows(job, turn, PlaneUnit::Luma, {luma, p.outBuf[0], p.outStride, p.outWidth, p.outHeight})) {
    const NearestSource source{p.inBuf[0], p.inStride, p.inWidth - 1, p.inHeight - 1, job.xTable, job.yTable};
    resizeRotatePlane(turn, source, p.outBuf[0], p.outWidth, p.outHeight, p.outStride);
  }
  const PickedLines chroma{p.inBuf[1], p.inStride, p.inHeight / 2 - 1, job.yTable};
  if (!hasWholePairs(p) || !pickedByRows(job, turn, PlaneUnit::ChromaPair,
                                         {chroma, p.outBuf[1], p.outStride, p.outWidth / 2, p.outHeight / 2})) {
    const PairLine pairs = pairLine(p.inWidth, p.inStride);
    const NearestSource source{p.inBuf[1], p.inStride, pairs.lastFirst, p.inHeight / 2 - 1,
                               job.xTable, job.yTable, pairs.lastSecond};
    resizeRotateChromaPairs(turn, source, p.outBuf[1], p.outWidth / 2, p.outHeight / 2, p.outStride);
  }
}

} // namespace zqcc
