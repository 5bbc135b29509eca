// Fixed limited-range BT.601 to RGB565: one stage for each arithmetic and each way that chroma comes.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// Two lines that share their chroma, half chroma.
extern const PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR;

} // namespace zqcc
