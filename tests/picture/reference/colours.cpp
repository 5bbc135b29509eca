#include "picture/reference/colours.h"

#include <algorithm>
#include <cmath>

namespace reference {

namespace {

int rounded(double a) {
  return static_cast<int>(std::floor(a + .5));
}

int sat(int a) {
  return std::clamp(a, -32768, 32767);
}

/// The distance of a word from the middle, in units of 1/256.
int fromMiddle(int word) {
  return 2 * word - 32768;
}

int f(int s, int k) {
  return (s * k + 16384) >> 15;
}

/// Bits behind the point of a component of RGB.
int bitsOf(int most) {
  switch (most) {
  case 31:
    return 9;
  case 63:
    return 8;
  default:
    return 6;
  }
}

} // namespace

Numbers numbersOf(const Format &format, const ZqpColours &colours) {
  Numbers n{.299, 0, .114, 0, 255, 255};
  if (colours.matrix == ZQP_BT709) {
    n.kr = .2126;
    n.kb = .0722;
  } else if (colours.matrix == ZQP_BT2020) {
    n.kr = .2627;
    n.kb = .0593;
  } else if (colours.matrix == ZQP_MATRIX_GIVEN) {
    n.kr = static_cast<double>(colours.kr);
    n.kb = static_cast<double>(colours.kb);
  }
  n.kg = 1 - n.kr - n.kb;
  const bool isLimited =
      colours.range == ZQP_RANGE_USUAL ? format.kind != Kind::Rgb : colours.range == ZQP_RANGE_LIMITED;
  if (isLimited) {
    n.black = 16;
    n.white = 235;
    n.chroma = 224;
  }
  return n;
}

int thresholdOf(int x, int y) {
  const auto bit = [](int number, int at) { return number >> at & 1; };
  int threshold = 0;
  for (int at = 0; at < 3; ++at) {
    threshold = 4 * threshold + 2 * (bit(x, at) ^ bit(y, at)) + bit(y, at);
  }
  return threshold;
}

Colours::Colours(const ZqpConversion &c)
    : out_(&formatOf(c.outFormat)), from_(numbersOf(formatOf(c.inFormat), c.inColours)),
      to_(numbersOf(*out_, c.outColours)),
      isSameYuv_(from_.kr == to_.kr && from_.kb == to_.kb && from_.black == to_.black),
      isDithered_(c.dither == ZQP_DITHER_ORDERED && out_->store != Store::Bytes) {
  for (int component = 0; component < 3; ++component) {
    levels_[component] = levelOf(mostOf(*out_, component));
    ofRgb_[component] = chromaOfRgb(component);
    ofYuv_[component] = chromaOfYuv(component);
    sums_[component] = sumOf(component);
  }
}

Colours::Level Colours::levelOf(int most) const {
  const int bits = bitsOf(most);
  const double unit = 1 << bits;
  const double black = to_.black * most / 255;
  const double white = to_.white * most / 255;
  Level level{};
  level.factor = rounded(256 * unit * (white - black) / (from_.white - from_.black));
  level.bias = rounded(black * unit - from_.black * level.factor / 256);
  if (!isDithered_) {
    level.bias += 1 << (bits - 1);
  }
  return level;
}

Colours::Chroma Colours::chromaOfRgb(int component) const {
  const int most = mostOf(*out_, component);
  const double g = 128.0 * (1 << bitsOf(most)) * ((to_.white - to_.black) * most / 255) / from_.chroma;
  switch (component) {
  case 0:
    return {0, rounded(2 * (1 - from_.kr) * g)};
  case 1:
    return {rounded(-2 * from_.kb * (1 - from_.kb) / from_.kg * g),
            rounded(-2 * from_.kr * (1 - from_.kr) / from_.kg * g)};
  default:
    return {rounded(2 * (1 - from_.kb) * g), 0};
  }
}

Colours::Chroma Colours::chromaOfYuv(int component) const {
  // What one of either chroma adds to red, green, blue of the input's matrix, and these to luma of the output's.
  const double redOfV = 2 * (1 - from_.kr);
  const double blueOfU = 2 * (1 - from_.kb);
  const double greenOfU = -from_.kb * blueOfU / from_.kg;
  const double greenOfV = -from_.kr * redOfV / from_.kg;
  const double lumaOfU = to_.kg * greenOfU + to_.kb * blueOfU;
  const double lumaOfV = to_.kg * greenOfV + to_.kr * redOfV;
  const auto scaled = [](double span, double u, double v) {
    return Chroma{rounded(8192 * span * u), rounded(8192 * span * v)};
  };
  const double span = to_.chroma / from_.chroma;
  switch (component) {
  case 0:
    return scaled((to_.white - to_.black) / from_.chroma, lumaOfU, lumaOfV);
  case 1: // blue less luma, over 2 (1 - Kb)
    return scaled(span / (2 * (1 - to_.kb)), blueOfU - lumaOfU, -lumaOfV);
  default: // red less luma, over 2 (1 - Kr)
    return scaled(span / (2 * (1 - to_.kr)), -lumaOfU, redOfV - lumaOfV);
  }
}

Colours::Sum Colours::sumOf(int component) const {
  const double perStep = 16384 / (from_.white - from_.black);
  const double k = perStep * (to_.white - to_.black);
  const double c = perStep * to_.chroma;
  const int chromaBias = (1 << 20) + 128 * (1 << 21);
  Sum sum{};
  switch (component) {
  case 0: {
    const int all = rounded(k);
    const int bias = (1 << 20) + static_cast<int>(to_.black) * (1 << 21) - 128 * static_cast<int>(from_.black) * all;
    sum = {rounded(k * to_.kr), 0, rounded(k * to_.kb), bias};
    sum.green = all - sum.red - sum.blue;
    return sum;
  }
  case 1:
    sum = {rounded(-c * to_.kr / (2 * (1 - to_.kb))), 0, rounded(c / 2), chromaBias};
    break;
  default:
    sum = {rounded(c / 2), 0, rounded(-c * to_.kb / (2 * (1 - to_.kr))), chromaBias};
    break;
  }
  sum.green = -sum.red - sum.blue;
  return sum;
}

int Colours::finished(int component, int value, int x, int y) const {
  const int most = mostOf(*out_, component);
  if (isDithered_) {
    const int threshold = thresholdOf(x, y);
    value = sat(value + (most == 31 ? 8 * threshold + 4 : 4 * threshold + 2));
  }
  return std::clamp(value >> bitsOf(most), 0, most);
}

int Colours::rgbOfYuv(int component, const int words[3], int x, int y) const {
  const Level &level = levels_[component];
  const Chroma &chroma = ofRgb_[component];
  const int luma = (2 * words[0] * level.factor >> 16) + level.bias;
  const int colour = sat(f(fromMiddle(words[1]), chroma.u) + f(fromMiddle(words[2]), chroma.v));
  return finished(component, sat(luma + colour), x, y);
}

int Colours::rgbOfRgb(int component, const int words[3], int x, int y) const {
  const Level &level = levels_[component];
  return finished(component, (2 * words[component] * level.factor >> 16) + level.bias, x, y);
}

int Colours::yuvOfRgb(int component, const int words[3]) const {
  const Sum &sum = sums_[component];
  const int all = sum.red * words[0] + sum.green * words[1] + sum.blue * words[2] + sum.bias;
  return std::clamp(all >> 21, 0, 255);
}

int Colours::yuvOfYuv(int component, const int words[3]) const {
  if (isSameYuv_) {
    return (words[component] + 64) >> 7;
  }
  const Chroma &chroma = ofYuv_[component];
  const int colour = sat(f(fromMiddle(words[1]), chroma.u) + f(fromMiddle(words[2]), chroma.v));
  if (component != 0) {
    return std::clamp((colour + 8224) >> 6, 0, 255);
  }
  const int luma = (2 * words[0] * levels_[0].factor >> 16) + levels_[0].bias;
  return std::clamp(sat(luma + colour) >> 6, 0, 255);
}

} // namespace reference
