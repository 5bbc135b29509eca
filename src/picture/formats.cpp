#include "picture/formats.h"

#include "zqPicture.h"

namespace zqp {
namespace {

constexpr Shifts kNone = {0, 0};
constexpr Shifts k420 = {1, 1};
constexpr Shifts k422 = {1, 0};

constexpr Format planar(int32_t id, Shifts chroma, bool isOutput, bool isSwapped = false) {
  return {id, Family::Planar, isOutput, isSwapped, chroma, {}};
}

constexpr Format packed(int32_t id, PackedOrder order, bool isOutput) {
  return {id, Family::Packed422, isOutput, order.v < order.u, k422, order};
}

constexpr Format rgb(int32_t id, Family family, bool isSwapped, bool isOutput = true) {
  return {id, family, isOutput, isSwapped, kNone, {}};
}

constexpr Format kFormats[] = {
    planar(ZQP_I420, k420, true),
    planar(ZQP_YV12, k420, true, true),
    {ZQP_NV12, Family::SemiPlanar, true, false, k420, {}},
    {ZQP_NV21, Family::SemiPlanar, true, true, k420, {}},
    planar(ZQP_I422, k422, true),
    planar(ZQP_I444, kNone, true),
    {ZQP_GREY, Family::Grey, true, false, kNone, {}},
    packed(ZQP_YUYV, {0, 2, 1, 3}, true),
    packed(ZQP_UYVY, {1, 3, 0, 2}, true),
    packed(ZQP_YVYU, {0, 2, 3, 1}, true),
    packed(ZQP_VYUY, {1, 3, 2, 0}, true),
    rgb(ZQP_RGB565, Family::Rgb565, false),
    rgb(ZQP_RGB565_SWAPPED, Family::Rgb565, true),
    rgb(ZQP_RGB24, Family::Rgb24, false),
    rgb(ZQP_BGR24, Family::Rgb24, true),
    rgb(ZQP_RGBA, Family::Rgb32, false),
    rgb(ZQP_BGRA, Family::Rgb32, true),
    planar(ZQP_I440, {0, 1}, false),
    planar(ZQP_I411, {2, 0}, false),
    planar(ZQP_QUARTER_HEIGHT, {0, 2}, false),
    packed(ZQP_YUYV2, {2, 0, 1, 3}, false),
    packed(ZQP_UYVY2, {3, 1, 0, 2}, false),
    packed(ZQP_YVYU2, {2, 0, 3, 1}, false),
    packed(ZQP_VYUY2, {3, 1, 2, 0}, false),
    rgb(ZQP_RGB_PLANES, Family::RgbPlanes, false, false),
};
constexpr int32_t kFormatCount = sizeof(kFormats) / sizeof(kFormats[0]);

constexpr bool areInOrder() {
  for (int32_t i = 0; i < kFormatCount; ++i) {
    if (kFormats[i].id != i + 1) {
      return false;
    }
  }
  return true;
}
static_assert(areInOrder());

/// Samples of a plane, each of which is so many bytes.
struct Samples {
  Shifts shifts;
  std::size_t bytes;
};

Samples samplesOfPlane(const Format &format, int32_t plane) {
  switch (format.family) {
  case Family::SemiPlanar:
    return plane == 0 ? Samples{kNone, 1} : Samples{format.chroma, 2};
  case Family::Packed422:
    return {k422, 4};
  case Family::Rgb565:
    return {kNone, 2};
  case Family::Rgb24:
    return {kNone, 3};
  case Family::Rgb32:
    return {kNone, 4};
  case Family::Planar:
  case Family::Grey:
  case Family::RgbPlanes:
    break;
  }
  return {plane == 0 ? kNone : format.chroma, 1};
}

} // namespace

int32_t Format::planes() const {
  switch (family) {
  case Family::Planar:
  case Family::RgbPlanes:
    return 3;
  case Family::SemiPlanar:
    return 2;
  default:
    return 1;
  }
}

const Format *formatOf(int32_t id) {
  return id >= 1 && id <= kFormatCount ? &kFormats[id - 1] : nullptr;
}

PlaneShape planeShape(const Format &format, int32_t width, int32_t height, int32_t plane) {
  const Samples samples = samplesOfPlane(format, plane);
  return {static_cast<std::size_t>(samplesOf(width, samples.shifts.x)) * samples.bytes,
          samplesOf(height, samples.shifts.y)};
}

PlaneShape placeInPlane(const Format &format, int32_t x, int32_t y, int32_t plane) {
  return planeShape(format, x, y, plane); // whole samples: nothing is rounded up
}

Shifts wholeSamples(const Format &format) {
  return format.chroma;
}

} // namespace zqp
