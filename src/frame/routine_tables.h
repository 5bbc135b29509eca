// The static tables of routine pointers: the only place where modes are named.
#pragma once

#include "base/job.h"
#include "frame/route.h"

#include <cstdint>

namespace zqcc {

// Same-format tables. Index: q + columns * r, where q says how the picture is turned and r = (antiAlias != 0) +
// isResize for the first two, isResize for the others.
enum SameFormatTurn : uint32_t { SAME_UPRIGHT, SAME_QUARTER, SAME_HALF };

extern const Routine (&SAME_PLANAR420)[9]; ///< three turns; entries 7 and 8 are empty: filtered resizing does not turn
extern const Routine (&SAME_RGB16)[6];     ///< two turns; entry 5 is empty
extern const Routine (&SAME_SEMI_PLANAR)[4];
extern const Routine (&SAME_PACKED422)[4];

// Conversions. Index: isResize.
extern const Routine (&PLANAR_TO_RGB24)[2];
extern const Routine (&PACKED422_TO_RGB16)[2];
extern const Routine (&PACKED422_TO_RGB24)[2];

/// Index: 3 * isResize + (1 for rotation 3, 2 for rotation 4, else 0).
extern const Routine (&RGB24_TO_RGB565)[6];

/// Resizing to 16-bit RGB: 0-4 upright by ResizeRatioClass, 5-9 rotation 3, 10-14 rotation 4, 15 rotation 5,
/// 16 filtered; then pairs [plain, filtered] of types 0, 2, 4 and 37; then type 34 [plain, filtered, rotation 3, 4, 5].
extern const Routine (&RESIZE_TO_RGB565)[30];

enum ResizeEntry : uint32_t {
  RESIZE_UPRIGHT = 0,
  RESIZE_ROT3 = 5,
  RESIZE_ROT4 = 10,
  RESIZE_ROT5 = 15,
  RESIZE_FILTERED = 16,
  RESIZE_YUV444 = 17,
  RESIZE_YUV440 = 19,
  RESIZE_YUV411 = 21,
  RESIZE_QUARTER_HEIGHT = 23,
  RESIZE_PLANAR_RGB = 25,
  RESIZE_PLANAR_RGB_TURNED = 27
};

/// Rows of the same-size tables to 16-bit RGB: the chroma layouts that have converters of their own.
enum PlanarKind : uint32_t {
  KIND_YUV420_OR_422,
  KIND_YUV444,
  KIND_YUV440,
  KIND_YUV411,
  KIND_QUARTER_HEIGHT,
  KIND_PLANAR_RGB,
  KIND_COUNT
};

enum DirectColumn : uint32_t { DIRECT_UPRIGHT, DIRECT_TURNED, DIRECT_FLIPPED, DIRECT_COUNT };

extern const Routine (&PLANAR_TO_RGB565)[KIND_COUNT][DIRECT_COUNT];

} // namespace zqcc
