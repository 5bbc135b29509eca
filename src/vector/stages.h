// The stages that vector code is made of. A conversion works on rows of pixels that lie in the first-level cache: a
// fetch stage makes rows of samples of whatever layout the picture has, a colour stage makes pixels of them, a
// placement stage puts blocks of pixels where a turn wants them. Planar samples are read where they lie, and pixels
// that stay upright are written where they belong, without a buffer in between.
//
// Every stage reads and writes exactly the samples and pixels that it is asked for: what does not fill its last group
// of lanes is done by a group that overlaps the one before it.
#pragma once

#include "base/levels.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

struct ColorMatrix;

/// Pixels that every stage can handle at least.
inline constexpr int32_t kLeastPixels = 16;

/// The samples of one line of pixels, or of two lines that share their chroma. With half chroma, sample i of u and v
/// belongs to pixels 2i and 2i + 1; with full chroma to pixel i. Of RGB, y is red, u is green and v is blue. Stages
/// that read a layout as it lies say what the pointers are of the first pixel.
struct SampleRows {
  const uint8_t *y[2];
  const uint8_t *u;
  const uint8_t *v;
};

/// A coefficient of a matrix in numbers of 16 bits: without its lowest bits, rounded, and without all that is above 16
/// bits.
struct MatrixFactor {
  int16_t rounded;
  int16_t low;
};

/// Pixels of even columns and as many of odd ones: a byte each, as they stand in a block of 128 bits.
inline constexpr int kColumnsOfParity = 8;

/// What the offsets of a dither take away from the components of a line, of which red and blue are kMostOffset more.
struct DitherLine {
  uint8_t red[2 * kColumnsOfParity];
  uint8_t green[2 * kColumnsOfParity];
  uint8_t blue[2 * kColumnsOfParity];
};

/// The highest offset of red and blue.
inline constexpr int kMostOffset = 2;

/// What a colour stage takes from the frame: made once a frame, in numbers that fit 16-bit lanes. Small, as frames of
/// few pixels show what this costs.
struct ColourConstants {
  MatrixFactor crToR;
  MatrixFactor crToG;
  MatrixFactor cbToB;
  MatrixFactor cbToG;
  const DitherLine *dither; ///< of two lines, by the parity of the source line
};

/// Fills the constants of an arithmetic from the matrix in force. False if the stage cannot work with that matrix
/// exactly: the portable kernel then has the frame.
using MakeConstants = bool (*)(const ColorMatrix &matrix, ColourConstants &constants);

/// Makes `pixels` pixels of every line from the samples: at least kLeastPixels, with half chroma an even number. `line`
/// is the parity of the first line in the picture, and the first pixel is one of an even column. Of a stage for one
/// line, y[1] and to[1] are not looked at.
using ColourRows = void (*)(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                            const ColourConstants &constants);

/// A line of a picture whose samples are not rows yet.
struct SourceLine {
  const uint8_t *y;
  const uint8_t *u;
  const uint8_t *v;
};

/// Where rows are made: room for the pixels asked for.
struct RowBuffers {
  uint8_t *y;
  uint8_t *u;
  uint8_t *v;
};

/// Makes rows of the samples of `pixels` pixels, an even number of at least kLeastPixels, that begin at an even column.
/// Reads nothing behind the last of them.
using FetchRows = void (*)(const SourceLine &from, const RowBuffers &to, int32_t pixels);

} // namespace zqcc
