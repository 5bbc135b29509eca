// Which stages serve an arithmetic, and which make a layout, an arithmetic and a turn a conversion by rows.
#pragma once

#include "kernels/arithmetic.h"
#include "vector/rows.h"
#include "vector/studio565.h"

namespace zqcc {

/// Nothing for arithmetics that have no vector code.
template <class Arithmetic>
inline constexpr ColourStages kColourOf{};

template <>
inline constexpr ColourStages kColourOf<StudioSixBit>{&STUDIO565_PAIR, nullptr, nullptr, nullptr};

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
constexpr RowStages rowStages() {
  const ColourStages &colour = kColourOf<Arithmetic>;
  const FetchStages &fetch = kFetchOf<Layout>;
  if constexpr (Layout::kSharedByColumns) {
    return {
        Layout::kSharedByLines ? colour.halfPair : nullptr, colour.half, fetch, colour.makeConstants, turn, pixelBytes};
  } else {
    return {nullptr, colour.full, fetch, colour.makeConstants, turn, pixelBytes};
  }
}

template <class Layout, class Arithmetic, Turn turn, int pixelBytes>
inline constexpr RowStages kRowStages = rowStages<Layout, Arithmetic, turn, pixelBytes>();

} // namespace zqcc
