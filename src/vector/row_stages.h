// Which stages serve an arithmetic, and which make a layout, an arithmetic and a turn a conversion by rows.
#pragma once

#include "kernels/arithmetic.h"
#include "kernels/layouts.h"
#include "vector/fetch.h"
#include "vector/matrix565.h"
#include "vector/matrix_constants.h"
#include "vector/pack565.h"
#include "vector/place16.h"
#include "vector/place24.h"
#include "vector/rgb24.h"
#include "vector/rows.h"
#include "vector/studio565.h"

namespace zqcc {

/// Nothing for arithmetics that have no vector code.
template <class Arithmetic>
inline constexpr ColourStages kColourOf{};

template <>
inline constexpr ColourStages kColourOf<StudioSixBit>{&STUDIO_SIX_BIT_PAIR, &STUDIO_SIX_BIT_SINGLE,
                                                      &STUDIO_SIX_BIT_FULL, nullptr, &STUDIO_SIX_BIT_FULL_PAIR};

template <>
inline constexpr ColourStages kColourOf<StudioVideoRange>{&STUDIO_VIDEO_RANGE_PAIR, nullptr, nullptr, nullptr};

template <>
inline constexpr ColourStages kColourOf<StudioFiveSix>{&STUDIO_FIVE_SIX_PAIR, &STUDIO_FIVE_SIX_SINGLE,
                                                       &STUDIO_FIVE_SIX_FULL, nullptr};

template <Turn turn>
inline constexpr ColourStages kColourOf<MatrixDither<turn>>{&MATRIX565_HALF_PAIR, &MATRIX565_HALF, &MATRIX565_FULL,
                                                            makeDitherConstants<turn>};

template <>
inline constexpr ColourStages kColourOf<PackRgb>{nullptr, nullptr, &PACK565, nullptr};

template <>
inline constexpr ColourStages kColourOf<StudioQ12>{&STUDIO_Q12_PAIR, nullptr, nullptr, nullptr};

template <>
inline constexpr ColourStages kColourOf<MatrixRgb24>{&MATRIX_RGB24_PAIR, nullptr, nullptr, makeMatrixConstants};

template <int pixelBytes>
inline constexpr PlaceStages kPlaceOf{};

template <>
inline constexpr PlaceStages kPlaceOf<2>{&REVERSE_ROW16, &TRANSPOSE_BLOCK16};

template <>
inline constexpr PlaceStages kPlaceOf<3>{&REVERSE_ROW24, &TRANSPOSE_BLOCK24};

/// What makes pixels of a layout as it lies, without a fetch, where there is such a stage. A null pointer would not do:
/// whether the address of a table is null is no constant for GCC's sanitizers.
template <class Layout, class Arithmetic>
struct ColourAsItLies {
  static constexpr bool kExists = false;
};

template <const PerLevel<ColourRows> &stage>
struct ColourStageAsItLies {
  static constexpr bool kExists = true;
  static constexpr const PerLevel<ColourRows> *kStage = &stage;
};

template <>
struct ColourAsItLies<Rgb24Bytes::Layout, PackRgb> : ColourStageAsItLies<PACK565_RGB24> {};
template <>
struct ColourAsItLies<Shape<1, 1, 2>, StudioSixBit> : ColourStageAsItLies<STUDIO_SIX_BIT_EVEN_PAIR> {};
template <>
struct ColourAsItLies<Packed422<false>::Layout, MatrixRgb24> : ColourStageAsItLies<MATRIX_RGB24_PACKED> {};
template <>
struct ColourAsItLies<Packed422<true>::Layout, MatrixRgb24> : ColourStageAsItLies<MATRIX_RGB24_PACKED_SWAPPED> {};
template <int left, int right, Turn turn>
struct ColourAsItLies<Shape<1, 1, 4, 4, left, right>, MatrixDither<turn>> {
  static constexpr bool kExists = true;
  static constexpr const PerLevel<ColourRows> *kStage =
      left < right ? &MATRIX565_PACKED_PAIR : &MATRIX565_SWAPPED_PACKED_PAIR;
};

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
constexpr RowStages rowStages() {
  const ColourStages &colour = kColourOf<Arithmetic>;
  RowStages stages{kFetchOf<Layout>, nullptr, nullptr, colour.makeConstants, kPlaceOf<pixelBytes>, turn, pixelBytes};
  if constexpr (ColourAsItLies<Layout, Arithmetic>::kExists) {
    stages.fetch = nullptr;
    (Layout::kSharedByLines ? stages.pair : stages.single) = ColourAsItLies<Layout, Arithmetic>::kStage;
  } else if constexpr (Layout::kSharedByColumns) {
    stages.pair = Layout::kSharedByLines ? colour.halfPair : nullptr;
    stages.single = colour.half;
  } else {
    stages.pair = Layout::kSharedByLines ? colour.fullPair : nullptr;
    stages.single = colour.full;
  }
  return stages;
}

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
inline constexpr RowStages kRowStages = rowStages<Layout, Arithmetic, turn, pixelBytes>();

} // namespace zqcc
