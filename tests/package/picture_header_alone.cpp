#include "zqPicture.h"

#include <cstddef>
#include <type_traits>

// The records' fields have the order and the types that the binary interface fixes.
static_assert(std::is_standard_layout_v<ZqpPicture> && std::is_trivially_copyable_v<ZqpPicture>);
static_assert(offsetof(ZqpPlane, stride) == sizeof(void *) && offsetof(ZqpPlane, bytes) == 2 * sizeof(void *));
static_assert(offsetof(ZqpPicture, recordSize) == 0 && offsetof(ZqpPicture, height) == 12);
static_assert(offsetof(ZqpPicture, planes) == 16 && sizeof(ZqpPicture) == 16 + 9 * sizeof(void *));
static_assert(std::is_standard_layout_v<ZqpConversion> && std::is_trivially_copyable_v<ZqpConversion>);
static_assert(offsetof(ZqpConversion, crop) == 16 && offsetof(ZqpConversion, outFormat) == 32);
static_assert(offsetof(ZqpConversion, orientation) == 44 && offsetof(ZqpConversion, dither) == 52);
static_assert(offsetof(ZqpConversion, inColours) == 56 && offsetof(ZqpConversion, outColours) == 76);
static_assert(sizeof(ZqpColours) == 20 && sizeof(ZqpConversion) == 96);
static_assert(
    std::is_same_v<decltype(zqpConvert), int32_t(const ZqpConverter *, const ZqpPicture *, const ZqpPicture *)>);
