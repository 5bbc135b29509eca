// Planar input to RGB24 with nearest resizing by run-length tables; never turned.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeYuvToRgb24(const Job &job);

} // namespace zqcc
