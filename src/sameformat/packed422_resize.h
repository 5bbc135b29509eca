// Packed 4:2:2 to packed 4:2:2, resized upright. All eight byte orders.
//
// Lines of odd width end as in packed422.h. The second luma sample of a lone pixel's macropixel is 0.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Runs the one of the next three that serves the variant and the quality.
void resizePacked422Select(const Job &job);

/// Bilinear, variants 0 to 3; tables of one tap a position. A macropixel's chroma has its own position: entry k of the
/// table's first half, counted in source macropixels.
void resizePacked422(const Job &job);

/// As resizePacked422 for variants 4 to 7.
void resizePacked422Swapped(const Job &job);

/// The mean of five bilinear taps, variants 0 to 3; tables of five taps a position.
void resizePacked422AntiAlias(const Job &job);

} // namespace zqcc
