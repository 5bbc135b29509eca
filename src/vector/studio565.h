// Fixed limited-range BT.601 to RGB565: one stage for each arithmetic (kernels/arithmetic.h: StudioSixBit,
// StudioVideoRange, StudioFiveSix) and each way that chroma comes. None looks at the line or the constants.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// PAIR: two lines with half chroma. SINGLE: one line with half chroma. FULL: one line with full chroma.
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_SINGLE;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_FULL;
extern const PerLevel<ColourRows> STUDIO_VIDEO_RANGE_PAIR;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_PAIR;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_SINGLE;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_FULL;

} // namespace zqcc
