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

/// Packed 4:2:2: luma and half chroma rows. Any order of U and V, either of luma and chroma first;
/// "swapped" says that the right pixel's luma comes first. Reads the macropixels.
extern const PerLevel<FetchRows> PACKED_ROWS;
extern const PerLevel<FetchRows> SWAPPED_PACKED_ROWS;

/// The stage of a Shape; null where the lines lie as rows already, as planar ones do.
template <class Layout>
inline constexpr const PerLevel<FetchRows> *kFetchOf = nullptr;

template <>
inline constexpr const PerLevel<FetchRows> *kFetchOf<Shape<1, 1, 2>> = &EVEN_CHROMA_ROWS;

template <>
inline constexpr const PerLevel<FetchRows> *kFetchOf<Shape<2, 0>> = &QUARTER_CHROMA_ROWS;

template <int yShift, int left, int right>
inline constexpr const PerLevel<FetchRows> *kFetchOf<Shape<1, yShift, 4, 4, left, right>> =
    left < right ? &PACKED_ROWS : &SWAPPED_PACKED_ROWS;

} // namespace zqcc
