// Planar input to RGB24 with nearest resizing by run-length tables; never turned.
#pragma once

#include "frame/routine.h"

namespace zqcc {

void resizeYuvToRgb24(const Job &job);

} // namespace zqcc
