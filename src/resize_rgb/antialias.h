// Planar input to RGB565 with filtered resizing: five-point mean or box mean, every plane on its own.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeYuvToRgb565AntiAlias(const Job &job);
void resizeYuv444ToRgb565AntiAlias(const Job &job);
void resizeYuv440ToRgb565AntiAlias(const Job &job);
void resizeYuv411ToRgb565AntiAlias(const Job &job);
void resizeYuvQuarterHeightToRgb565AntiAlias(const Job &job);
void resizePlanarRgbToRgb565AntiAlias(const Job &job);

} // namespace zqcc
