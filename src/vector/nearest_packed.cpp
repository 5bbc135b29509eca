#include "vector/nearest_packed.h"

#include "vector/pick_macropixels.h"
#include "vector/picked_block.h"
#include "vector/place_packed422.h"

namespace zqcc {
namespace {

constexpr auto kUnit = static_cast<int32_t>(kMacropixelBytes);
constexpr int32_t kPixelBytes = kUnit / 2;

/// Numbers never fall: the last one is the highest.
bool isInside(const PickedMacropixels &picture) {
  return picture.columns > 1 && picture.xTable[picture.columns / 2 - 1] < picture.readable;
}

} // namespace

bool pickedMacropixelsTurned(LevelSet levels, const PackedLayout &layout, const PickedMacropixels &picture) {
  const PickMacropixels pick = PICK_MACROPIXELS.in(levels);
  const TransposeBlock transpose = (layout.firstLuma() == 0 ? TRANSPOSE_LUMA_FIRST : TRANSPOSE_CHROMA_FIRST).in(levels);
  const PickedTurn turn{{transpose, kPixelBytes}, picture.to, picture.toStep, picture.columns, picture.lines};
  if (pick == nullptr || !isTurnedByBlocks(turn) || !isInside(picture)) {
    return false;
  }
  turnPickedLines(
      turn, [&](int32_t line) { return picture.first + picture.yFirst[line * picture.yStep] * picture.stride; },
      [&](const uint8_t *line, int32_t byte, int32_t bytes, uint8_t *row) {
        pick(line, picture.xTable + byte / kUnit, bytes / kUnit, picture.readable, row);
      });
  return true;
}

} // namespace zqcc
