// What colour arithmetics in 16-bit lanes hand on to what stores pixels.

// Read once a level.
#if defined(ZQCC_VECTOR_COMPONENTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_COMPONENTS_INL_H
#undef ZQCC_VECTOR_COMPONENTS_INL_H
#else
#define ZQCC_VECTOR_COMPONENTS_INL_H
#endif

#include <hwy/highway.h>

#include <cstdint>

// No function stands here, so that no instructions of a level are asked for either.
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// 16-bit lanes for a vector of bytes.
template <class D>
using Words = hn::Repartition<int16_t, D>;

/// Components of the pixels of every second column, one a lane, not yet limited to a byte.
template <class V>
struct Components {
  V blue;
  V green;
  V red;
};

} // namespace
} // namespace zqcc::HWY_NAMESPACE

#endif
