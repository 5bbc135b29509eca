// Rows of components become lines of the output.
#pragma once

#include "picture/converter.h"
#include "picture/views.h"
#include "rows/place.h"

namespace zqp {

class Placer {
public:
  Placer(const ZqpConverter &converter, const Planes &planes, const PlaceStages &stages)
      : format_(*converter.description.out), planes_(planes), stages_(stages) {}

  /// Where a component of column `x` of line `y` is; of formats that are not planar, where the column is. Lines and
  /// columns are those of the pass, as one sees them.
  [[nodiscard]] uint8_t *at(const Pass &pass, int32_t component, int32_t x, int32_t y) const;
  [[nodiscard]] std::ptrdiff_t strideOf(const Pass &pass, int32_t component) const;

  /// Puts rows into a line, from column `x` on. Rows of planes may lie there already.
  void place(const Pass &pass, const uint8_t *const rows[4], int32_t count, int32_t x, int32_t y) const;

  /// Puts blocks of rows into lines, of formats that are not planar: into line `y` and each `step` lines further.
  struct Lines {
    int32_t count;
    int32_t y;
    int32_t step;
  };
  void placeBlock(const Pass &pass, const uint8_t *const blocks[4], std::ptrdiff_t rowBytes, int32_t count, int32_t x,
                  const Lines &lines) const;

  /// Whether components are planes of their own.
  static bool isPlanar(const Pass &pass) {
    return pass.placing == Placing::Plane || pass.placing == Placing::ChromaPlanes;
  }

private:
  [[nodiscard]] int32_t planeOf(const Pass &pass, int32_t component) const;

  const Format &format_;
  const Planes &planes_;
  const PlaceStages &stages_;
};

} // namespace zqp
