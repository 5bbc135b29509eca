// Nearest sampling of packed 4:2:2: macropixels of a line, chosen by number, side by side.
#pragma once

#include "base/levels.h"

#include <cstdint>

namespace zqcc {

/// Copies macropixels from[index[0]], from[index[1]], ..., `count` of them, to `to`. The numbers do not fall. Reads
/// none but the first `readable` macropixels, among which are all that are chosen.
using PickMacropixels = void (*)(const uint8_t *from, const int32_t *index, int32_t count, int32_t readable,
                                 uint8_t *to);

extern const PerLevel<PickMacropixels> PICK_MACROPIXELS;

} // namespace zqcc
