// Lines taken apart by vector code, as the families call it: looked up once a picture, called line by line. A line is
// done or left alone, and which is said; what is left, and everything where there is no vector code, is the portable
// code's.
#pragma once

#include "base/levels.h"
#include "tables/packed_layout.h"
#if ZQCC_VECTOR
#include "vector/fetch.h"
#endif

#include <cstdint>

namespace zqcc {

/// Where the samples of a line go; only luma is wanted where u is null.
struct PartedLine {
  uint8_t *y;
  uint8_t *u;
  uint8_t *v;
};

#if ZQCC_VECTOR

/// Pairs of samples into two lines.
class PairParts {
public:
  explicit PairParts(LevelSet levels) : fetch_(EVEN_CHROMA_ROWS.in(levels)) {}
  bool part(const uint8_t *pairs, uint8_t *first, uint8_t *second, int32_t count) const;

private:
  FetchRows fetch_;
};

/// Macropixels of packed 4:2:2 into samples, an even number of pixels a line.
class MacropixelParts {
public:
  MacropixelParts(LevelSet levels, const PackedLayout &layout);
  bool part(const uint8_t *from, const PartedLine &line, int32_t pixels) const;

private:
  PackedLayout layout_;
  FetchRows whole_;
  FetchRows luma_;
};

#else

struct PairParts {
  constexpr explicit PairParts(LevelSet /*levels*/) {}
  static constexpr bool part(const uint8_t * /*pairs*/, uint8_t * /*first*/, uint8_t * /*second*/, int32_t /*count*/) {
    return false;
  }
};

struct MacropixelParts {
  constexpr MacropixelParts(LevelSet /*levels*/, const PackedLayout & /*layout*/) {}
  static constexpr bool part(const uint8_t * /*from*/, const PartedLine & /*to*/, int32_t /*pixels*/) { return false; }
};

#endif

} // namespace zqcc
