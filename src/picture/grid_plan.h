// How the samples of an output grid are made of those of an input component: along columns and along lines.
#pragma once

#include "picture/arena.h"
#include "picture/axis.h"

namespace zqp {

/// The samples of a line from one on, counted from the first that takes part.
struct Span {
  int32_t first;
  int32_t count;
};

/// From the first sample of either to the last.
Span united(const Span &a, const Span &b);

/// Columns of an output grid.
struct Part {
  int32_t first;
  int32_t count;
};

/// Bytes: samples are taken as they are. Lerp: columns first, then lines. Taps: lines first, then columns. Middle:
/// there are none, and chroma is that of grey.
enum class Way : int32_t { Bytes, Lerp, Taps, Middle };

struct GridPlan {
  Way way;
  bool isUsed;
  bool isOfChroma; ///< made of the input's chroma, otherwise of its luma or R, G, B and alpha
  bool wantsWords;
  int32_t components;
  Axis columns;
  Axis lines;
  /// Outputs before the first one, all of which are like it.
  int32_t padding;

  // What follows is filled in by plan().
  bool keepsColumns; ///< output k is sample k
  bool isDoubling;   ///< output k is sample k / 2, as it is
  int32_t outputs;
  const int32_t *at; ///< of Way::Bytes
  LerpColumns lerp;
  TapColumns taps;
  TapColumns lineTaps; ///< of Way::Taps: of the lines of the grid
  int32_t mostLines;   ///< of which one of them is made
};

/// `filter` decides between the ways of samples that are mixed.
GridPlan gridPlan(const Axis &columns, const Axis &lines, int32_t filter);

/// Takes the tables' memory and, if there is any, fills them in.
void plan(GridPlan &grid, Arena &arena);

/// The samples that make the outputs of a part.
Span spanOf(const GridPlan &grid, const Part &part);

} // namespace zqp
