// RGB24 to RGB565 at the same size: channels lose their low bits, nothing is rounded or dithered.
#pragma once

#include "base/job.h"

namespace zqcc {

void convertRgb24ToRgb565(const Job &job);
void convertRgb24ToRgb565Left(const Job &job);
void convertRgb24ToRgb565Right(const Job &job);

} // namespace zqcc
