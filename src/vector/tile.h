// A conversion of rectangles: its portable kernel, which always exists and defines the bytes, and what serves it by
// rows where there is vector code.
#pragma once

#include "base/job.h"
#include "kernels/convert_rect.h"
#if ZQCC_VECTOR
#include "vector/row_stages.h"
#endif

namespace zqcc {

#if ZQCC_VECTOR

struct Tile {
  TileKernel portable;
  const RowStages *rows;
};

/// Whether the routine reads pairs of chroma samples as they lie. Without vector code they are split before it runs.
constexpr bool readsPairs(const Job &job) {
  return job.hasChromaPairs;
}

inline bool byRows(const Job &job, const Tile &tile, const PlaneView &view, const Target &target, const Rect &rect) {
  return convertByRows(*tile.rows, job.levels, tile.portable, view, target, rect, *job.matrix);
}

#else

struct Tile {
  TileKernel portable;
};

constexpr bool readsPairs(const Job &) {
  return false;
}

constexpr bool byRows(const Job &, const Tile &, const PlaneView &, const Target &, const Rect &) {
  return false;
}

#endif

/// The tile whose portable kernel is given.
template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
constexpr Tile tileOf(TileKernel portable) {
#if ZQCC_VECTOR
  return {portable, &kRowStages<Layout, Arithmetic, turn, pixelBytes>};
#else
  return {portable};
#endif
}

template <class Layout, class Arithmetic, Turn turn>
constexpr Tile kTile = tileOf<Layout, Arithmetic, turn, 2>(convertTile<Layout, Arithmetic, turn>);

template <class Layout, class Arithmetic, Turn turn>
constexpr Tile kTile24 = tileOf<Layout, Arithmetic, turn, 3>(convertTile24<Layout, Arithmetic, turn>);

/// Strips and edge blocks, whose portable kernels go pixel by pixel.
template <class Layout, class Arithmetic, Turn turn>
constexpr Tile kStrip = tileOf<Layout, Arithmetic, turn, 2>(convertStrip<Arithmetic, turn>);

inline void runTile(const Job &job, const Tile &tile, const PlaneView &view, const Target &target, const Rect &rect) {
  if (!byRows(job, tile, view, target, rect)) {
    tile.portable(view, target, rect, *job.matrix);
  }
}

/// As runTile for turned pictures, whose output lines have to stay in the cache.
inline void runTileInBlocks(const Job &job, const Tile &tile, const PlaneView &view, const Target &target,
                            const Rect &rect) {
  if (!byRows(job, tile, view, target, rect)) {
    inBlocks(tile.portable, view, target, rect, *job.matrix);
  }
}

} // namespace zqcc
