#include "picture/contents.h"

#include <random>

namespace picture {

namespace {

using reference::OwnPicture;

template <class Sample>
void fillBy(OwnPicture &picture, const Sample &sample) {
  const reference::Format &format = picture.format();
  for (int component = 0; component < format.components; ++component) {
    for (int y = 0; y < linesOf(format, component, picture.height()); ++y) {
      for (int x = 0; x < columnsOf(format, component, picture.width()); ++x) {
        picture.setSample(component, x, y, sample(component, x, y) & mostOf(format, component));
      }
    }
  }
}

} // namespace

void fill(OwnPicture &picture, Content content, uint32_t seed) {
  std::mt19937 random(seed);
  const auto number = [&] { return static_cast<int>(random() & 255); };
  const auto black_or_white = [&] { return (random() & 1) != 0 ? 255 : 0; };
  switch (content) {
  case Content::Noise:
    fillBy(picture, [&](int, int, int) { return number(); });
    break;
  case Content::Extremes:
    fillBy(picture, [&](int, int, int) { return black_or_white(); });
    break;
  case Content::Blocks: {
    // Blocks of 3 x 2 samples: neighbours are alike here and opposite there.
    int blocks[4][64];
    for (auto &component : blocks) {
      for (int &block : component) {
        block = black_or_white();
      }
    }
    fillBy(picture, [&](int component, int x, int y) { return blocks[component][(x / 3 + 8 * (y / 2)) & 63]; });
    break;
  }
  case Content::Ramp: {
    const int across = 1 + number() % 7;
    const int down = 1 + number() % 5;
    const int start = number();
    fillBy(picture, [&](int component, int x, int y) { return start + 80 * component + across * x + down * y; });
    break;
  }
  }
}

void fillGrey(OwnPicture &picture, int value) {
  fillBy(picture, [&](int component, int, int) {
    if (component == reference::kAlpha) {
      return 255;
    }
    return isChroma(picture.format(), component) ? 128 : value;
  });
}

} // namespace picture
