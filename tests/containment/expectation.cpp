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

void convertByReference(const ConvertParams &p, const reference::Colour &colour, int cropped) {
  if (p.inType == p.outType) {
    reference::convertSameFormat(p, cropped);
  } else if (p.inType == COLOR_RGB24 && p.outType != COLOR_RGB565) {
    return; // succeeds and writes nothing
  } else if (reference::scales(p)) {
    reference::convertResized(p, colour);
  } else {
    reference::convertDirect(p, colour);
  }
}

} // namespace containment
