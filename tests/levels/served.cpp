#include "levels/served.h"

#include "base/picture_shape.h"
#include "containment/expectation.h"
#include "frame/route.h"
#include "reference/direct_case.h"
#include "support/picture.h"
#include "vector/resize_plan.h"

#include <array>

namespace levels {
namespace {

using containment::Mode;
using containment::Sizes;
using support::Canvas;
using support::Picture;

uint32_t convert(const Mode &mode, const Sizes &sizes, Canvas &canvas) {
  const Picture picture(mode.inType, sizes.width, sizes.height, support::tightStride(mode.inType, sizes.width),
                        support::Fill::Noise, 3);
  ConvertParams params = containment::recordOf(mode, sizes);
  picture.describe(params);
  canvas.describe(params);
  return support::convertOnce(params);
}

Canvas canvasFor(const Mode &mode, const Sizes &sizes) {
  const reference::Size written = containment::writtenSize(containment::recordOf(mode, sizes));
  return Canvas::forPicture(mode.outType, written.width, written.height,
                            support::tightStride(mode.outType, written.width));
}

/// Whether set-up makes a plan for vector code, or none is needed.
bool isPlanned(const Mode &mode) {
  const ConvertParams params = containment::recordOf(mode, kWholeBlocks);
  const zqcc::PlanKind plan = zqcc::routeOf(params).plan;
  return plan == zqcc::PlanKind::Packed || plan == zqcc::PlanKind::Box || zqcc::resizePlanBytes(plan, params) > 0;
}

bool convertsToRgb(const Mode &mode) {
  const bool turns = mode.rotation >= ROTATION_NONE && mode.rotation <= ROTATION_FLIP_V;
  const bool toRgb = support::isRgb16(mode.outType) || mode.outType == COLOR_RGB24;
  return turns && toRgb && mode.inType != mode.outType;
}

/// Half turns only where they are no copies.
bool turnsOwnType(const Mode &mode) {
  const bool half = mode.rotation == ROTATION_180 && zqcc::isPlanar420(mode.inType);
  return mode.inType == mode.outType &&
         (mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT || half);
}

bool takesMacropixelsApart(const Mode &mode) {
  return zqcc::isPacked422(mode.inType) && zqcc::isPlanar420(mode.outType) && mode.rotation == ROTATION_NONE;
}

} // namespace

zqcc::LevelSet Served::levels() const {
  zqcc::LevelSet all = 0;
  for (const Calls &call : calls) {
    all |= zqcc::setOf(call.level);
  }
  return all;
}

std::vector<Mode> servedConversions() {
  std::vector<Mode> modes;
  for (const Mode &mode : containment::allModes()) {
    const bool plain = mode.isResize == 0 && mode.quality == 0;
    const bool resized = mode.isResize == 1 && isPlanned(mode);
    const bool kept = mode.inType == mode.outType && mode.rotation <= ROTATION_FLIP_V;
    const bool made = plain ? convertsToRgb(mode) || turnsOwnType(mode) || takesMacropixelsApart(mode)
                            : resized && (convertsToRgb(mode) || kept);
    if (made && containment::cellOf(containment::recordOf(mode, kWholeBlocks)) >= 0) {
      modes.push_back(mode);
    }
  }
  return modes;
}

Served servedBy(const Mode &mode, const Sizes &sizes) {
  Canvas canvas = canvasFor(mode, sizes);
  const Muted silence;
  forgetCalls();
  Served served;
  const bool converted = convert(mode, sizes, canvas) == CC_OK;
  served.calls = calls();
  served.whole = converted && !served.calls.empty() && canvas.touched().empty();
  return served;
}

std::string nameOf(const Mode &mode) {
  static constexpr std::array<const char *, 7> kTurns{"", "", "upright", "left", "right", "half", "flip"};
  return std::to_string(mode.inType) + " " + std::to_string(mode.outType) + " " + kTurns.at(mode.rotation) +
         (mode.isResize == 1 ? " resized, quality " + std::to_string(mode.quality) : "");
}

} // namespace levels
