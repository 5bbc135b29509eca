#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/colour.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/colour.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {} // namespace

extern const ColourStages kColourStages;
const ColourStages kColourStages = {};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
