#include "resize_rgb/packed422.h"

#include "kernels/arithmetic.h"
#include "kernels/placement.h"
#include "kernels/writers.h"
#include "tables/packed_layout.h"
#include "vector/packed_rows.h"

namespace zqcc {
namespace {

/// Output (i, j) goes to origin + i * column + j * line.
struct PixelGrid {
  uint8_t *origin;
  std::ptrdiff_t column;
  std::ptrdiff_t line;
};

/// The flip is not made: the picture stays upright.
Turn servedTurn(const ConvertParams &p) {
  const Turn turn = turnOf(p.rotation);
  return turn == Turn::Flip ? Turn::Upright : turn;
}

template <int pixelBytes>
Target targetFor(const ConvertParams &p, Turn turn) {
  Target target{};
  withTurn<Turn::Upright, Turn::Left, Turn::Right, Turn::Half>(turn, [&](auto known) {
    target = targetOf<known, pixelBytes>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  });
  return target;
}

template <int pixelBytes>
PixelGrid gridFor(const Target &target, Turn turn) {
  PixelGrid grid{};
  withTurn<Turn::Upright, Turn::Left, Turn::Right, Turn::Half>(turn, [&](auto known) {
    grid = {target.origin, columnStep<known, pixelBytes>(target.stride), lineStep<known, pixelBytes>(target.stride)};
  });
  return grid;
}

struct Store565 {
  static void put(uint8_t *to, uint32_t pixel) { storePixelAnywhere(to, pixel); }
};

struct Store24 {
  static void put(uint8_t *to, const Bgr &pixel) { Rgb24Writer<Turn::Upright>::one(to, pixel); }
};

/// One output line from one source line: output pair i takes the two luma samples and the chroma of source macropixel
/// x[i / 2], whichever pixels those are.
template <class Arithmetic, class Store>
void resizeLine(const Arithmetic &arithmetic, const uint8_t *from, const PackedLayout &layout, const int32_t *x,
                int32_t width, uint8_t *to, std::ptrdiff_t step) {
  for (int32_t i = 0; i < width; i += 2, to += 2 * step) {
    const uint8_t *macropixel = from + x[i / 2] * kMacropixelBytes;
    const ColorTerms terms = arithmetic.terms(macropixel[layout.u], macropixel[layout.v]);
    Store::put(to, arithmetic.template pixel<0, 0>(terms, macropixel[layout.left]));
    if (i + 1 < width) {
      Store::put(to + step, arithmetic.template pixel<0, 1>(terms, macropixel[layout.right]));
    }
  }
}

template <class Arithmetic, class Store>
void resizePacked(const Job &job, const PixelGrid &grid) {
  const ConvertParams &p = job.params;
  const Arithmetic arithmetic(*job.matrix);
  const PackedLayout layout = packedLayout(job.packedVariant);
  for (int32_t j = 0; j < p.outHeight; ++j) {
    resizeLine<Arithmetic, Store>(arithmetic, p.inBuf[0] + std::ptrdiff_t{job.yTable[j]} * p.inStride, layout,
                                  job.xTable, p.outWidth, grid.origin + j * grid.line, grid.column);
  }
}

} // namespace

void resizePacked422ToRgb565(const Job &job) {
  const Turn turn = servedTurn(job.params);
  const Target target = targetFor<2>(job.params, turn);
  if (!resizePackedByRows16(job, turn, target)) {
    resizePacked<MatrixPlain, Store565>(job, gridFor<2>(target, turn));
  }
}

void resizePacked422ToRgb24(const Job &job) {
  const Turn turn = servedTurn(job.params);
  const Target target = targetFor<3>(job.params, turn);
  if (!resizePackedByRows24(job, turn, target)) {
    resizePacked<MatrixRgb24, Store24>(job, gridFor<3>(target, turn));
  }
}

} // namespace zqcc
