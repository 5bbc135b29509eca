// Packed 4:2:2 to 16-bit RGB at the same size, upright or turned.
#pragma once

#include "base/job.h"
#include "base/turn.h"
#include "tables/packed_layout.h"
#include "vector/tile.h"

namespace zqcc {

/// Rows by packedVariant, columns by turn: the members of a row differ in placement only, those of a column in byte
/// positions only.
extern const Tile PACKED_KERNELS[kPackedVariants][4];

inline constexpr PerTurn kPackedColumns{.upright = 0, .left = 1, .right = 2, .half = 3, .flip = 0};

void convertPacked422ToRgb565(const Job &job);

} // namespace zqcc
