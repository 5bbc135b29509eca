#include "yuv/rgb24_input.h"

#include "kernels/layouts.h"
#include "vector/tile.h"

namespace zqcc {
namespace {

template <Turn turn>
void convertRgb24(const Job &job) {
  const ConvertParams &p = job.params;
  runTileInBlocks(job, kTile<Rgb24Bytes::Layout, PackRgb, turn>, Rgb24Bytes::view(p, p.outWidth, p.outHeight),
                  targetOf<turn, 2>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight),
                  {0, 0, p.outWidth, p.outHeight});
}

} // namespace

void convertRgb24ToRgb565(const Job &job) {
  convertRgb24<Turn::Upright>(job);
}
void convertRgb24ToRgb565Left(const Job &job) {
  convertRgb24<Turn::Left>(job);
}
void convertRgb24ToRgb565Right(const Job &job) {
  convertRgb24<Turn::Right>(job);
}

} // namespace zqcc
