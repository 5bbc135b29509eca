#include "containment/cells.h"

#include "frame/route.h"
#include "frame/routine_tables.h"
#include "yuv/yuv_to_yuv.h"

#include <cstddef>

namespace containment {
namespace {

template <std::size_t N>
void append(std::vector<Cell> &all, const std::string &table, const zqcc::Routine (&routines)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    all.push_back({table + "[" + std::to_string(i) + "]", routines[i]});
  }
}

std::vector<Cell> collect() {
  std::vector<Cell> all;
  append(all, "SAME_PLANAR420", zqcc::SAME_PLANAR420);
  append(all, "SAME_RGB16", zqcc::SAME_RGB16);
  append(all, "SAME_SEMI_PLANAR", zqcc::SAME_SEMI_PLANAR);
  append(all, "SAME_PACKED422", zqcc::SAME_PACKED422);
  append(all, "PLANAR_TO_RGB24", zqcc::PLANAR_TO_RGB24);
  append(all, "PACKED422_TO_RGB16", zqcc::PACKED422_TO_RGB16);
  append(all, "PACKED422_TO_RGB24", zqcc::PACKED422_TO_RGB24);
  append(all, "RGB24_TO_RGB565", zqcc::RGB24_TO_RGB565);
  append(all, "RESIZE_TO_RGB565", zqcc::RESIZE_TO_RGB565);
  for (std::size_t kind = 0; kind < zqcc::KIND_COUNT; ++kind) {
    append(all, "PLANAR_TO_RGB565[" + std::to_string(kind) + "]", zqcc::PLANAR_TO_RGB565[kind]);
  }
  // The two that no table lists: there is one for each kind of input.
  all.push_back({"TO_YUV420[planar]", zqcc::copyPlanarToYuv420Planar});
  all.push_back({"TO_YUV420[packed]", zqcc::convertPacked422ToYuv420Planar});
  return all;
}

} // namespace

const std::vector<Cell> &cells() {
  static const std::vector<Cell> kAll = collect();
  return kAll;
}

int cellOf(const ConvertParams &params) {
  const zqcc::Routine routine = zqcc::routeOf(params).routine;
  for (std::size_t i = 0; routine != nullptr && i < cells().size(); ++i) {
    if (cells()[i].routine == routine) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

std::vector<Mode> allModes() {
  std::vector<Mode> modes;
  for (const int in : kTypes) {
    for (const int out : kTypes) {
      for (uint32_t code = 0; code < 2 * 8 * 4; ++code) {
        modes.push_back({in, out, code & 1U, code >> 1 & 7U, code >> 4});
      }
    }
  }
  return modes;
}

ConvertParams recordOf(const Mode &mode, const Sizes &sizes) {
  ConvertParams params{};
  params.inType = mode.inType;
  params.outType = mode.outType;
  params.isResize = mode.isResize;
  params.rotation = mode.rotation;
  params.antiAlias = mode.quality;
  params.inWidth = sizes.width;
  params.inHeight = sizes.height;
  params.outWidth = sizes.outWidth;
  params.outHeight = sizes.outHeight;
  return params;
}

} // namespace containment
