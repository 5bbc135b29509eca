#include "frame/route.h"

#include "base/picture_shape.h"
#include "frame/routine_tables.h"
#include "yuv/yuv_to_yuv.h"

namespace zqcc {
namespace {

bool isQuarterTurn(uint32_t rotation) {
  return rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT;
}
bool isTurn(uint32_t rotation) {
  return isQuarterTurn(rotation) || rotation == ROTATION_180;
}

Route refused(uint32_t code) {
  Route route;
  route.code = code;
  return route;
}

/// A cell of a table; an empty one refuses the mode.
Route served(Routine routine, TableFormat tables) {
  Route route;
  route.code = routine != nullptr ? CC_OK : CC_ERR_ARGUMENT;
  route.routine = routine;
  route.tables = tables;
  return route;
}

/// Plain, filtered or box tables by quality.
TableFormat byQuality(uint32_t antiAlias, TableFormat plain) {
  if (antiAlias == 0) {
    return plain;
  }
  return antiAlias == 3 ? TableFormat::Box : TableFormat::Filtered;
}

// --- Same format
// ------------------------------------------------------------------------------------------------------

/// Row of the planar and RGB tables. Quality without resizing lands in a row whose routines read tables that were never
/// built, and is refused.
constexpr uint32_t kNoRow = 3;
uint32_t rowOf(const ConvertParams &p) {
  if (p.antiAlias != 0 && p.isResize == 0) {
    return kNoRow;
  }
  return (p.antiAlias != 0 ? 1U : 0U) + p.isResize;
}

Route samePlanar420(const ConvertParams &p) {
  const uint32_t row = rowOf(p);
  if (row == kNoRow) {
    return refused(CC_ERR_ARGUMENT);
  }
  const uint32_t column =
      p.rotation == ROTATION_180 ? SAME_HALF : (isQuarterTurn(p.rotation) ? SAME_QUARTER : SAME_UPRIGHT);
  const TableFormat plain = isTurn(p.rotation) ? TableFormat::Nearest : TableFormat::Bilinear;
  Route route = served(SAME_PLANAR420[3 * row + column], byQuality(p.antiAlias, plain));
  route.sizedByInput = p.isResize == 1 || column != SAME_UPRIGHT;
  route.fromStrideEnd = p.isResize == 1 && column == SAME_HALF;
  return route;
}

Route sameRgb16(const ConvertParams &p, uint32_t quarter) {
  const uint32_t row = rowOf(p);
  if (row == kNoRow) {
    return refused(CC_ERR_ARGUMENT);
  }
  return served(SAME_RGB16[quarter + 2 * row], byQuality(p.antiAlias, TableFormat::Grouped));
}

Route samePacked422(const ConvertParams &p, uint32_t quarter) {
  const bool swappedLuma = p.inType >= COLOR_YUV422_YUYV2;
  TableFormat tables = TableFormat::Nearest;
  if (quarter == SAME_UPRIGHT) {
    tables = swappedLuma ? TableFormat::Bilinear : byQuality(p.antiAlias, TableFormat::Bilinear);
  }
  return served(SAME_PACKED422[quarter + 2 * p.isResize], tables);
}

Route sameFormatRoute(const ConvertParams &p) {
  if (p.antiAlias > 2) {
    return refused(CC_ERR_ARGUMENT);
  }
  const uint32_t quarter = isQuarterTurn(p.rotation) ? SAME_QUARTER : SAME_UPRIGHT;
  Route route;
  if (isPlanar420(p.inType)) {
    route = samePlanar420(p);
  } else if (isRgb16(p.inType)) {
    route = sameRgb16(p, quarter);
  } else if (isSemiPlanar(p.inType)) {
    route = served(SAME_SEMI_PLANAR[quarter + 2 * p.isResize], TableFormat::Nearest);
    route.ownPairs = quarter == SAME_UPRIGHT;
  } else if (isPacked422(p.inType)) {
    route = samePacked422(p, quarter);
  } else {
    return refused(CC_ERR_IN_TYPE);
  }
  route.fromLastInputLine = p.rotation == ROTATION_90_RIGHT && (isSemiPlanar(p.inType) || isPacked422(p.inType));
  route.copies = p.isResize == 0 && !isQuarterTurn(p.rotation) && !(isPlanar420(p.inType) && isTurn(p.rotation));
  return route;
}

// --- Conversions
// ------------------------------------------------------------------------------------------------------

PlanarKind kindOf(int32_t type) {
  switch (type) {
  case COLOR_YUV444_PLANAR:
    return KIND_YUV444;
  case COLOR_YUV440_PLANAR:
    return KIND_YUV440;
  case COLOR_YUV411_PLANAR:
    return KIND_YUV411;
  case COLOR_YUV_QUARTER_HEIGHT:
    return KIND_QUARTER_HEIGHT;
  case COLOR_RGB888_PLANAR:
    return KIND_PLANAR_RGB;
  default:
    return KIND_YUV420_OR_422;
  }
}

Route directToRgb565(const ConvertParams &p) {
  uint32_t column = isTurn(p.rotation) ? DIRECT_TURNED : DIRECT_UPRIGHT;
  if (p.rotation == ROTATION_FLIP_V) {
    column = DIRECT_FLIPPED;
  }
  Route route = served(PLANAR_TO_RGB565[kindOf(p.inType)][column], TableFormat::None);
  route.scales = false;
  route.fromStrideEnd = p.rotation == ROTATION_180 || p.rotation == ROTATION_90_RIGHT;
  return route;
}

/// Types with members for every turn: the turned ones read grouped tables whatever the quality.
Route turnedOrFiltered(const ConvertParams &p, uint32_t turned, uint32_t filtered, uint32_t plain) {
  if (isTurn(p.rotation)) {
    Route route = served(RESIZE_TO_RGB565[turned], TableFormat::Grouped);
    route.fromStrideEnd = p.rotation == ROTATION_180;
    return route;
  }
  return served(RESIZE_TO_RGB565[p.antiAlias != 0 ? filtered : plain], byQuality(p.antiAlias, TableFormat::Grouped));
}

Route resizeYuv420Or422(const ConvertParams &p) {
  const uint32_t ratio = ratioClassOf(p);
  uint32_t turned = RESIZE_ROT5;
  if (isQuarterTurn(p.rotation)) {
    turned = (p.rotation == ROTATION_90_LEFT ? RESIZE_ROT3 : RESIZE_ROT4) + ratio;
  }
  return turnedOrFiltered(p, turned, RESIZE_FILTERED, RESIZE_UPRIGHT + ratio);
}

Route resizeToRgb565(const ConvertParams &p) {
  const uint32_t filtered = p.antiAlias != 0 ? 1 : 0;
  const TableFormat tables = byQuality(p.antiAlias, TableFormat::Grouped);
  switch (kindOf(p.inType)) {
  case KIND_YUV444:
    return served(RESIZE_TO_RGB565[RESIZE_YUV444 + filtered], tables);
  case KIND_YUV440:
    return served(RESIZE_TO_RGB565[RESIZE_YUV440 + filtered], tables);
  case KIND_YUV411:
    return served(RESIZE_TO_RGB565[RESIZE_YUV411 + filtered], tables);
  case KIND_QUARTER_HEIGHT:
    return served(RESIZE_TO_RGB565[RESIZE_QUARTER_HEIGHT + filtered], tables);
  case KIND_PLANAR_RGB:
    return turnedOrFiltered(p, RESIZE_PLANAR_RGB_TURNED + p.rotation - ROTATION_90_LEFT, RESIZE_PLANAR_RGB + 1,
                            RESIZE_PLANAR_RGB);
  default:
    return resizeYuv420Or422(p);
  }
}

Route keepsSize(Routine routine) {
  Route route = served(routine, TableFormat::None);
  route.scales = false;
  route.copies = true;
  return route;
}

Route planarRoute(const ConvertParams &p) {
  if (p.outType == COLOR_RGB24) {
    return served(PLANAR_TO_RGB24[p.isResize], TableFormat::RunLength);
  }
  if (isPlanar420(p.outType)) {
    return keepsSize(copyPlanarToYuv420Planar);
  }
  if (!isRgb16(p.outType)) {
    return refused(CC_ERR_OUT_TYPE);
  }
  return p.rotation == ROTATION_FLIP_V || p.isResize == 0 ? directToRgb565(p) : resizeToRgb565(p);
}

/// Converts what the planes are once turned; the flip is no quarter turn, so it never meets the pre-pass.
Route turnedPlanarRoute(const ConvertParams &p) {
  Route route = planarRoute(turnedDescription(p));
  route.prePass = PrePass::TurnPlanes;
  return route;
}

Route semiPlanarRoute(const ConvertParams &p) {
  ConvertParams planar = p;
  planar.inType = COLOR_YUV420_PLANAR;
  Route route = planarRoute(planar);
  route.prePass = PrePass::SplitChroma;
  return route;
}

Route packedRoute(const ConvertParams &p) {
  if (isRgb16(p.outType)) {
    Route route = served(PACKED422_TO_RGB16[p.isResize], TableFormat::Nearest);
    route.fromStrideEnd = p.isResize == 0 && p.rotation == ROTATION_180;
    return route;
  }
  if (p.outType == COLOR_RGB24) {
    return served(PACKED422_TO_RGB24[p.isResize], TableFormat::Nearest);
  }
  return p.outType == COLOR_YUV420_PLANAR ? keepsSize(convertPacked422ToYuv420Planar) : refused(CC_ERR_OUT_TYPE);
}

Route rgb24Route(const ConvertParams &p) {
  if (p.outType != COLOR_RGB565) {
    return {}; // succeeds without a word: there is nothing to convert to
  }
  const uint32_t turn = p.rotation == ROTATION_90_LEFT ? 1 : (p.rotation == ROTATION_90_RIGHT ? 2 : 0);
  return served(RGB24_TO_RGB565[3 * p.isResize + turn], TableFormat::Grouped);
}

Route conversionRoute(const ConvertParams &p) {
  if (isSemiPlanar(p.inType)) {
    return semiPlanarRoute(p);
  }
  if (isPlanar(p.inType)) {
    const bool turnsPlanes = p.isResize == 1 && isOtherChroma(p.inType) && isQuarterTurn(p.rotation);
    return turnsPlanes ? turnedPlanarRoute(p) : planarRoute(p);
  }
  if (isPacked422(p.inType)) {
    return packedRoute(p);
  }
  return p.inType == COLOR_RGB24 ? rgb24Route(p) : refused(CC_ERR_IN_TYPE);
}

} // namespace

ResizeRatioClass ratioClassOf(const ConvertParams &p) {
  for (int k = 1; k <= 10; ++k) {
    if (p.outWidth == p.inWidth >> k && p.outHeight == p.inHeight >> k) {
      return RATIO_POW2_DOWN;
    }
  }
  const auto times = [](int32_t size, int64_t factor) { return size * factor; };
  if (times(p.inWidth, 3) == times(p.outWidth, 4) && times(p.inHeight, 3) == times(p.outHeight, 4)) {
    return RATIO_THREE_QUARTERS;
  }
  if (times(p.inWidth, 3) == times(p.outWidth, 2) && times(p.inHeight, 3) == times(p.outHeight, 2)) {
    return RATIO_THREE_HALVES;
  }
  if (p.outWidth == times(p.inWidth, 2) && p.outHeight == times(p.inHeight, 2)) {
    return RATIO_DOUBLE;
  }
  return RATIO_GENERAL;
}

ConvertParams turnedDescription(const ConvertParams &params) {
  ConvertParams turned = params;
  turned.inWidth = params.inHeight;
  turned.inHeight = params.inWidth;
  turned.inStride = params.inHeight;
  turned.outWidth = params.outHeight;
  turned.outHeight = params.outWidth;
  turned.rotation = ROTATION_NONE;
  switch (params.inType) {
  case COLOR_YUV440_PLANAR:
    turned.inType = COLOR_YUV422_PLANAR;
    break;
  case COLOR_YUV411_PLANAR:
    turned.inType = COLOR_YUV_QUARTER_HEIGHT;
    break;
  case COLOR_YUV_QUARTER_HEIGHT:
    turned.inType = COLOR_YUV411_PLANAR;
    break;
  default:
    break;
  }
  return turned;
}

Route routeOf(const ConvertParams &params) {
  if (params.isResize > 1 || params.rotation > 7 || params.antiAlias > 3) {
    return refused(CC_ERR_ARGUMENT);
  }
  Route route = params.inType == params.outType ? sameFormatRoute(params) : conversionRoute(params);
  if (params.isResize == 0) {
    route.tables = TableFormat::None;
  }
  return route;
}

} // namespace zqcc
