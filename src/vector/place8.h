// Placing rows of 8-bit samples: backwards, and as the output lines of a quarter turn.
#pragma once

#include "vector/place_stages.h"

namespace zqcc {

/// Rows of at least 16 samples, and blocks of at least 16 columns and 16 rows.
inline constexpr int32_t kLeastSamples = 16;
extern const PerLevel<ReverseRow> REVERSE_ROW8;
extern const PerLevel<TransposeBlock> TRANSPOSE_BLOCK8;

} // namespace zqcc
