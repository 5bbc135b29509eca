// Fixed limited-range BT.601 to RGB565: one stage for each arithmetic (kernels/arithmetic.h: StudioSixBit,
// StudioVideoRange, StudioFiveSix) and each way that chroma comes. None looks at the line or the constants.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// PAIR: two lines with half chroma. SINGLE: one line with half chroma. FULL: one line with full chroma. FULL_PAIR: two
/// lines that share full chroma. EVEN_PAIR: two lines of which sample 2i of u and v belongs to pixels 2i and 2i + 1;
/// where u and v are neighbours they are read as rows of pairs, to the last pair's end and not beyond.
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_SINGLE;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_EVEN_PAIR;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_FULL_PAIR;
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_FULL;
extern const PerLevel<ColourRows> STUDIO_VIDEO_RANGE_PAIR;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_PAIR;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_SINGLE;
extern const PerLevel<ColourRows> STUDIO_FIVE_SIX_FULL;

} // namespace zqcc
