#include "containment/random_case.h"

#include <algorithm>
#include <array>

namespace containment {
namespace {

/// How the output size of a resizing example follows from the input size: whole numbers that keep the ratio exact.
struct Ratio {
  int unit;        ///< input sizes are multiples of this
  int numerator;   ///< output = input * numerator / denominator
  int denominator; ///< 0: the two sizes are drawn apart
};
constexpr std::array<Ratio, 7> kRatios{{{1, 0, 0}, {2, 1, 2}, {4, 1, 4}, {8, 1, 8}, {4, 3, 4}, {2, 3, 2}, {1, 2, 1}}};

Sizes exampleOf(const Ratio &ratio) {
  if (ratio.denominator == 0) {
    return {24, 24, 23, 29};
  }
  const int side = 8 * ratio.unit;
  const int out = side * ratio.numerator / ratio.denominator;
  return {side, side, out, out};
}

} // namespace

CaseMaker::CaseMaker(uint32_t seed) : random_(seed), modes_(cells().size()) {
  for (const Mode &mode : allModes()) {
    const std::size_t ratios = mode.isResize == 1 ? kRatios.size() : 1;
    for (std::size_t i = 0; i < ratios; ++i) {
      const int cell = cellOf(recordOf(mode, exampleOf(kRatios[i])));
      if (cell >= 0) {
        modes_[static_cast<std::size_t>(cell)].push_back({mode, static_cast<int>(i)});
      }
    }
  }
}

int CaseMaker::between(int low, int high) {
  // Not the distribution of the standard library: a seed must give the same cases everywhere.
  return low + static_cast<int>(random_() % static_cast<uint32_t>(high - low + 1));
}

/// Small sides where edges meet, sides next to multiples of the block size, and now and then a long one.
int CaseMaker::side() {
  switch (between(0, 7)) {
  case 0:
  case 1:
    return between(1, 9);
  case 2:
  case 3:
    return std::max(1, 16 * between(1, 5) + between(-2, 2));
  case 4:
    return between(100, 260);
  default:
    return between(2, 70);
  }
}

Sizes CaseMaker::sizesFor(const Entry &entry) {
  Sizes sizes{side(), side(), 0, 0};
  // Two long sides would make a single case of the checker as slow as hundreds of others.
  if (sizes.width > 100 && sizes.height > 40) {
    sizes.height = between(1, 40);
  }
  const Ratio &ratio = kRatios[static_cast<std::size_t>(entry.ratio)];
  if (entry.mode.isResize == 0) {
    sizes.outWidth = sizes.width;
    sizes.outHeight = sizes.height;
  } else if (ratio.denominator == 0) {
    sizes.outWidth = side();
    sizes.outHeight = sizes.outWidth > 100 ? between(1, 40) : side();
  } else {
    sizes.width = (sizes.width + ratio.unit - 1) / ratio.unit * ratio.unit;
    sizes.height = (sizes.height + ratio.unit - 1) / ratio.unit * ratio.unit;
    sizes.outWidth = sizes.width * ratio.numerator / ratio.denominator;
    sizes.outHeight = sizes.height * ratio.numerator / ratio.denominator;
  }
  return sizes;
}

reference::MatrixChoice CaseMaker::matrix() {
  const int choice = between(0, 9);
  if (choice < 6) {
    return {};
  }
  if (choice < 9) {
    return reference::MatrixChoice::entryOf(static_cast<uint32_t>(choice - 6));
  }
  // Up to coefficients whose products wrap around.
  const double scale = between(0, 1) == 0 ? 2.0 : 1.0e6;
  std::array<double, 4> values{};
  for (double &value : values) {
    value = scale * between(-1000, 1000) / 1000.0;
  }
  return reference::MatrixChoice::customOf(values);
}

void CaseMaker::vary(GuardedCase &c) {
  c.inPadding = between(0, 2) == 0 ? 0 : between(1, 40);
  c.outPadding = between(0, 2) == 0 ? 0 : between(1, 40);
  constexpr std::array<support::Fill, 5> kFills{support::Fill::Noise, support::Fill::Noise, support::Fill::Noise,
                                                support::Fill::Extremes, support::Fill::Ramp};
  c.fill = kFills.at(static_cast<std::size_t>(between(0, 4)));
  c.seed = random_() & 0xFFFFFFU;
  c.matrix = matrix();
  // Same-format lines of odd width may be cut behind the lone pixel.
  if (c.mode.inType == c.mode.outType && support::isPacked422(c.mode.inType)) {
    const bool turns = c.mode.rotation == ROTATION_90_LEFT || c.mode.rotation == ROTATION_90_RIGHT;
    const int line = turns ? c.sizes.outHeight : c.sizes.outWidth;
    c.inPadding = c.sizes.width % 2 != 0 && between(0, 2) == 0 ? -2 : c.inPadding;
    c.outPadding = line % 2 != 0 && between(0, 2) == 0 ? -2 : c.outPadding;
  }
}

GuardedCase CaseMaker::make(int cell) {
  const auto &entries = modes_[static_cast<std::size_t>(cell)];
  const Entry &entry = entries[random_() % entries.size()];
  GuardedCase c;
  c.mode = entry.mode;
  c.sizes = sizesFor(entry);
  vary(c);
  return c;
}

} // namespace containment
