#include "zqColorConversion.h"

#include <cstddef>
#include <type_traits>

// The record's fields have the order and the types that the binary interface fixes.
static_assert(std::is_standard_layout_v<ConvertParams> && std::is_trivially_copyable_v<ConvertParams>);
static_assert(offsetof(ConvertParams, inType) == 0 && offsetof(ConvertParams, inStride) == 12);
static_assert(offsetof(ConvertParams, inBuf) == 16);
static_assert(offsetof(ConvertParams, outType) == 16 + 3 * sizeof(void *));
static_assert(offsetof(ConvertParams, outStride) == 28 + 3 * sizeof(void *));
static_assert(offsetof(ConvertParams, outBuf) == 32 + 3 * sizeof(void *));
static_assert(offsetof(ConvertParams, isResize) == 32 + 6 * sizeof(void *));
static_assert(offsetof(ConvertParams, antiAlias) == 40 + 6 * sizeof(void *));
static_assert(std::is_same_v<decltype(ConvertParams::isResize), uint32_t>);
static_assert(std::is_same_v<decltype(zqCCSetParameter), uint32_t(ConvertContext *, uint32_t, void *)>);
