// Packed 4:2:2 to 16-bit and to 24-bit RGB with resizing by the nearest macropixel, upright or turned.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizePacked422ToRgb565(const Job &job);
void resizePacked422ToRgb24(const Job &job);

} // namespace zqcc
