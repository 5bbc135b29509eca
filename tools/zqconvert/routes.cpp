#include "routes.h"

#include "color_types.h"
#include "zqColorConversion.h"

namespace zqconvert {

namespace {

bool isPlanar420(int type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR;
}
bool isQuarterTurn(uint32_t rotation) {
  return rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT;
}

/// Planar YUV whose planes are turned beforehand when a resizing conversion turns.
bool isTurnedBeforehand(int type) {
  return type == COLOR_YUV444_PLANAR || type == COLOR_YUV440_PLANAR || type == COLOR_YUV411_PLANAR ||
         type == COLOR_YUV_QUARTER_HEIGHT;
}

bool exists(const Route &route) {
  const Family in = colorType(route.inType).family;
  const bool toRgb16 = colorType(route.outType).family == Family::Rgb16;
  if (route.inType == route.outType) {
    return isPlanar420(route.inType) || in == Family::SemiPlanar || in == Family::Packed422 || in == Family::Rgb16;
  }
  switch (in) {
  case Family::Planar:
  case Family::SemiPlanar:
    return toRgb16 || route.outType == COLOR_RGB24 || isPlanar420(route.outType);
  case Family::Packed422:
    return toRgb16 || route.outType == COLOR_RGB24 || route.outType == COLOR_YUV420_PLANAR;
  case Family::Rgb24:
    return route.outType == COLOR_RGB565;
  default:
    return false;
  }
}

bool turnsSameType(const Route &route) {
  return isQuarterTurn(route.rotation) || (isPlanar420(route.inType) && route.rotation == ROTATION_180);
}

bool turnsConversion(const Route &route) {
  if (isPlanar420(route.outType)) {
    return false;
  }
  const Family in = colorType(route.inType).family;
  if (in == Family::Packed422) {
    return route.rotation != ROTATION_FLIP_V;
  }
  if (in == Family::Rgb24) {
    return isQuarterTurn(route.rotation);
  }
  if (route.outType == COLOR_RGB24) {
    return route.scaled ? isTurnedBeforehand(route.inType) && isQuarterTurn(route.rotation)
                        : route.rotation == ROTATION_FLIP_V;
  }
  if (!route.scaled || isQuarterTurn(route.rotation)) {
    return true;
  }
  return route.rotation == ROTATION_180 && !isTurnedBeforehand(route.inType);
}

const char *optionName(uint32_t rotation) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return "--rotate left";
  case ROTATION_90_RIGHT:
    return "--rotate right";
  case ROTATION_180:
    return "--rotate 180";
  default:
    return "--flip";
  }
}

/// Whether the library resamples otherwise for another quality.
bool hasFilters(const Route &route) {
  const Family in = colorType(route.inType).family;
  const bool upright = route.rotation == ROTATION_NONE;
  if (!route.scaled) {
    return false;
  }
  if (route.inType == route.outType) {
    const bool lumaInOrder = in == Family::Packed422 && route.inType < COLOR_YUV422_YUYV2;
    return upright && (isPlanar420(route.inType) || in == Family::Rgb16 || lumaInOrder);
  }
  const bool planes = in == Family::Planar || in == Family::SemiPlanar;
  return planes && colorType(route.outType).family == Family::Rgb16 && (upright || isTurnedBeforehand(route.inType));
}

std::string whyNotQuality(const Route &route) {
  if (!route.scaled || route.quality == 0) {
    return {};
  }
  if (route.inType != route.outType) {
    // The boxes of a side that does not shrink hold no sample, and the picture would come out black or green there.
    return route.quality == 3 && !route.reduced && hasFilters(route)
               ? "--quality 3 is for reducing: both sides must become smaller (qualities 0 to 2 enlarge)"
               : "";
  }
  if (route.quality > 2) {
    return "--quality 3 is for conversions; without one (" + shortName(route.inType) + " stays) it goes up to 2";
  }
  const bool planar = isPlanar420(route.inType);
  const bool rgb = colorType(route.inType).family == Family::Rgb16;
  if (route.rotation != ROTATION_NONE && (planar || rgb)) {
    return "--quality cannot be combined with " + std::string(optionName(route.rotation)) + " while " +
           shortName(route.inType) + " stays " + shortName(route.inType);
  }
  return {};
}

} // namespace

std::string whyNot(const Route &route) {
  const std::string pair = shortName(route.inType) + " to " + shortName(route.outType);
  if (!exists(route)) {
    return "the library has no conversion from " + pair;
  }
  if (route.scaled && route.inType != route.outType && isPlanar420(route.outType)) {
    return "the library does not scale from " + pair + "; convert first, then scale the result";
  }
  if (route.rotation != ROTATION_NONE) {
    const bool turns = route.inType == route.outType ? turnsSameType(route) : turnsConversion(route);
    if (!turns) {
      return "the library has no " + std::string(optionName(route.rotation)) + " from " + pair +
             (route.scaled ? " with --scale" : "");
    }
  }
  return whyNotQuality(route);
}

std::string whyQualityIsIdle(const Route &route) {
  if (route.quality == 0 || hasFilters(route)) {
    return {};
  }
  if (!route.scaled) {
    return "--quality changes nothing without --scale";
  }
  const std::string pair = shortName(route.inType) + " to " + shortName(route.outType);
  return "--quality changes nothing from " + pair +
         (route.rotation == ROTATION_NONE ? "" : " with " + std::string(optionName(route.rotation)));
}

} // namespace zqconvert
