// Where the samples of an output are in its input, as fractions.
#pragma once

#include "picture/reference/formats.h"

#include <cstdint>
#include <vector>

namespace reference {

/// How a picture that was made as the input lies is turned.
struct Turn {
  bool swapsAxes;      ///< columns of the finished picture run along lines of the input
  bool mirrorsColumns; ///< what runs along the input's columns begins at their last one
  bool mirrorsLines;
};
Turn turnOf(int32_t orientation);

/// One axis of a conversion, in the position of the input.
struct Axis {
  int64_t cropBegin;
  int64_t cropSize;
  int64_t outSize;
  bool isMirrored; ///< outputs are counted from its end
};
Axis columnAxisOf(const ZqpConversion &conversion);
Axis lineAxisOf(const ZqpConversion &conversion);
/// The crop; of width and height 0, the whole picture.
ZqpRect cropOf(const ZqpConversion &conversion);

/// How samples of a component follow one another along an axis.
struct Grid {
  int shift; ///< one for 2^shift pixels
  bool isLeft;
};

/// An output sample among the samples of its input: t, and what it covers. Numerators over `unit`.
struct Spot {
  int64_t t;
  int64_t begin;
  int64_t end;
  int64_t unit;
};
/// Of output sample `k`, counted as in the finished picture.
Spot spotOf(const Axis &axis, Grid in, Grid out, int64_t k);

/// Input samples that take part.
struct Part {
  int64_t first;
  int64_t last;
};
Part partOf(const Axis &axis, Grid in);

enum class Way { Same, Nearest, Bilinear, Area };
/// How `count` outputs are found.
Way wayOf(const Axis &axis, Grid in, Grid out, int64_t count, int32_t filter);

/// a / b, rounded down; b is above 0.
int64_t floorOf(int64_t a, int64_t b);

} // namespace reference
