#include "reference/result_code.h"

#include "support/picture.h"

#include <array>
#include <cstdint>

namespace reference {

namespace {

enum class Family { Planar, SemiPlanar, Packed, Rgb16, Rgb24, None };

Family familyOf(int type) {
  if (support::isPacked422(type)) {
    return Family::Packed;
  }
  if (support::isSemiPlanar(type)) {
    return Family::SemiPlanar;
  }
  if (support::isRgb16(type)) {
    return Family::Rgb16;
  }
  switch (type) {
  case 0:
  case 1:
  case 2:
  case 3:
  case 4:
  case 12:
  case 13:
  case 34:
  case 37:
    return Family::Planar;
  case 32:
    return Family::Rgb24;
  default:
    return Family::None;
  }
}

using support::isRgb16;

bool isPlanar420(int type) {
  return type == 3 || type == 12;
}
bool isSame(const ConvertParams &p) {
  return p.inType == p.outType;
}
bool isQuarterTurn(const ConvertParams &p) {
  return p.rotation == 3 || p.rotation == 4;
}

bool badModes(const ConvertParams &p, uint32_t bestQuality) {
  return p.isResize > 1 || p.rotation > 7 || p.antiAlias > bestQuality;
}

uint32_t sameTypeCode(const ConvertParams &p) {
  const Family family = familyOf(p.inType);
  const bool accepted =
      isPlanar420(p.inType) || family == Family::SemiPlanar || family == Family::Packed || family == Family::Rgb16;
  return accepted ? CC_OK : CC_ERR_IN_TYPE;
}

uint32_t conversionTypeCode(const ConvertParams &p) {
  const bool rgb = isRgb16(p.outType) || p.outType == 32;
  switch (familyOf(p.inType)) {
  case Family::Planar:
  case Family::SemiPlanar:
    return rgb || isPlanar420(p.outType) ? CC_OK : CC_ERR_OUT_TYPE;
  case Family::Packed:
    return rgb || p.outType == 3 ? CC_OK : CC_ERR_OUT_TYPE;
  case Family::Rgb24:
    return CC_OK;
  default:
    return CC_ERR_IN_TYPE;
  }
}

/// RGB24 to anything but RGB565 succeeds and does nothing.
bool doesNothing(const ConvertParams &p) {
  return p.inType == 32 && p.outType != 30;
}

struct Divisors {
  int across = 1;
  int down = 1;
};

/// Samples of the luma per sample of the chroma, for each type with chroma planes.
Divisors chromaOf(int type) {
  switch (type) {
  case 1:
  case 13:
    return {2, 1};
  case 2:
    return {1, 2};
  case 3:
  case 12:
  case 11:
  case 35:
    return {2, 2};
  case 4:
    return {4, 1};
  case 37:
    return {1, 4};
  default:
    return {};
  }
}

struct Dimensions {
  int width;
  int height;
};

bool lacksChroma(int type, Dimensions size) {
  const Divisors chroma = chromaOf(type);
  return size.width / chroma.across < 1 || size.height / chroma.down < 1;
}

int planesOf(int type) {
  const Family family = familyOf(type);
  if (family == Family::Planar) {
    return 3;
  }
  return family == Family::SemiPlanar ? 2 : 1;
}

/// Scaling conversions of these turn the planes first, into planes that set-up made for this very description.
bool turnsFirst(const ConvertParams &p) {
  const bool other = p.inType == 0 || p.inType == 2 || p.inType == 4 || p.inType == 37;
  return !isSame(p) && p.isResize == 1 && isQuarterTurn(p) && other;
}

bool splitsFirst(const ConvertParams &p) {
  return !isSame(p) && familyOf(p.inType) == Family::SemiPlanar;
}

/// The copies of planar 4:2:0 that turn go by the input's size.
bool isTurningCopy(const ConvertParams &p) {
  return isSame(p) && isPlanar420(p.inType) && p.isResize == 0 && (isQuarterTurn(p) || p.rotation == 5);
}

/// What the converter behind the turning of the planes is told.
struct Told {
  int type;
  Dimensions in;
  Dimensions out;
};

Told toldOf(const ConvertParams &p) {
  if (!turnsFirst(p)) {
    return {p.inType, {p.inWidth, p.inHeight}, {p.outWidth, p.outHeight}};
  }
  const int turnedType = p.inType == 2 ? 1 : p.inType == 4 ? 37 : p.inType == 37 ? 4 : 0;
  return {turnedType, {p.inHeight, p.inWidth}, {p.outHeight, p.outWidth}};
}

/// Upright copies, and conversions to planar 4:2:0, of a single line.
bool movesLumaOnly(const ConvertParams &p) {
  if (toldOf(p).out.height >= 2) {
    return false;
  }
  if (!isSame(p)) {
    return isPlanar420(p.outType);
  }
  return p.isResize == 0 && !isQuarterTurn(p) && !isTurningCopy(p);
}

/// Chroma is touched by the conversion, or already by what goes before it.
bool readsChroma(const ConvertParams &p) {
  return !movesLumaOnly(p) || turnsFirst(p) || (splitsFirst(p) && p.inHeight >= 2);
}

bool missingPlane(const ConvertParams &p) {
  for (int i = 0; i < planesOf(p.inType); ++i) {
    if (p.inBuf[i] == nullptr && (i == 0 || readsChroma(p))) {
      return true;
    }
  }
  for (int i = 0; i < planesOf(p.outType); ++i) {
    if (p.outBuf[i] == nullptr && (i == 0 || !movesLumaOnly(p))) {
      return true;
    }
  }
  return false;
}

/// The picture that the input planes hold: with isResize 1 the input's, also where it is cut out rather than scaled.
Dimensions convertedSize(const ConvertParams &p) {
  const Told told = toldOf(p);
  return p.isResize == 1 || isTurningCopy(p) ? told.in : told.out;
}

/// Right turns of these begin with the input's last line, whatever the output fields say.
bool startsAtTheInputsEnd(const ConvertParams &p) {
  const Family family = familyOf(p.inType);
  return isSame(p) && p.rotation == 4 && (family == Family::SemiPlanar || family == Family::Packed);
}

/// Upright semi-planar pictures that keep their type have a chroma pair for a lone column.
bool keepsLonePair(const ConvertParams &p) {
  return isSame(p) && familyOf(p.inType) == Family::SemiPlanar && !isQuarterTurn(p);
}

/// As many columns as the pairs of such a picture stand for, of a lone one two.
int columnsWithLone(int width) {
  return width == 1 ? 2 : width;
}

bool emptyPlane(const ConvertParams &p) {
  const bool before = turnsFirst(p) || (splitsFirst(p) && p.inHeight >= 2);
  if (before && lacksChroma(p.inType, {p.inWidth, p.inHeight})) {
    return true;
  }
  const Told told = toldOf(p);
  Dimensions read = convertedSize(p);
  Dimensions written = isTurningCopy(p) ? told.in : told.out;
  if (keepsLonePair(p)) {
    read.width = columnsWithLone(read.width);
    written.width = columnsWithLone(written.width);
  }
  if (startsAtTheInputsEnd(p) && lacksChroma(p.inType, {convertedSize(p).width, p.inHeight})) {
    return true;
  }
  return !movesLumaOnly(p) && (lacksChroma(told.type, read) || lacksChroma(p.outType, written));
}

/// Placed from the end of each line's stride: half turns, and the right strip of the right turn of a planar picture.
bool isPlacedFromStrideEnd(const ConvertParams &p) {
  const bool half = p.rotation == 5;
  if (isSame(p)) {
    return half && p.isResize == 1 && isPlanar420(p.inType);
  }
  const Family family = familyOf(p.inType);
  if (!isRgb16(p.outType) || family == Family::Rgb24) {
    return false;
  }
  if (family == Family::Packed) {
    return half && p.isResize == 0;
  }
  const bool upright = p.inType == 0 || p.inType == 2 || p.inType == 4 || p.inType == 37;
  return half ? p.isResize == 0 || !upright : p.rotation == 4 && p.isResize == 0;
}

bool badStride(const ConvertParams &p) {
  if (p.inStride < 0 || p.outStride < 0) {
    return true;
  }
  const int64_t pixels = p.rotation == 4 ? p.outHeight : p.outWidth;
  return isPlacedFromStrideEnd(p) && p.outStride < (isRgb16(p.outType) ? 2 * pixels : pixels);
}

bool impossibleScale(const ConvertParams &p) {
  return p.inWidth < 2 || p.inHeight < 2 || p.outWidth < 1 || p.outHeight < 1 ||
         p.outWidth > int64_t{1024} * p.inWidth || p.outHeight > int64_t{1024} * p.inHeight;
}

/// The tables of resizing to RGB24 hold positions in 16 bits.
bool tooLargeForRuns(const ConvertParams &p) {
  const Family family = familyOf(p.inType);
  const bool byRuns = p.isResize == 1 && p.outType == 32 && (family == Family::Planar || family == Family::SemiPlanar);
  return byRuns && (p.inWidth > 65536 || p.inHeight > 65536);
}

bool lacksRoutine(const ConvertParams &p) {
  if (!isSame(p) || p.antiAlias == 0) {
    return false;
  }
  const bool planar = isPlanar420(p.inType);
  const bool rgb = isRgb16(p.inType);
  if (p.isResize == 0) {
    return planar || rgb; // the filtered routines would find no tables
  }
  return (planar && (isQuarterTurn(p) || p.rotation == 5)) || (rgb && isQuarterTurn(p));
}

bool agrees(const ConvertParams &a, const ConvertParams &b) {
  return a.inType == b.inType && a.outType == b.outType && a.inWidth == b.inWidth && a.inHeight == b.inHeight &&
         a.outWidth == b.outWidth && a.outHeight == b.outHeight && a.isResize == b.isResize &&
         a.rotation == b.rotation && a.antiAlias == b.antiAlias;
}

/// Conversions of semi-planar input split the chroma into scratch planes that set-up has measured.
bool lacksScratch(const ConvertParams &setup, const ConvertParams &frame) {
  if (isSame(frame) || familyOf(frame.inType) != Family::SemiPlanar) {
    return false;
  }
  const auto area = [](const ConvertParams &p) { return int64_t{p.inStride} * p.inHeight; };
  return familyOf(setup.inType) != Family::SemiPlanar || area(setup) < area(frame);
}

uint32_t argumentCode(const ConvertParams &setup, const ConvertParams &frame) {
  const Dimensions size = convertedSize(frame);
  const bool negative = size.width < 0 || size.height < 0;
  const bool empty = size.width == 0 || size.height == 0;
  if (doesNothing(frame) || (frame.isResize == 0 && empty && !negative && !lacksRoutine(frame))) {
    return CC_OK;
  }
  const bool noLastLine = startsAtTheInputsEnd(frame) && frame.inHeight < 1;
  const bool grows = frame.outWidth > frame.inWidth || frame.outHeight > frame.inHeight;
  const std::array<bool, 11> reasons{negative,
                                     noLastLine,
                                     tooLargeForRuns(frame),
                                     badStride(frame),
                                     missingPlane(frame),
                                     frame.isResize == 1 && impossibleScale(frame),
                                     emptyPlane(frame),
                                     lacksRoutine(frame),
                                     (frame.isResize == 1 || splitsFirst(frame)) && !scales(frame) && grows,
                                     (scales(frame) || turnsFirst(frame)) && !agrees(setup, frame),
                                     lacksScratch(setup, frame)};
  for (const bool reason : reasons) {
    if (reason) {
      return CC_ERR_ARGUMENT;
    }
  }
  return CC_OK;
}

} // namespace

bool scales(const ConvertParams &frame) {
  if (frame.isResize != 1 || doesNothing(frame)) {
    return false;
  }
  if (isSame(frame)) {
    return true;
  }
  const Family family = familyOf(frame.inType);
  const bool planar = family == Family::Planar || family == Family::SemiPlanar;
  const bool flips = planar && frame.rotation == 6 && isRgb16(frame.outType);
  return !flips && !isPlanar420(frame.outType);
}

uint32_t setupCode(const ConvertParams &setup) {
  const bool refused = badModes(setup, 3) || (setup.isResize == 1 && impossibleScale(setup));
  return refused ? CC_ERR_ARGUMENT : CC_OK;
}

uint32_t resultCode(const ConvertParams &setup, const ConvertParams &frame) {
  if (badModes(frame, isSame(frame) ? 2 : 3)) {
    return CC_ERR_ARGUMENT;
  }
  const uint32_t typeCode = isSame(frame) ? sameTypeCode(frame) : conversionTypeCode(frame);
  return typeCode != CC_OK ? typeCode : argumentCode(setup, frame);
}

} // namespace reference
