// Packed 4:2:2 to 16-bit RGB at the same size, upright or turned.
#pragma once

#include "base/job.h"
#include "kernels/convert_rect.h"

namespace zqcc {

/// Columns of PACKED_KERNELS.
enum PackedTurn : unsigned { PACKED_UPRIGHT, PACKED_LEFT, PACKED_RIGHT, PACKED_HALF, PACKED_TURN_COUNT };

/// Rows by packedVariant: the members of a row differ in placement only, those of a column in byte positions only.
extern const TileKernel PACKED_KERNELS[kPackedVariants][PACKED_TURN_COUNT];

void convertPacked422ToRgb565(const Job &job);

} // namespace zqcc
