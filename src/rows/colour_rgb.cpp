#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/colour_rgb.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/colour.h"
#include "rows/colour_line-inl.h"

namespace zqp::HWY_NAMESPACE {

#define ZQP_LAYOUTS(...)                                                                                               \
  {                                                                                                                    \
    makeLine<__VA_ARGS__, RowPixels>, makeLine<__VA_ARGS__, Rgb565Pixels<false>>,                                      \
        makeLine<__VA_ARGS__, Rgb565Pixels<true>>, makeLine<__VA_ARGS__, Rgb24Pixels<false>>,                          \
        makeLine<__VA_ARGS__, Rgb24Pixels<true>>, makeLine<__VA_ARGS__, Rgb32Pixels<false>>,                           \
        makeLine<__VA_ARGS__, Rgb32Pixels<true>>                                                                       \
  }

extern const RgbOfBytes kRgbOfBytes[kYuvLayouts][kRgbLayouts];
const RgbOfBytes kRgbOfBytes[kYuvLayouts][kRgbLayouts] = {
    ZQP_LAYOUTS(HalfSource),
    ZQP_LAYOUTS(PairsSource<false>),
    ZQP_LAYOUTS(PairsSource<true>),
    ZQP_LAYOUTS(PackedSource<0, 1, 3>), // Yuyv
    ZQP_LAYOUTS(PackedSource<1, 0, 2>), // Uyvy
    ZQP_LAYOUTS(PackedSource<0, 3, 1>), // Yvyu
    ZQP_LAYOUTS(PackedSource<1, 2, 0>), // Vyuy
    ZQP_LAYOUTS(FullSource),
};

extern const RgbOfWords kRgbOfWords[kRgbLayouts];
const RgbOfWords kRgbOfWords[kRgbLayouts] = ZQP_LAYOUTS(WordSource);

#undef ZQP_LAYOUTS

} // namespace zqp::HWY_NAMESPACE
