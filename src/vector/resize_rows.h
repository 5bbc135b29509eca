// The driver of resizing by rows. A sampler makes rows of 8-bit samples of two output lines; the colour stages make
// pixels of them and the placement stages put these where a turn wants them, as they do for conversions that keep the
// size. Chunks of columns go down the whole picture one after the other, so that a sampler can keep what it made of
// source lines while output lines need it.
#pragma once

#include "base/turn.h"
#include "kernels/placement.h"
#include "vector/place_stages.h"
#include "vector/stages.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Columns of a chunk at most, unless the sampler has room for more or less of them. Chunks begin at multiples of 128,
/// and so do halves of them at multiples of 64.
inline constexpr int32_t kChunkColumns = 512;

/// Columns that the driver makes at a time at most: of wide chunks longer pieces of lines are read and written at a
/// time.
inline constexpr std::size_t kMostColumns = 2048;

/// Where an output picture goes: its size before the turn, and where its pixel (0, 0) lands.
struct ResizeTarget {
  Turn turn;
  int32_t width;
  int32_t height;
  Target target;
};

/// The stages behind a sampler: for pairs of lines, which share their chroma, or for single lines.
struct ResizeStages {
  const PerLevel<ColourRows> *pair; ///< null if every line has chroma of its own
  const PerLevel<ColourRows> *single;
  MakeConstants makeConstants; ///< null if the stages take nothing from the frame
  PlaceStages place;
  int pixelBytes;
};

/// A sampler as the driver calls it.
struct SamplerCalls {
  void *sampler;
  int32_t mostColumns; ///< that it has room for: a multiple of 128, at most kMostColumns
  void (*columns)(void *sampler, int32_t first, int32_t count);
  void (*lines)(void *sampler, int32_t j, int32_t lineCount, SampleRows (&rows)[2]);
};

/// False if nothing could be done by rows: nothing has been written then. That is so where output lines overlap, where
/// no usable level has the stages, and for a matrix that they do not serve.
bool resizeRows(const SamplerCalls &calls, const ResizeStages &stages, LevelSet usable, const ResizeTarget &to,
                const ColorMatrix &matrix);

/// The columns that a sampler has room for.
template <class Sampler>
constexpr int32_t columnsOf(const Sampler &sampler) {
  if constexpr (requires { sampler.mostColumns(); }) {
    return sampler.mostColumns();
    // cppcheck-suppress identicalConditionAfterEarlyExit ; another requirement
  } else if constexpr (requires { Sampler::kColumns; }) {
    static_assert(Sampler::kColumns % 128 == 0 && Sampler::kColumns <= kMostColumns);
    return static_cast<int32_t>(Sampler::kColumns);
  } else {
    return kChunkColumns;
  }
}

/// As resizeRows, with a sampler of any type that has
///
///     void columns(int32_t first, int32_t count);
///         A chunk follows that begins at output column `first`, `count` columns of at most kColumns.
///     void lines(int32_t j, int32_t lineCount, SampleRows (&rows)[2]);
///         Samples of the chunk's columns of output lines j, an even number, and j + 1. Lines come in rising order. For
///         pairs of lines, rows[0] has y[0], y[1], u and v; for single lines, rows[0] and rows[1] have y[0], u and v
///         each. Rows can be read for max(16, count rounded up to an even number) samples, half chroma for half as
///         many; what stands behind the chunk's samples does not matter. If lineCount is 1 there is no line j + 1: its
///         rows can be read, whatever they hold. Single lines that are given the same rows are equal.
///     static constexpr std::size_t kColumns;
///         The columns that it has room for, if these are not kChunkColumns.
///     int32_t mostColumns() const;
///         The same of samplers whose room depends on the frame.
template <class Sampler>
bool resizeByRows(Sampler &sampler, const ResizeStages &stages, LevelSet usable, const ResizeTarget &to,
                  const ColorMatrix &matrix) {
  const SamplerCalls calls{
      &sampler, columnsOf(sampler),
      [](void *self, int32_t first, int32_t count) { static_cast<Sampler *>(self)->columns(first, count); },
      [](void *self, int32_t j, int32_t lineCount, SampleRows(&rows)[2]) {
        static_cast<Sampler *>(self)->lines(j, lineCount, rows);
      }};
  return resizeRows(calls, stages, usable, to, matrix);
}

} // namespace zqcc
