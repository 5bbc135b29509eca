#include "picture/placing.h"

#include <cstring>

namespace zqp {
namespace {

/// Bytes from one column to the next.
constexpr std::ptrdiff_t stepOf(Placing placing) {
  switch (placing) {
  case Placing::ChromaPairs:
  case Placing::Packed:
  case Placing::Rgb565:
    return 2;
  case Placing::Three:
    return 3;
  case Placing::Four:
    return 4;
  default:
    return 1;
  }
}

} // namespace

int32_t Placer::planeOf(const Pass &pass, int32_t component) const {
  switch (pass.placing) {
  case Placing::ChromaPlanes:
    return (component == 0) == format_.isSwapped ? 2 : 1;
  case Placing::ChromaPairs:
    return 1;
  default:
    return 0;
  }
}

std::ptrdiff_t Placer::strideOf(const Pass &pass, int32_t component) const {
  return planes_.stride[planeOf(pass, component)];
}

uint8_t *Placer::at(const Pass &pass, int32_t component, int32_t x, int32_t y) const {
  return planes_.line[planeOf(pass, component)] + strideOf(pass, component) * y + stepOf(pass.placing) * x;
}

void Placer::place(const Pass &pass, const uint8_t *const rows[4], int32_t count, int32_t x, int32_t y) const {
  uint8_t *to = at(pass, 0, x, y);
  const uint8_t *const swapped[4] = {rows[2], rows[1], rows[0], rows[3]};
  switch (pass.placing) {
  case Placing::Plane:
  case Placing::ChromaPlanes:
    for (int32_t c = 0; c < pass.components; ++c) {
      uint8_t *line = at(pass, c, x, y);
      if (rows[c] != line) {
        std::memcpy(line, rows[c], static_cast<std::size_t>(count));
      }
    }
    break;
  case Placing::ChromaPairs:
    stages_.pairs(rows[format_.isSwapped ? 1 : 0], rows[format_.isSwapped ? 0 : 1], count, to);
    break;
  case Placing::Packed:
    stages_.packed(rows[0], rows[1], rows[2], format_.order, count, to);
    break;
  case Placing::Rgb565:
    stages_.rgb565(rows, format_.isSwapped, count, to);
    break;
  case Placing::Three:
    stages_.three(format_.isSwapped ? swapped : rows, count, to);
    break;
  case Placing::Four:
    stages_.four(format_.isSwapped ? swapped : rows, count, to);
    break;
  }
}

} // namespace zqp
