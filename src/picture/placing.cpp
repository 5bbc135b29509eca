#include "picture/placing.h"

#include <cstring>
#include <utility>

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
  if (!isPlanar(pass)) {
    placeBlock(pass, rows, 0, count, x, {1, y, 0});
    return;
  }
  for (int32_t c = 0; c < pass.components; ++c) {
    uint8_t *line = at(pass, c, x, y);
    if (rows[c] != line) {
      std::memcpy(line, rows[c], static_cast<std::size_t>(count));
    }
  }
}

void Placer::placeBlock(const Pass &pass, const uint8_t *const blocks[4], std::ptrdiff_t rowBytes, int32_t count,
                        int32_t x, const Lines &lines) const {
  const bool isRgb = format_.isRgb() && pass.placing != Placing::Rgb565;
  const bool isExchanged = isRgb && format_.isSwapped;
  const uint8_t *rows[4] = {blocks[isExchanged ? 2 : 0], blocks[1], blocks[isExchanged ? 0 : 2], blocks[3]};
  const bool isVuFirst = pass.placing == Placing::ChromaPairs && format_.isSwapped;
  if (isVuFirst) {
    std::swap(rows[0], rows[1]);
  }
  const std::ptrdiff_t toNext = strideOf(pass, 0) * lines.step;
  uint8_t *to = at(pass, 0, x, lines.y);
  const auto forLines = [&](auto put) {
    for (int32_t n = 0; n < lines.count; ++n, to += toNext) {
      put();
      for (const uint8_t *&row : rows) {
        row += row == nullptr ? 0 : rowBytes;
      }
    }
  };
  switch (pass.placing) {
  case Placing::ChromaPairs:
    forLines([&] { stages_.pairs(rows[0], rows[1], count, to); });
    break;
  case Placing::Packed:
    forLines([&] { stages_.packed(rows[0], rows[1], rows[2], format_.order, count, to); });
    break;
  case Placing::Rgb565:
    forLines([&] { stages_.rgb565(rows, format_.isSwapped, count, to); });
    break;
  case Placing::Three:
    forLines([&] { stages_.three(rows, count, to); });
    break;
  default:
    forLines([&] { stages_.four(rows, count, to); });
    break;
  }
}

} // namespace zqp
