#include "picture/reference/positions.h"

#include <algorithm>

namespace reference {

Turn turnOf(int32_t orientation) {
  switch (orientation) {
  case 2:
    return {false, true, false};
  case 3:
    return {false, true, true};
  case 4:
    return {false, false, true};
  case 5:
    return {true, false, false};
  case 6: // clockwise: the first column, from bottom to top, becomes the first line
    return {true, false, true};
  case 7:
    return {true, true, true};
  case 8: // anticlockwise: the last column becomes the first line
    return {true, true, false};
  default:
    return {false, false, false};
  }
}

ZqpRect cropOf(const ZqpConversion &c) {
  return c.crop.width == 0 && c.crop.height == 0 ? ZqpRect{0, 0, c.inWidth, c.inHeight} : c.crop;
}

Axis columnAxisOf(const ZqpConversion &c) {
  const Turn turn = turnOf(c.orientation);
  const ZqpRect crop = cropOf(c);
  return {crop.x, crop.width, turn.swapsAxes ? c.outHeight : c.outWidth, turn.mirrorsColumns};
}

Axis lineAxisOf(const ZqpConversion &c) {
  const Turn turn = turnOf(c.orientation);
  const ZqpRect crop = cropOf(c);
  return {crop.y, crop.height, turn.swapsAxes ? c.outWidth : c.outHeight, turn.mirrorsLines};
}

int64_t floorOf(int64_t a, int64_t b) {
  return a >= 0 ? a / b : -((-a + b - 1) / b);
}

Spot spotOf(const Axis &axis, Grid in, Grid out, int64_t k) {
  // Twice p: places are whole numbers of half pixels.
  const int64_t pixels = int64_t{1} << out.shift;
  int64_t twiceP = out.isLeft ? 2 * k * pixels + 1 : (2 * k + 1) * pixels;
  if (axis.isMirrored) {
    twiceP = 2 * axis.outSize - twiceP;
  }
  const int64_t twiceBegin = std::clamp<int64_t>(twiceP - pixels, 0, 2 * axis.outSize);
  const int64_t twiceEnd = std::clamp<int64_t>(twiceP + pixels, 0, 2 * axis.outSize);
  const int64_t inPixels = int64_t{1} << in.shift;
  // X = (2 W x0 + 2 p cw) / 2 W; t is X less half a sample, or less half a pixel, in samples.
  const auto tOf = [&](int64_t twice) {
    const int64_t x = 2 * axis.outSize * axis.cropBegin + twice * axis.cropSize;
    return x - axis.outSize * (in.isLeft ? 1 : inPixels);
  };
  return {tOf(twiceP), tOf(twiceBegin), tOf(twiceEnd), 2 * axis.outSize * inPixels};
}

Part partOf(const Axis &axis, Grid in) {
  return {axis.cropBegin >> in.shift, (axis.cropBegin + axis.cropSize - 1) >> in.shift};
}

Way wayOf(const Axis &axis, Grid in, Grid out, int64_t count, int32_t filter) {
  const bool keepsSize = axis.cropSize == axis.outSize;
  if (keepsSize && in.shift == out.shift) {
    bool isSame = true;
    for (int64_t k = 0; k < count; ++k) {
      const Spot spot = spotOf(axis, in, out, k);
      isSame = isSame && spot.t % spot.unit == 0;
    }
    if (isSame) {
      return Way::Same;
    }
  }
  if (keepsSize && out.shift > in.shift) {
    return Way::Area;
  }
  if (filter == ZQP_FILTER_AREA) {
    const bool isReduced = axis.cropSize << out.shift > axis.outSize << in.shift;
    return isReduced ? Way::Area : Way::Bilinear;
  }
  return filter == ZQP_FILTER_NEAREST ? Way::Nearest : Way::Bilinear;
}

} // namespace reference
