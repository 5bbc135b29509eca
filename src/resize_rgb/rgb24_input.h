// RGB24 to RGB565 with bilinear resizing, upright or turned by a quarter.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeRgb24ToRgb565(const Job &job);
void resizeRgb24ToRgb565Left(const Job &job);
void resizeRgb24ToRgb565Right(const Job &job);

} // namespace zqcc
