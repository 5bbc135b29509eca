// Which stages serve an arithmetic, and which make a layout, an arithmetic and a turn a conversion by rows.
#pragma once

#include "kernels/arithmetic.h"
#include "vector/place16.h"
#include "vector/rows.h"
#include "vector/studio565.h"

namespace zqcc {

/// Nothing for arithmetics that have no vector code.
template <class Arithmetic>
inline constexpr ColourStages kColourOf{};

template <>
inline constexpr ColourStages kColourOf<StudioSixBit>{&STUDIO_SIX_BIT_PAIR, nullptr, nullptr, nullptr};

template <int pixelBytes>
inline constexpr PlaceStages kPlaceOf{};

template <>
inline constexpr PlaceStages kPlaceOf<2>{&REVERSE_ROW16, &TRANSPOSE_BLOCK16};

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
constexpr RowStages rowStages() {
  const ColourStages &colour = kColourOf<Arithmetic>;
  RowStages stages{kFetchOf<Layout>, nullptr, nullptr, colour.makeConstants, kPlaceOf<pixelBytes>, turn, pixelBytes};
  if constexpr (Layout::kSharedByColumns) {
    stages.pair = Layout::kSharedByLines ? colour.halfPair : nullptr;
    stages.single = colour.half;
  } else {
    stages.single = colour.full;
  }
  return stages;
}

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
inline constexpr RowStages kRowStages = rowStages<Layout, Arithmetic, turn, pixelBytes>();

} // namespace zqcc
