// Planes turned without a conversion: samples, pairs of samples or pixels go straight from where they lie to where a
// turn wants them.
#pragma once

#include "base/levels.h"
#include "vector/place_stages.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Lines that become columns: unit x of line l goes to place l of output line x. Negative steps make it any quarter
/// turn.
struct LineExchange {
  const uint8_t *from;
  std::ptrdiff_t fromStep;
  uint8_t *to;
  std::ptrdiff_t toStep;
  int32_t columns;
  int32_t lines;
};

/// Bytes of units that a block has both ways at least.
inline constexpr int32_t kLeastBytes = 16;

/// What exchanges lines and columns of units of one size: blocks of at least kLeastBytes both ways, and of even numbers
/// of lines and columns where the picture has such.
struct UnitExchange {
  TransposeBlock transpose; ///< null where no level has the stage
  int32_t unitBytes;
};

/// The stages of a level that exchange lines and columns of planes.
struct PlaneExchange {
  UnitExchange units;
  TransposeBlock ofSmall; ///< the same for pictures that stay in the cache
  int32_t stripColumns;   ///< columns that go down the picture together, a multiple of 16; 64 of small pictures
};

/// Output lines stay in the cache until they are full. Vectors that fill a line of it at once do best with source lines
/// of the same size, narrower ones with longer pieces.
constexpr int32_t stripColumnsOf(Level level, int32_t unitBytes) {
  return level == LEVEL_AVX512 ? 64 / unitBytes : 64;
}

/// False, and nothing is done, where the picture is smaller than a block, where no level has the stage, or where output
/// lines overlap, so that the order of the stores shows.
bool exchangeByBlocks(const PlaneExchange &stages, const LineExchange &picture);

/// A half turn of `samples` samples that follow one another without gaps. False where they are too few, or where no
/// level has the stage.
bool reverseSamples(ReverseRow reverse, const uint8_t *from, uint8_t *to, std::ptrdiff_t samples);

} // namespace zqcc
