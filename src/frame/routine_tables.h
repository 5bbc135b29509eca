// The static tables of routine pointers: types, turns, qualities and ratios choose a cell, and route.cpp says which. A
// routine that serves several turns asks base/turn.h for the one it was called for.
#pragma once

#include "base/job.h"
#include "base/turn.h"
#include "frame/route.h"

#include <cstdint>

namespace zqcc {

// Same-format tables. Index: the turn's column + columns * r, where r = (antiAlias != 0) + isResize for the first two,
// isResize for the others.
extern const Routine (
    &SAME_PLANAR420)[9];               ///< three columns; entries 7 and 8 are empty: filtered resizing does not turn
extern const Routine (&SAME_RGB16)[6]; ///< two columns; entry 5 is empty
extern const Routine (&SAME_SEMI_PLANAR)[4];
extern const Routine (&SAME_PACKED422)[4];

inline constexpr PerTurn kPlanar420Columns{.upright = 0, .left = 1, .right = 1, .half = 2, .flip = 0};
inline constexpr PerTurn kSameFormatColumns{.upright = 0, .left = 1, .right = 1, .half = 0, .flip = 0};

// Conversions. Index: isResize.
extern const Routine (&PLANAR_TO_RGB24)[2];
extern const Routine (&PACKED422_TO_RGB16)[2];
extern const Routine (&PACKED422_TO_RGB24)[2];

/// Index: the turn's column + 3 * isResize.
extern const Routine (&RGB24_TO_RGB565)[6];

inline constexpr PerTurn kRgb24Columns{.upright = 0, .left = 1, .right = 2, .half = 0, .flip = 0};

/// Resizing to 16-bit RGB: 0-4 upright by ResizeRatioClass, 5-9 rotation 3, 10-14 rotation 4, 15 rotation 5,
/// 16 filtered; then pairs [plain, filtered] of types 0, 2, 4 and 37; then type 34 [plain, filtered, rotation 3, 4, 5].
extern const Routine (&RESIZE_TO_RGB565)[30];

/// Where the entries of a kind begin.
enum ResizeEntry : uint32_t {
  RESIZE_YUV420_OR_422 = 0,
  RESIZE_FILTERED = 16,
  RESIZE_YUV444 = 17,
  RESIZE_YUV440 = 19,
  RESIZE_YUV411 = 21,
  RESIZE_QUARTER_HEIGHT = 23,
  RESIZE_PLANAR_RGB = 25
};

/// Entries of a turn, counted from where those of its kind begin.
inline constexpr PerTurn kResizeYuvEntries{.upright = 0, .left = 5, .right = 10, .half = 15, .flip = 0};
inline constexpr PerTurn kResizePlanarRgbEntries{.upright = 0, .left = 2, .right = 3, .half = 4, .flip = 0};

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

extern const Routine (&PLANAR_TO_RGB565)[KIND_COUNT][3];

inline constexpr PerTurn kDirectColumns{.upright = 0, .left = 1, .right = 1, .half = 1, .flip = 2};

} // namespace zqcc
