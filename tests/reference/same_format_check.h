// One same-format frame through the library and through the reference, compared byte by byte.
#pragma once

#include "support/picture.h"
#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace reference {

struct SameFormatCase {
  int type = COLOR_YUV420_PLANAR;
  int width = 0;
  int height = 0;
  int outWidth = 0;
  int outHeight = 0;
  uint32_t isResize = 0;
  uint32_t rotation = ROTATION_NONE;
  uint32_t antiAlias = 0;
  int inPadding = 0;  ///< Bytes that a line is longer than the tight one; -2 cuts a packed line of odd width short.
  int outPadding = 0; ///< As above.
  unsigned misalign = 0;
  support::Fill fill = support::Fill::Noise;
  uint32_t seed = 1;
};

/// Which cases a sweep met.
struct Tally {
  int converted = 0;
  int refused = 0;
};

/// Converts into two equal canvases, by the library and by the reference. Empty when the code is the expected one and
/// every byte, guards included, agrees; otherwise says what differs and for which case.
std::string checkSameFormat(const SameFormatCase &c, Tally &tally);

/// Every quality, rotation and resize flag of a type, each with `sizes` pseudo-random sizes 1..70, strides, alignments
/// and contents. Returns the first few failures.
std::string sweepSameFormat(int type, int sizes, uint32_t seed, Tally &tally);

using Planes = std::array<std::vector<uint8_t>, 3>;

/// What both sides make of a small frame whose output planes start out filled with kUntouched.
struct Outcome {
  uint32_t code = 0;
  Planes library;
  Planes reference;
};
constexpr uint8_t kUntouched = 0xA5;
Outcome convertBoth(ConvertParams p, const Planes &in, const std::array<std::size_t, 3> &outBytes);

/// A record for a frame of one type, without planes.
ConvertParams sameFormatParams(int type, int width, int height, int outWidth, int outHeight, int inStride,
                               int outStride);

} // namespace reference
