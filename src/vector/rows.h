// The driver of vector code: a rectangle of a picture, two lines at a time, through the stages of the highest level
// that has them.
#pragma once

#include "base/turn.h"
#include "kernels/convert_rect.h"
#include "vector/place_stages.h"
#include "vector/stages.h"

namespace zqcc {

/// The stages that make an arithmetic's pixels; null where there is none of that kind.
struct ColourStages {
  const PerLevel<ColourRows> *halfPair;           ///< two lines that share half chroma
  const PerLevel<ColourRows> *half;               ///< one line with half chroma
  const PerLevel<ColourRows> *full;               ///< one line with full chroma
  MakeConstants makeConstants;                    ///< null if the stages take nothing from the frame
  const PerLevel<ColourRows> *fullPair = nullptr; ///< two lines that share full chroma
};

/// What serves a conversion by rows. It makes the same bytes as the conversion's portable kernel.
struct RowStages {
  const PerLevel<FetchRows> *fetch;   ///< null where samples are read as they lie
  const PerLevel<ColourRows> *pair;   ///< null if lines do not share chroma
  const PerLevel<ColourRows> *single; ///< null if all lines come in pairs
  MakeConstants makeConstants;
  PlaceStages place;
  Turn turn;
  int pixelBytes;
};

/// Converts a rectangle with the stages of `usable` levels, what they cannot do with the portable kernel `rest`. False
/// if nothing could be done by rows: nothing has been written then.
bool convertByRows(const RowStages &stages, LevelSet usable, TileKernel rest, const PlaneView &view,
                   const Target &target, const Rect &rect, const ColorMatrix &matrix);

} // namespace zqcc
