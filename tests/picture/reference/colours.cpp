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

int f(int s, double k) {
  return (s * rounded(k) + 16384) >> 15;
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
  const bool isLimited = colours.range == ZQP_RANGE_USUAL ? format.kind != Kind::Rgb
                                                          : colours.range == ZQP_RANGE_LIMITED;
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
      isDithered_(c.dither == ZQP_DITHER_ORDERED && out_->store != Store::Bytes) {}

Colours::Level Colours::levelOf(int most, int bits, bool isDithered) const {
  const double unit = 1 << bits;
  const double black = to_.black * most / 255;
  const double white = to_.white * most / 255;
  Level level{};
  level.factor = rounded(256 * unit * (white - black) / (from_.white - from_.black));
  level.bias = rounded(black * unit - from_.black * level.factor / 256);
  if (!isDithered) {
    level.bias += 1 << (bits - 1);
  }
  return level;
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
  const int most = mostOf(*out_, component);
  const int bits = bitsOf(most);
  const double g = 128.0 * (1 << bits) * ((to_.white - to_.black) * most / 255) / from_.chroma;
  const Level level = levelOf(most, bits, isDithered_);
  const int luma = (2 * words[0] * level.factor >> 16) + level.bias;
  const int u = fromMiddle(words[1]);
  const int v = fromMiddle(words[2]);
  int colour = 0;
  switch (component) {
  case 0:
    colour = f(v, 2 * (1 - from_.kr) * g);
    break;
  case 1:
    colour = sat(f(u, -2 * from_.kb * (1 - from_.kb) / from_.kg * g) +
                 f(v, -2 * from_.kr * (1 - from_.kr) / from_.kg * g));
    break;
  default:
    colour = f(u, 2 * (1 - from_.kb) * g);
    break;
  }
  return finished(component, sat(luma + colour), x, y);
}

int Colours::rgbOfRgb(int component, const int words[3], int x, int y) const {
  const int most = mostOf(*out_, component);
  const Level level = levelOf(most, bitsOf(most), isDithered_);
  return finished(component, (2 * words[component] * level.factor >> 16) + level.bias, x, y);
}

int Colours::yuvOfRgb(int component, const int words[3]) const {
  const double perStep = 16384 / (from_.white - from_.black);
  const double k = perStep * (to_.white - to_.black);
  const double c = perStep * to_.chroma;
  int red = 0;
  int blue = 0;
  int sum = 0;
  int bias = (1 << 20) + 128 * (1 << 21);
  switch (component) {
  case 0:
    red = rounded(k * to_.kr);
    blue = rounded(k * to_.kb);
    sum = rounded(k);
    bias = (1 << 20) + static_cast<int>(to_.black) * (1 << 21) - 128 * static_cast<int>(from_.black) * sum;
    break;
  case 1:
    red = rounded(-c * to_.kr / (2 * (1 - to_.kb)));
    blue = rounded(c / 2);
    break;
  default:
    red = rounded(c / 2);
    blue = rounded(-c * to_.kb / (2 * (1 - to_.kr)));
    break;
  }
  const int green = sum - red - blue;
  return std::clamp((red * words[0] + green * words[1] + blue * words[2] + bias) >> 21, 0, 255);
}

int Colours::changedLuma(const int words[3]) const {
  const Level level = levelOf(255, 6, false);
  const double span = (to_.white - to_.black) / from_.chroma;
  // What a number of either chroma adds to red, green and blue of 0 to 1, and these to luma.
  const double a = span * (to_.kb * 2 * (1 - from_.kb) - to_.kg * 2 * from_.kb * (1 - from_.kb) / from_.kg);
  const double b = span * (to_.kr * 2 * (1 - from_.kr) - to_.kg * 2 * from_.kr * (1 - from_.kr) / from_.kg);
  const int luma = (2 * words[0] * level.factor >> 16) + level.bias;
  const int colour = sat(f(fromMiddle(words[1]), 8192 * a) + f(fromMiddle(words[2]), 8192 * b));
  return std::clamp(sat(luma + colour) >> 6, 0, 255);
}

int Colours::yuvOfYuv(int component, const int words[3]) const {
  if (isSameYuv_) {
    return (words[component] + 64) >> 7;
  }
  if (component == 0) {
    return changedLuma(words);
  }
  // U' is blue less luma over 2 (1 - Kb), V' red less luma over 2 (1 - Kr), of the output's matrix.
  const double span = to_.chroma / from_.chroma;
  const double redOfV = 2 * (1 - from_.kr);
  const double blueOfU = 2 * (1 - from_.kb);
  const double greenOfU = -from_.kb * blueOfU / from_.kg;
  const double greenOfV = -from_.kr * redOfV / from_.kg;
  const double lumaOfU = to_.kg * greenOfU + to_.kb * blueOfU;
  const double lumaOfV = to_.kg * greenOfV + to_.kr * redOfV;
  double ofU = 0;
  double ofV = 0;
  if (component == 1) {
    ofU = span * (blueOfU - lumaOfU) / (2 * (1 - to_.kb));
    ofV = span * -lumaOfV / (2 * (1 - to_.kb));
  } else {
    ofU = span * -lumaOfU / (2 * (1 - to_.kr));
    ofV = span * (redOfV - lumaOfV) / (2 * (1 - to_.kr));
  }
  const int sum = sat(f(fromMiddle(words[1]), 8192 * ofU) + f(fromMiddle(words[2]), 8192 * ofV));
  return std::clamp((sum + 8224) >> 6, 0, 255);
}

} // namespace reference
