#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/scale.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/scale.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {} // namespace

extern const ScaleStages kScaleStages;
const ScaleStages kScaleStages = {};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
