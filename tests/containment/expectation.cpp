#include "containment/expectation.h"

#include "reference/direct.h"
#include "reference/resize.h"
#include "reference/resize_check.h"
#include "reference/result_code.h"
#include "reference/same_format.h"
#include "support/picture.h"

#include <algorithm>
#include <initializer_list>

namespace containment {
namespace {

bool isOneOf(int type, std::initializer_list<int> types) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

/// Scaling conversions of these turn the planes first, into planes that set-up made for this very description.
bool turnsBeforehand(const ConvertParams &p) {
  const bool quarter = p.rotation == ROTATION_90_LEFT || p.rotation == ROTATION_90_RIGHT;
  return p.isResize == 1 && quarter && p.inType != p.outType && isOneOf(p.inType, {0, 2, 4, 37});
}

bool agrees(const ConvertParams &a, const ConvertParams &b) {
  return a.inType == b.inType && a.outType == b.outType && a.inWidth == b.inWidth && a.inHeight == b.inHeight &&
         a.outWidth == b.outWidth && a.outHeight == b.outHeight && a.isResize == b.isResize &&
         a.rotation == b.rotation && a.antiAlias == b.antiAlias;
}

/// Conversions to planar 4:2:0 of a single line move luma only, so that no chroma plane needs a sample.
bool copiesOneLine(const ConvertParams &p) {
  return p.inType != p.outType && isOneOf(p.outType, {3, 12}) && p.outHeight == 1 && p.outWidth > 0 &&
         p.inType != COLOR_RGB24;
}

/// The same record with sizes and a type whose chroma planes are never empty; all other reasons to refuse it stay.
ConvertParams withChroma(const ConvertParams &p) {
  ConvertParams enough = p;
  if (isOneOf(p.inType, {1, 2, 3, 4, 12, 13, 37})) {
    enough.inType = COLOR_YUV444_PLANAR;
  }
  if (p.isResize == 0) {
    enough.inWidth = enough.inHeight = enough.outWidth = enough.outHeight = 2;
  } else {
    enough.outWidth = std::max(p.outWidth, 2);
    enough.outHeight = std::max(p.outHeight, 2);
  }
  return enough;
}

/// Placed from the end of each line's stride: half turns, and the right strip of the right turn of a planar picture.
bool isPlacedFromStrideEnd(const ConvertParams &p) {
  const bool half = p.rotation == ROTATION_180;
  if (p.inType == p.outType) {
    return half && p.isResize == 1 && isOneOf(p.inType, {3, 12});
  }
  if (!support::isRgb16(p.outType) || p.inType == COLOR_RGB24) {
    return false;
  }
  if (support::isPacked422(p.inType)) {
    return half && p.isResize == 0;
  }
  const bool keepsSize = p.isResize == 0;
  return half ? keepsSize || !isOneOf(p.inType, {0, 2, 4, 37}) : keepsSize && p.rotation == ROTATION_90_RIGHT;
}

/// Such a picture would begin in front of its buffer if the stride did not hold a line.
bool beginsInFront(const ConvertParams &p) {
  if (!isPlacedFromStrideEnd(p)) {
    return false;
  }
  const int64_t pixels = writtenSize(p).width;
  return p.outStride < (support::isRgb16(p.outType) ? 2 * pixels : pixels);
}

} // namespace

reference::Size writtenSize(const ConvertParams &p) {
  bool turned = p.rotation == ROTATION_90_LEFT || p.rotation == ROTATION_90_RIGHT;
  if (p.inType != p.outType) {
    if (!reference::scales(p)) {
      return reference::writtenSize(p);
    }
    reference::ResizeCase c;
    c.inType = p.inType;
    c.outType = p.outType;
    c.rotation = p.rotation;
    turned = reference::writesTurned(c);
  }
  return turned ? reference::Size{p.outHeight, p.outWidth} : reference::Size{p.outWidth, p.outHeight};
}

bool readsPadding(const ConvertParams &p) {
  const bool filtered = p.isResize == 1 && p.antiAlias != 0;
  if (p.inType == p.outType) {
    const bool turns = p.rotation >= ROTATION_90_LEFT && p.rotation <= ROTATION_180;
    return (isOneOf(p.inType, {3, 12}) && p.isResize == 0 && turns) ||
           (support::isRgb16(p.inType) && filtered && p.inStride % 2 != 0);
  }
  return (isOneOf(p.inType, {0, 2, 4, 34, 37}) && isOneOf(p.outType, {3, 12, 32})) ||
         (isOneOf(p.inType, {1, 13}) && support::isRgb16(p.outType) && filtered);
}

uint32_t expectedCode(const ConvertParams &setup, const ConvertParams &frame) {
  if (copiesOneLine(frame)) {
    if (turnsBeforehand(frame) && !agrees(setup, frame)) {
      return reference::resultCode(setup, frame) == CC_OK ? CC_ERR_ARGUMENT : reference::resultCode(setup, frame);
    }
    return reference::resultCode(withChroma(setup), withChroma(frame));
  }
  const uint32_t code = reference::resultCode(setup, frame);
  const bool keepsSize =
      frame.isResize == 1 && frame.inType != frame.outType && frame.inType != COLOR_RGB24 && !reference::scales(frame);
  const bool empty = keepsSize && !reference::holdsSamples(frame.inType, frame.outWidth, frame.outHeight);
  const bool lacksPlanes = keepsSize && turnsBeforehand(frame) && !agrees(setup, frame);
  const bool nothing = frame.isResize == 0 && (frame.outWidth <= 0 || frame.outHeight <= 0);
  const bool inFront = !nothing && beginsInFront(frame);
  return code == CC_OK && (empty || lacksPlanes || inFront) ? CC_ERR_ARGUMENT : code;
}

void convertByReference(const ConvertParams &p, const reference::Colour &colour) {
  if (p.inType == p.outType) {
    reference::convertSameFormat(p);
  } else if (p.inType == COLOR_RGB24 && p.outType != COLOR_RGB565) {
    return; // succeeds and writes nothing
  } else if (reference::scales(p)) {
    reference::convertResized(p, colour);
  } else {
    reference::convertDirect(p, colour);
  }
}

} // namespace containment
