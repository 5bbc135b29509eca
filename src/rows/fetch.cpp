#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/fetch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/fetch.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {} // namespace

extern const FetchStages kFetchStages;
const FetchStages kFetchStages = {};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
