#include "picture/description.h"

#include <iterator>

namespace zqp {
namespace {

constexpr bool isSide(int32_t pixels) {
  return pixels >= 1 && pixels <= ZQP_MOST_PIXELS;
}

int32_t describeCrop(const ZqpConversion &conversion, ZqpRect &crop) {
  crop = conversion.crop;
  if (crop.width == 0 && crop.height == 0) {
    crop = {crop.x, crop.y, conversion.inWidth, conversion.inHeight};
  }
  const bool isInside = crop.x >= 0 && crop.y >= 0 && crop.width >= 1 && crop.height >= 1 &&
                        crop.width <= conversion.inWidth && crop.height <= conversion.inHeight &&
                        crop.x <= conversion.inWidth - crop.width && crop.y <= conversion.inHeight - crop.height;
  return isInside ? ZQP_OK : ZQP_ERR_CROP;
}

/// By what EXIF's number means.
constexpr Turn kTurns[] = {
    {false, false, false}, {false, true, false}, {false, true, true}, {false, false, true},
    {true, false, false},  {true, true, false},  {true, true, true},  {true, false, true},
};

int32_t describeTurn(int32_t orientation, Turn &turn) {
  if (orientation < 0 || orientation > static_cast<int32_t>(std::size(kTurns))) {
    return ZQP_ERR_ORIENTATION;
  }
  turn = kTurns[orientation == 0 ? 0 : orientation - 1];
  return ZQP_OK;
}

/// Beyond this share of red and blue, coefficients of green's chroma do not fit their 16 bits.
constexpr double kMostOfRedAndBlue = 0.8000001; // .8 as a float and what is computed from it

bool describeMatrix(const ZqpColours &from, Colours &to) {
  switch (from.matrix) {
  case ZQP_BT601:
    to.kr = 0.299;
    to.kb = 0.114;
    return true;
  case ZQP_BT709:
    to.kr = 0.2126;
    to.kb = 0.0722;
    return true;
  case ZQP_BT2020:
    to.kr = 0.2627;
    to.kb = 0.0593;
    return true;
  case ZQP_MATRIX_GIVEN:
    to.kr = static_cast<double>(from.kr);
    to.kb = static_cast<double>(from.kb);
    return to.kr > 0 && to.kb > 0 && to.kr + to.kb <= kMostOfRedAndBlue; // of which nothing holds for a NaN
  default:
    return false;
  }
}

int32_t describeColours(const ZqpColours &from, bool isRgb, Colours &to) {
  const bool isKnown = from.range >= ZQP_RANGE_USUAL && from.range <= ZQP_RANGE_FULL &&
                       from.siting >= ZQP_SITING_LEFT && from.siting <= ZQP_SITING_CENTRE;
  if (!describeMatrix(from, to) || !isKnown) {
    return ZQP_ERR_COLOURS;
  }
  to.isLimited = from.range == ZQP_RANGE_LIMITED || (from.range == ZQP_RANGE_USUAL && !isRgb);
  to.isLeft = from.siting == ZQP_SITING_LEFT;
  return ZQP_OK;
}

int32_t describeFormats(const ZqpConversion &conversion, Description &to) {
  to.in = formatOf(conversion.inFormat);
  to.out = formatOf(conversion.outFormat);
  if (to.in == nullptr || to.out == nullptr || !to.out->isOutput) {
    return ZQP_ERR_FORMAT;
  }
  const bool areSides = isSide(conversion.inWidth) && isSide(conversion.inHeight) && isSide(conversion.outWidth) &&
                        isSide(conversion.outHeight);
  to.inWidth = conversion.inWidth;
  to.inHeight = conversion.inHeight;
  to.outWidth = conversion.outWidth;
  to.outHeight = conversion.outHeight;
  return areSides ? ZQP_OK : ZQP_ERR_SIZE;
}

int32_t describeWays(const ZqpConversion &conversion, Description &to) {
  if (conversion.filter < ZQP_FILTER_BILINEAR || conversion.filter > ZQP_FILTER_AREA) {
    return ZQP_ERR_FILTER;
  }
  if (conversion.dither < ZQP_DITHER_NONE || conversion.dither > ZQP_DITHER_ORDERED) {
    return ZQP_ERR_DITHER;
  }
  to.filter = conversion.filter;
  to.isDithered = conversion.dither == ZQP_DITHER_ORDERED && to.out->family == Family::Rgb565;
  return ZQP_OK;
}

} // namespace

int32_t describe(const ZqpConversion &conversion, Description &description) {
  int32_t error = describeFormats(conversion, description);
  if (error == ZQP_OK) {
    error = describeCrop(conversion, description.crop);
  }
  if (error == ZQP_OK) {
    error = describeTurn(conversion.orientation, description.turn);
  }
  if (error == ZQP_OK) {
    error = describeWays(conversion, description);
  }
  if (error == ZQP_OK) {
    error = describeColours(conversion.inColours, description.in->isRgb(), description.inColours);
  }
  if (error == ZQP_OK) {
    error = describeColours(conversion.outColours, description.out->isRgb(), description.outColours);
  }
  const bool isTransposed = description.turn.isTransposed;
  description.width = isTransposed ? description.outHeight : description.outWidth;
  description.height = isTransposed ? description.outWidth : description.outHeight;
  return error;
}

} // namespace zqp
