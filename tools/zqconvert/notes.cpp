#include "notes.h"

#include "color_types.h"
#include "zqColorConversion.h"

#include <algorithm>

namespace zqconvert {

namespace {

std::string pairOf(const Route &route) {
  return shortName(route.inType) + " to " + shortName(route.outType);
}

Family familyOf(int type) {
  return colorType(type).family;
}

bool isPlanar422(int type) {
  return type == COLOR_YUV422_PLANAR || type == COLOR_YVU422_PLANAR;
}

/// 4:2:0 however it is stored, and planar 4:2:2, which shares its routines.
bool isUsual(int type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR || isPlanar422(type) ||
         familyOf(type) == Family::SemiPlanar;
}

bool isYuv(int type) {
  const Family family = familyOf(type);
  return family == Family::Packed422 || family == Family::SemiPlanar ||
         (family == Family::Planar && type != COLOR_RGB888_PLANAR);
}

bool fromPlanes(const Route &route) {
  return familyOf(route.inType) == Family::Planar || familyOf(route.inType) == Family::SemiPlanar;
}

std::string wrongChroma(const Route &route) {
  if (route.inType == route.outType || !fromPlanes(route)) {
    return {};
  }
  const std::string reads = pairOf(route) + " puts the colours in wrong places: the library reads these planes as ";
  switch (familyOf(route.outType)) {
  case Family::Planar:
    return isPlanar422(route.inType) ? "" : reads + "4:2:2";
  case Family::Rgb24:
    if (route.scaled ? isPlanar422(route.inType) || !isUsual(route.inType) : !isUsual(route.inType)) {
      return reads + (route.scaled ? "4:2:0" : "4:2:2");
    }
    return {};
  default:
    return isPlanar422(route.inType) && route.rotation == ROTATION_FLIP_V ? reads + "4:2:0" : "";
  }
}

bool usesMatrix(const Route &route) {
  const Family out = familyOf(route.outType);
  if (route.inType == route.outType || (out != Family::Rgb16 && out != Family::Rgb24)) {
    return false;
  }
  if (familyOf(route.inType) == Family::Packed422) {
    return true;
  }
  if (!fromPlanes(route)) {
    return false;
  }
  const bool flipped = route.rotation == ROTATION_FLIP_V;
  if (out == Family::Rgb24) {
    return route.scaled || flipped;
  }
  const bool upright = route.rotation == ROTATION_NONE && !route.scaled && !isUsual(route.inType);
  return isYuv(route.inType) && (flipped || upright);
}

bool computesColours(const Route &route) {
  const Family out = familyOf(route.outType);
  return isYuv(route.inType) && (out == Family::Rgb16 || out == Family::Rgb24);
}

std::string idleMatrix(const Route &route) {
  if (usesMatrix(route)) {
    return {};
  }
  return "--matrix changes nothing from " + pairOf(route) +
         (computesColours(route) ? ", which has limited-range BT.601 built in" : ", which mixes no colours");
}

std::string brokenRange(const Route &route, Range range) {
  if (!computesColours(route) || range == Range::Unknown) {
    return {};
  }
  const bool readsFull = usesMatrix(route);
  if (range == Range::Limited) {
    return readsFull
               ? "the input is of limited range, but " + pairOf(route) + " takes it as full here: it comes out flat"
               : "";
  }
  if (!readsFull) {
    return "the input is of full range, but " + pairOf(route) +
           " takes it as limited here: what is below 16 or above 235 is lost";
  }
  return familyOf(route.outType) == Family::Rgb24
             ? "the input is of full range, but " + pairOf(route) + " keeps to 16 to 235 here: what is beyond is lost"
             : "";
}

std::string partlyWritten(const Route &route, const Circumstances &now) {
  if (familyOf(route.outType) != Family::Rgb24 || !route.scaled || !fromPlanes(route)) {
    return {};
  }
  const bool onEnd = route.rotation == ROTATION_90_LEFT || route.rotation == ROTATION_90_RIGHT;
  const bool taller = onEnd ? now.upright.width > now.part.width : now.upright.height > now.part.height;
  return taller ? "the library writes only parts of the lines that enlarging to " + shortName(route.outType) +
                      " repeats; the rest is black"
                : "";
}

std::string band(const Route &route, const Circumstances &now) {
  const bool inBlocks = isUsual(route.inType) && familyOf(route.outType) == Family::Rgb16 && !route.scaled &&
                        route.rotation == ROTATION_NONE;
  const int columns = now.part.width % 16;
  const int lines = now.part.height % 16;
  if (!inBlocks || (columns == 0 && lines == 0)) {
    return {};
  }
  const auto last = [](int count, const char *what) {
    return "the last " + (count == 1 ? std::string() : std::to_string(count) + " ") + what + (count == 1 ? "" : "s");
  };
  const std::string edge = columns == 0 ? last(lines, "line")
                           : lines == 0 ? last(columns, "column")
                                        : last(columns, "column") + " and " + last(lines, "line");
  return edge + " of the picture, beyond the last whole 16, keep to 16 to 235 and look flat";
}

} // namespace

std::vector<std::string> notesOn(const Route &route, const Circumstances &circumstances) {
  std::vector<std::string> notes{wrongChroma(route), circumstances.otherMatrix ? idleMatrix(route) : "",
                                 brokenRange(route, circumstances.range), partlyWritten(route, circumstances),
                                 band(route, circumstances)};
  std::erase(notes, "");
  return notes;
}

} // namespace zqconvert
