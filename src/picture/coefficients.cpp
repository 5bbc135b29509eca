#include "picture/coefficients.h"

#include <cstdint>

namespace zqp {
namespace {

/// To the nearest whole number, and the upper one of two.
int32_t rounded(double value) {
  const double raised = value + 0.5;
  const auto whole = static_cast<int32_t>(raised);
  return static_cast<double>(whole) > raised ? whole - 1 : whole;
}

/// The same, held within 16 bits: matrices that are given may be far from each other.
int16_t word(double value) {
  constexpr double kMost = 32767.0;
  return static_cast<int16_t>(rounded(value > kMost ? kMost : value < -kMost ? -kMost : value));
}

constexpr double kWhite = 255.0;

struct Ends {
  double black;
  double white;
  [[nodiscard]] double span() const { return white - black; }
};

Ends endsOf(const Colours &colours) {
  return colours.isLimited ? Ends{16.0, 235.0} : Ends{0.0, kWhite};
}

double chromaSpan(const Colours &colours) {
  return colours.isLimited ? 224.0 : kWhite;
}

/// What a component of RGB is held in: the largest value, and bits behind the point.
struct Depth {
  int32_t most;
  int32_t shift;
  [[nodiscard]] double one() const { return static_cast<double>(1 << shift); }
};
constexpr Depth kEight = {255, 6};
constexpr Depth kSix = {63, 8};
constexpr Depth kFive = {31, 9};

Ends scaled(const Ends &ends, const Depth &depth) {
  const auto most = static_cast<double>(depth.most);
  return {ends.black * most / kWhite, ends.white * most / kWhite};
}

/// Without the half that rounds.
Level levelOf(const Ends &in, const Ends &out, const Depth &depth) {
  const int32_t factor = rounded(256.0 * depth.one() * out.span() / in.span());
  const int32_t bias = rounded(out.black * depth.one() - in.black * static_cast<double>(factor) / 256.0);
  return {static_cast<uint16_t>(factor), static_cast<int16_t>(bias)};
}

/// Of chroma whose components span 1, in R, G and B that span 1.
struct Decoded {
  double redV;
  double greenU;
  double greenV;
  double blueU;
};

Decoded decodedBy(const Colours &colours) {
  const double kr = colours.kr;
  const double kb = colours.kb;
  const double kg = 1.0 - kr - kb;
  return {2.0 * (1.0 - kr), -2.0 * kb * (1.0 - kb) / kg, -2.0 * kr * (1.0 - kr) / kg, 2.0 * (1.0 - kb)};
}

Component componentOf(const Colours &in, const Colours &out, const Depth &depth, double u, double v) {
  const Ends ends = scaled(endsOf(out), depth);
  const double unit = 128.0 * depth.one() * ends.span() / chromaSpan(in);
  return {levelOf(endsOf(in), ends, depth), word(u * unit), word(v * unit), depth.shift, depth.most};
}

} // namespace

RgbOfYuv rgbOfYuv(const Colours &in, const Colours &out, bool isNarrow) {
  const Decoded decoded = decodedBy(in);
  const Depth &outer = isNarrow ? kFive : kEight;
  return {componentOf(in, out, outer, 0.0, decoded.redV),
          componentOf(in, out, isNarrow ? kSix : kEight, decoded.greenU, decoded.greenV),
          componentOf(in, out, outer, decoded.blueU, 0.0)};
}

RgbOfYuv rgbOfRgb(const Colours &in, const Colours &out, bool isNarrow) {
  const Depth &outer = isNarrow ? kFive : kEight;
  return {componentOf(in, out, outer, 0.0, 0.0), componentOf(in, out, isNarrow ? kSix : kEight, 0.0, 0.0),
          componentOf(in, out, outer, 0.0, 0.0)};
}

YuvOfYuv yuvOfYuv(const Colours &in, const Colours &out) {
  const Decoded decoded = decodedBy(in);
  // What U and V of the input, spanning 1 each, do to luma of the output, and with it to U and V.
  const double kr = out.kr;
  const double kb = out.kb;
  const double kg = 1.0 - kr - kb;
  const double lumaU = kg * decoded.greenU + kb * decoded.blueU;
  const double lumaV = kr * decoded.redV + kg * decoded.greenV;
  const double uSpan = 2.0 * (1.0 - kb);
  const double vSpan = 2.0 * (1.0 - kr);
  const double luma = 8192.0 * endsOf(out).span() / chromaSpan(in);
  const double chroma = 8192.0 * chromaSpan(out) / chromaSpan(in);
  Level level = levelOf(endsOf(in), endsOf(out), kEight);
  level.bias = static_cast<int16_t>(level.bias + (1 << (kEight.shift - 1)));
  return {level,
          word(luma * lumaU),
          word(luma * lumaV),
          word(chroma * (decoded.blueU - lumaU) / uSpan),
          word(-chroma * lumaV / uSpan),
          word(-chroma * lumaU / vSpan),
          word(chroma * (decoded.redV - lumaV) / vSpan)};
}

YuvOfRgb yuvOfRgb(const Colours &in, const Colours &out) {
  constexpr double kOne = 16384.0;
  constexpr int32_t kHalf = 1 << 20;
  const Ends from = endsOf(in);
  const Ends to = endsOf(out);
  const double luma = kOne * to.span() / from.span();
  const double chroma = kOne * chromaSpan(out) / from.span();
  const int32_t all = rounded(luma);
  const int32_t red = rounded(luma * out.kr);
  const int32_t blue = rounded(luma * out.kb);
  const auto sum = [](int32_t r, int32_t g, int32_t b, int32_t bias) {
    return Sum{static_cast<int16_t>(r), static_cast<int16_t>(g), static_cast<int16_t>(b), bias};
  };
  // Coefficients of chroma cancel out, so that a grey has none.
  const auto difference = [&](double r, double b) {
    const int32_t ofRed = rounded(r);
    const int32_t ofBlue = rounded(b);
    return sum(ofRed, -ofRed - ofBlue, ofBlue, kHalf + (128 << 21));
  };
  const int32_t bias =
      kHalf + static_cast<int32_t>(to.black) * (1 << 21) - 128 * static_cast<int32_t>(from.black) * all;
  return {sum(red, all - red - blue, blue, bias), difference(-chroma * out.kr / (2.0 * (1.0 - out.kb)), chroma / 2.0),
          difference(chroma / 2.0, -chroma * out.kb / (2.0 * (1.0 - out.kr)))};
}

Rounding halves() {
  Rounding rounding{};
  for (int32_t i = 0; i < 8; ++i) {
    rounding.five[i] = 1 << (kFive.shift - 1);
    rounding.six[i] = 1 << (kSix.shift - 1);
    rounding.eight[i] = 1 << (kEight.shift - 1);
  }
  return rounding;
}

Rounding thresholds(Place first, Place step) {
  Rounding rounding = halves();
  for (int32_t i = 0; i < 8; ++i) {
    const auto x = static_cast<uint32_t>(first.x + i * step.x);
    const auto y = static_cast<uint32_t>(first.y + i * step.y);
    uint32_t order = 0;
    for (uint32_t bit = 0; bit < 3; ++bit) {
      order = order << 2 | ((x ^ y) >> bit & 1U) << 1 | (y >> bit & 1U);
    }
    rounding.five[i] = static_cast<uint16_t>(8 * order + 4);
    rounding.six[i] = static_cast<uint16_t>(4 * order + 2);
  }
  return rounding;
}

} // namespace zqp
