// Dispatch: the way of one frame to its routine.
#pragma once

#include "frame/context.h"

#include <cstdint>

namespace zqcc {

/// Converts one frame. Returns CC_OK, or a code with nothing written and the record as it was. For planar types 12 and
/// 13 converted to another type inBuf[1] and inBuf[2] of the record are exchanged, and stay so. `skippedBytes` of each
/// input stride lie in front of the frame's lines, which are cut out of longer ones.
uint32_t dispatchFrame(ConvertContext &context, ConvertParams &params, int64_t skippedBytes = 0);

} // namespace zqcc
