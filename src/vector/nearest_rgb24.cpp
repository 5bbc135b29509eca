#include "vector/nearest_rgb24.h"

#include "base/limits.h"
#include "vector/matrix_constants.h"
#include "vector/rgb24.h"

#include <cstring>

namespace zqcc {
namespace {

/// Pixels that are made at a time: their rows of samples stay in the first-level cache.
constexpr int32_t kPicked = 512;
static_assert(kPicked % kPlanGroup == 0);

constexpr std::ptrdiff_t kPixelBytes = 3;

/// Where less than a row is left, the stages write more than there is room for in the picture.
void makeShort(ColourRows stage, const SampleRows &rows, const NearestLines &lines, std::ptrdiff_t x, int32_t pixels,
               const ColourConstants &constants) {
  uint8_t made[2][kLeastPixels * kPixelBytes];
  uint8_t *const to[2] = {made[0], made[1]};
  stage(rows, to, kLeastPixels, 0, constants);
  for (int32_t line = 0; line < lines.lines; ++line) {
    std::memcpy(lines.to[line] + x * kPixelBytes, made[line], static_cast<std::size_t>(pixels * kPixelBytes));
  }
}

} // namespace

bool NearestRgb24::prepare(const Job &job, int32_t lastChroma) {
  const ConvertParams &p = job.params;
  plan_ = job.plan;
  pick_ = PICK_ROW.in(job.levels);
  pair_ = MATRIX_RGB24_FULL_PAIR.in(job.levels);
  single_ = MATRIX_RGB24_FULL.in(job.levels);
  width_ = p.outWidth;
  // Plans take chroma lines for half as long as luma's. Where output lines overlap, the order of the stores shows; it
  // is that of the portable code.
  return plan_ != nullptr && pick_ != nullptr && pair_ != nullptr && single_ != nullptr &&
         lastChroma >= p.inWidth / 2 - 1 && p.outStride >= kPixelBytes * p.outWidth &&
         makeMatrixConstants(*job.matrix, constants_);
}

void NearestRgb24::make(const NearestLines &lines) const {
  alignas(64) uint8_t y[2][kPicked];
  alignas(64) uint8_t u[kPicked];
  alignas(64) uint8_t v[kPicked];
  const ColourRows stage = lines.lines == 2 ? pair_ : single_;
  const SampleRows rows{{y[0], y[1]}, u, v};
  for (int32_t x = 0; x < width_; x += kPicked) {
    const int32_t pixels = smaller(width_ - x, kPicked);
    const int32_t first = x / kPlanGroup;
    const int32_t groups = planGroups(pixels);
    pick_(lines.u, plan_->chroma, first, groups, u);
    pick_(lines.v, plan_->chroma, first, groups, v);
    for (int32_t line = 0; line < lines.lines; ++line) {
      pick_(lines.luma[line], plan_->picked, first, groups, y[line]);
    }
    if (pixels < kLeastPixels) {
      makeShort(stage, rows, lines, x, pixels, constants_);
    } else {
      uint8_t *const to[2] = {lines.to[0] + x * kPixelBytes,
                              lines.lines == 2 ? lines.to[1] + x * kPixelBytes : nullptr};
      stage(rows, to, pixels, 0, constants_);
    }
  }
}

} // namespace zqcc
