#include "frame/route.h"

#include "base/picture_shape.h"
#include "base/turn.h"
#include "frame/routine_tables.h"
#include "tables/packed_layout.h"
#include "yuv/yuv_to_yuv.h"

namespace zqcc {
namespace {

// Every frame asks for its route. Functions below have one named result or none, so that it is made where the caller
// wants it: a copy would read in wide words what has just been written field by field, and wait for it, which costs
// a small picture as much as a quarter of its pixels.

/// A quarter or half turn.
bool isRotation(Turn turn) {
  return isQuarterTurn(turn) || turn == Turn::Half;
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

/// As served, for a routine that vector code helps to resize.
Route planned(Routine routine, TableFormat tables, PlanKind plan) {
  Route route = served(routine, tables);
  route.plan = plan;
  return route;
}

/// Plain, filtered or box tables by quality.
TableFormat byQuality(uint32_t antiAlias, TableFormat plain) {
  if (antiAlias == 0) {
    return plain;
  }
  return antiAlias == 3 ? TableFormat::Box : TableFormat::Filtered;
}

// --- Same format -----------------------------------------------------------------------------------------------------

/// Row of the planar and RGB tables. Quality without resizing lands in a row whose routines read tables that were never
/// built, and is refused.
constexpr uint32_t kNoRow = 3;
uint32_t rowOf(const ConvertParams &p) {
  if (p.antiAlias != 0 && p.isResize == 0) {
    return kNoRow;
  }
  return (p.antiAlias != 0 ? 1U : 0U) + p.isResize;
}

/// Reduced by whole numbers, bilinear positions are those of samples.
bool isReducedEvenly(int32_t in, int32_t out) {
  return out > 0 && in / out > 1 && in % out == 0;
}

PlanKind planOfPlanes(const ConvertParams &p, TableFormat tables) {
  if (tables == TableFormat::Filtered) {
    return PlanKind::FilteredPlanes420;
  }
  if (tables == TableFormat::Nearest) {
    return PlanKind::Planes420Turned;
  }
  return isReducedEvenly(p.inWidth, p.outWidth) && isReducedEvenly(p.inHeight, p.outHeight) ? PlanKind::Planes420Nearest
                                                                                            : PlanKind::Planes420;
}

Route samePlanar420(const ConvertParams &p, uint32_t row) {
  const Turn turn = turnOf(p.rotation);
  const TableFormat plain = isRotation(turn) ? TableFormat::Nearest : TableFormat::Bilinear;
  Route route = served(SAME_PLANAR420[kPlanar420Columns[turn] + 3 * row], byQuality(p.antiAlias, plain));
  route.sizedByInput = isRotation(turn);
  route.fromStrideEnd = p.isResize == 1 && turn == Turn::Half;
  route.plan = planOfPlanes(p, route.tables);
  return route;
}

Route sameRgb16(const ConvertParams &p, uint32_t row) {
  const Turn turn = turnOf(p.rotation);
  Route route = served(SAME_RGB16[kSameFormatColumns[turn] + 2 * row], byQuality(p.antiAlias, TableFormat::Grouped));
  if (p.antiAlias == 0) {
    route.plan = isQuarterTurn(turn) ? PlanKind::Rgb16Turned : PlanKind::Rgb16;
  } else if (route.tables == TableFormat::Filtered) {
    route.plan = PlanKind::FilteredRgb16;
  }
  return route;
}

PlanKind planOfPacked(TableFormat tables) {
  if (tables == TableFormat::Nearest) {
    return PlanKind::Packed;
  }
  return tables == TableFormat::Filtered ? PlanKind::FilteredPacked422 : PlanKind::Packed422;
}

Route samePacked422(const ConvertParams &p) {
  const Turn turn = turnOf(p.rotation);
  TableFormat tables = TableFormat::Nearest;
  if (!isQuarterTurn(turn)) {
    const bool swapped = packedLayout(packedVariantOf(p.inType)).isSwapped();
    tables = swapped ? TableFormat::Bilinear : byQuality(p.antiAlias, TableFormat::Bilinear);
  }
  Route route = served(SAME_PACKED422[kSameFormatColumns[turn] + 2 * p.isResize], tables);
  route.plan = planOfPacked(tables);
  return route;
}

Route sameSemiPlanar(const ConvertParams &p) {
  const Turn turn = turnOf(p.rotation);
  Route route = served(SAME_SEMI_PLANAR[kSameFormatColumns[turn] + 2 * p.isResize], TableFormat::Nearest);
  route.plan = PlanKind::SemiPlanar;
  route.ownPairs = !isQuarterTurn(turn);
  return route;
}

Route routeOfKeptType(const ConvertParams &p) {
  if (isSemiPlanar(p.inType)) {
    return sameSemiPlanar(p);
  }
  if (isPacked422(p.inType)) {
    return samePacked422(p);
  }
  if (!isPlanar420(p.inType) && !isRgb16(p.inType)) {
    return refused(CC_ERR_IN_TYPE);
  }
  const uint32_t row = rowOf(p);
  if (row == kNoRow) {
    return refused(CC_ERR_ARGUMENT);
  }
  return isPlanar420(p.inType) ? samePlanar420(p, row) : sameRgb16(p, row);
}

Route sameFormatRoute(const ConvertParams &p) {
  const Turn turn = turnOf(p.rotation);
  Route route = p.antiAlias > 2 ? refused(CC_ERR_ARGUMENT) : routeOfKeptType(p);
  route.fromLastInputLine = turn == Turn::Right && (isSemiPlanar(p.inType) || isPacked422(p.inType));
  route.copies = p.isResize == 0 && !isQuarterTurn(turn) && !(isPlanar420(p.inType) && turn == Turn::Half);
  return route;
}

// --- Conversions -----------------------------------------------------------------------------------------------------

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
  const Turn turn = turnOf(p.rotation);
  Route route = served(PLANAR_TO_RGB565[kindOf(p.inType)][kDirectColumns[turn]], TableFormat::None);
  route.scales = false;
  route.fromStrideEnd = turn == Turn::Half || turn == Turn::Right;
  return route;
}

/// A member that resizes by means of five points or of a box.
Route filteredTo565(uint32_t entry, uint32_t antiAlias) {
  const PlanKind plan = antiAlias == 3 ? PlanKind::Box : PlanKind::FivePoint;
  return planned(RESIZE_TO_RGB565[entry], byQuality(antiAlias, TableFormat::Grouped), plan);
}

/// A member of RESIZE_TO_RGB565 and what its vector code reads.
struct PlannedEntry {
  uint32_t entry;
  PlanKind plan;
};

Route turnedTo565(const PlannedEntry &plain, Turn turn) {
  Route route = planned(RESIZE_TO_RGB565[plain.entry], TableFormat::Grouped, plain.plan);
  route.fromStrideEnd = turn == Turn::Half;
  return route;
}

/// Types with members for every turn: the turned ones read grouped tables whatever the quality.
Route turnedOrFiltered(const ConvertParams &p, const PlannedEntry &plain, uint32_t filtered) {
  const Turn turn = turnOf(p.rotation);
  return !isRotation(turn) && p.antiAlias != 0 ? filteredTo565(filtered, p.antiAlias) : turnedTo565(plain, turn);
}

/// Types whose filtered member follows the plain one; neither is turned.
Route plainOrFiltered(const ConvertParams &p, const PlannedEntry &plain) {
  return p.antiAlias != 0 ? filteredTo565(plain.entry + 1, p.antiAlias)
                          : planned(RESIZE_TO_RGB565[plain.entry], TableFormat::Grouped, plain.plan);
}

PlanKind planOfRatio(ResizeRatioClass ratio) {
  switch (ratio) {
  case RATIO_POW2_DOWN:
    return PlanKind::Pow2;
  case RATIO_THREE_QUARTERS:
    return PlanKind::ThreeQuarters;
  case RATIO_THREE_HALVES:
    return PlanKind::ThreeHalves;
  case RATIO_DOUBLE:
    return PlanKind::Double;
  default:
    return PlanKind::General;
  }
}

Route resizeYuv420Or422(const ConvertParams &p) {
  const Turn turn = turnOf(p.rotation);
  const ResizeRatioClass ratio = turn == Turn::Half ? RATIO_GENERAL : ratioClassOf(p); // one half turn serves all
  return turnedOrFiltered(p, {RESIZE_YUV420_OR_422 + kResizeYuvEntries[turn] + ratio, planOfRatio(ratio)},
                          RESIZE_FILTERED);
}

Route resizeToRgb565(const ConvertParams &p) {
  switch (kindOf(p.inType)) {
  case KIND_YUV444:
    return plainOrFiltered(p, {RESIZE_YUV444, PlanKind::Yuv444});
  case KIND_YUV440:
    return plainOrFiltered(p, {RESIZE_YUV440, PlanKind::Yuv440});
  case KIND_YUV411:
    return plainOrFiltered(p, {RESIZE_YUV411, PlanKind::Yuv411});
  case KIND_QUARTER_HEIGHT:
    return plainOrFiltered(p, {RESIZE_QUARTER_HEIGHT, PlanKind::QuarterHeight});
  case KIND_PLANAR_RGB:
    return turnedOrFiltered(p, {RESIZE_PLANAR_RGB + kResizePlanarRgbEntries[turnOf(p.rotation)], PlanKind::PlanarRgb},
                            RESIZE_PLANAR_RGB + 1);
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
    return planned(PLANAR_TO_RGB24[p.isResize], TableFormat::RunLength, PlanKind::RunLength);
  }
  if (isPlanar420(p.outType)) {
    return keepsSize(copyPlanarToYuv420Planar);
  }
  if (!isRgb16(p.outType)) {
    return refused(CC_ERR_OUT_TYPE);
  }
  return turnOf(p.rotation) == Turn::Flip || p.isResize == 0 ? directToRgb565(p) : resizeToRgb565(p);
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

Route packedToRgb16(const ConvertParams &p) {
  Route route = planned(PACKED422_TO_RGB16[p.isResize], TableFormat::Nearest, PlanKind::Packed);
  route.fromStrideEnd = p.isResize == 0 && turnOf(p.rotation) == Turn::Half;
  return route;
}

Route packedRoute(const ConvertParams &p) {
  if (isRgb16(p.outType)) {
    return packedToRgb16(p);
  }
  if (p.outType == COLOR_RGB24) {
    return planned(PACKED422_TO_RGB24[p.isResize], TableFormat::Nearest, PlanKind::Packed);
  }
  return p.outType == COLOR_YUV420_PLANAR ? keepsSize(convertPacked422ToYuv420Planar) : refused(CC_ERR_OUT_TYPE);
}

Route rgb24Route(const ConvertParams &p) {
  if (p.outType != COLOR_RGB565) {
    return {}; // succeeds without a word: there is nothing to convert to
  }
  return planned(RGB24_TO_RGB565[kRgb24Columns[turnOf(p.rotation)] + 3 * p.isResize], TableFormat::Grouped,
                 PlanKind::Rgb24);
}

Route conversionRoute(const ConvertParams &p) {
  if (isSemiPlanar(p.inType)) {
    return semiPlanarRoute(p);
  }
  if (isPlanar(p.inType)) {
    const bool turnsPlanes = p.isResize == 1 && isOtherChroma(p.inType) && isQuarterTurn(turnOf(p.rotation));
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
  const bool modesAreKnown = params.isResize <= 1 && params.rotation <= 7 && params.antiAlias <= 3;
  Route route = !modesAreKnown                    ? refused(CC_ERR_ARGUMENT)
                : params.inType == params.outType ? sameFormatRoute(params)
                                                  : conversionRoute(params);
  if (params.isResize == 0) {
    route.tables = TableFormat::None;
    route.plan = PlanKind::None;
  }
  return route;
}

} // namespace zqcc
