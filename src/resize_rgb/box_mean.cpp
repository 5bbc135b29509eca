#include "resize_rgb/box_mean.h"

#include <cstring>

namespace zqcc {
namespace {

struct Reciprocals {
  uint32_t of[kMostSamples + 1];
};

constexpr Reciprocals makeReciprocals() {
  Reciprocals reciprocals{};
  for (uint32_t samples = 1; samples <= kMostSamples; ++samples) {
    reciprocals.of[samples] = ((uint32_t{1} << 24) + samples - 1) / samples;
  }
  return reciprocals;
}
constexpr Reciprocals kReciprocals = makeReciprocals();

template <int32_t columns>
uint32_t sumOf(const uint8_t *from, std::ptrdiff_t step) {
  if constexpr (columns == 1) {
    return *from;
  } else {
    return *from + sumOf<columns - 1>(from + step, step);
  }
}

/// Every sample is added once. Boxes of one line never overlap, so there is nothing to share.
template <int32_t columns>
void meansOf(const BoxLines &lines, const int32_t *at, int32_t count, uint8_t *means) {
  const BoxLines box = lines; // no store of a mean changes this one
  const uint32_t reciprocal = reciprocalOf(box.lines * columns);
  for (const int32_t *const end = at + count; at != end; ++at) {
    const uint8_t *from = box.first + *at;
    uint32_t sum = 0;
    int32_t line = box.lines;
    do {
      sum += sumOf<columns>(from, box.columnStep);
      from += box.lineStep;
    } while (--line > 0);
    *means++ = boxMean(sum, reciprocal);
  }
}

} // namespace

uint32_t reciprocalOf(int32_t samples) {
  return kReciprocals.of[samples];
}

void meansOfBoxes(const BoxLines &box, int32_t columns, const int32_t *at, int32_t count, uint8_t *means) {
  switch (columns) {
  case 1:
    return meansOf<1>(box, at, count, means);
  case 2:
    return meansOf<2>(box, at, count, means);
  case 3:
    return meansOf<3>(box, at, count, means);
  case 4:
    return meansOf<4>(box, at, count, means);
  case 5:
    return meansOf<5>(box, at, count, means);
  case 6:
    return meansOf<6>(box, at, count, means);
  case 7:
    return meansOf<7>(box, at, count, means);
  default:
    std::memset(means, 0, static_cast<std::size_t>(count)); // a box that holds nothing
  }
}

} // namespace zqcc
