// Outputs that are so far apart in the input that what they are made of is read in segments. Plain code: there are few
// of them, and nearly all of the work is done before.
#pragma once

#include "picture/line_means.h"

namespace zqp {

/// The most outputs at once, and samples of a segment.
inline constexpr int32_t kWideOutputs = 256;
inline constexpr int32_t kSegment = 1024;

void pickWide(const GridPlan &plan, InputRows &input, const Part &part, int32_t line, uint8_t *const to[4]);
void lerpWide(const GridPlan &plan, InputRows &input, const Part &part, int32_t j, int16_t *const to[4]);
void tapWide(const GridPlan &plan, LineMeans &means, InputRows &input, const Part &part, int32_t j,
             int16_t *const to[4]);

} // namespace zqp
