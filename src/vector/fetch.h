// Stages that make rows of samples of the layouts whose samples do not lie as rows. Their source is the line from its
// first pixel on: SourceLine::y is the left pixel's luma.
#pragma once

#include "kernels/plane_view.h"
#include "vector/stages.h"

namespace zqcc {

/// Two samples a chroma step, of which the first is read: half chroma rows, luma stays where it lies. Chroma samples
/// that are neighbours, U first or V first, are the pairs of semi-planar pictures; else each plane has lines as wide as
/// luma's (4:4:0). Reads `pixels` bytes of the pairs, or of either chroma line.
extern const PerLevel<FetchRows> EVEN_CHROMA_ROWS;

/// One sample for four columns (4:1:1), the first of which is the first pixel's: half chroma rows with every sample
/// twice, luma stays where it lies. Reads the samples of the pixels.
extern const PerLevel<FetchRows> QUARTER_CHROMA_ROWS;

/// Packed 4:2:2: luma and half chroma rows, or luma alone. Any order of U and V, either of luma and chroma first;
/// "swapped" says that the right pixel's luma comes first. Reads the macropixels.
extern const PerLevel<FetchRows> PACKED_ROWS;
extern const PerLevel<FetchRows> PACKED_LUMA_ROW;
extern const PerLevel<FetchRows> SWAPPED_PACKED_ROWS;
extern const PerLevel<FetchRows> SWAPPED_PACKED_LUMA_ROW;

/// How the lines of a layout become rows; nothing where they lie as rows already.
struct FetchStages {
  const PerLevel<FetchRows> *whole; ///< makes every row that does not lie as it is
  const PerLevel<FetchRows>
      *luma; ///< luma alone, for a line that shares another's chroma; null where luma lies as it is
};

/// The stages of a Shape. Planar layouts need none.
template <class Layout>
inline constexpr FetchStages kFetchOf{};

template <>
inline constexpr FetchStages kFetchOf<Shape<1, 1, 2>>{&EVEN_CHROMA_ROWS, nullptr};

template <>
inline constexpr FetchStages kFetchOf<Shape<2, 0>>{&QUARTER_CHROMA_ROWS, nullptr};

template <int yShift, int left, int right>
inline constexpr FetchStages kFetchOf<Shape<1, yShift, 4, 4, left, right>> =
    left < right ? FetchStages{&PACKED_ROWS, &PACKED_LUMA_ROW}
                 : FetchStages{&SWAPPED_PACKED_ROWS, &SWAPPED_PACKED_LUMA_ROW};

} // namespace zqcc
