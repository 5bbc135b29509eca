#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/place.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/place.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {} // namespace

extern const PlaceStages kPlaceStages;
const PlaceStages kPlaceStages = {};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
