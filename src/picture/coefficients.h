// Coefficients of colour: computed once a converter, in double precision, and rounded once.
#pragma once

#include "picture/description.h"
#include "rows/colour.h"

namespace zqp {

/// Of a YUV picture made into RGB. `isNarrow`: RGB565, components of 5, 6 and 5 bits.
RgbOfYuv rgbOfYuv(const Colours &in, const Colours &out, bool isNarrow);

/// Of RGB that stays RGB: no chroma.
RgbOfYuv rgbOfRgb(const Colours &in, const Colours &out, bool isNarrow);

YuvOfYuv yuvOfYuv(const Colours &in, const Colours &out);

struct YuvOfRgb {
  Sum y;
  Sum u;
  Sum v;
};
YuvOfRgb yuvOfRgb(const Colours &in, const Colours &out);

/// The half that rounds, in all columns.
Rounding halves();

/// A place in the finished picture.
struct Place {
  int32_t x;
  int32_t y;
};

/// Thresholds of RGB565 for a line whose column 0 is at `first`, the columns after it a step further each: right, left,
/// down or up.
Rounding thresholds(Place first, Place step);

} // namespace zqp
