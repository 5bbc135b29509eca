// Stages of colour: rows of samples become rows of samples that mean something else, or pixels of RGB at once.
//
// With s a sample in units of 1/256 (256 times a byte, twice a word), S = s - 32768 and f(S, k) = S k + 16384 >> 15,
// all sums held in 16 bits:
//
//     luma     L = (s * factor >> 16) + bias
//     chroma   f(S, k)
#pragma once

#include <cstdint>

namespace zqp {

/// How a sample of luma, or of RGB that stays RGB, counts. The factor is below 32768.
struct Level {
  uint16_t factor;
  int16_t bias;
};

/// A component of RGB: bits behind the point, and the largest value, 255, 63 or 31. Its bias is without the half that
/// rounds.
struct Component {
  Level luma;
  int16_t u;
  int16_t v;
  int32_t shift;
  int32_t most;
};

/// Red has no u, blue no v. Components of as many bits have one and the same luma. The factors of chroma are above
/// -32768.
struct RgbOfYuv {
  Component red;
  Component green;
  Component blue;
};

/// What is added before a component is shifted, for eight columns that repeat: the half that rounds, or thresholds, for
/// components of 5, 6 and 8 bits; those of 8 bits are all the half. The first column of a row has the first of them.
struct Rounding {
  uint16_t five[8];
  uint16_t six[8];
  uint16_t eight[8];
};

/// Y' = L + f(U, u) + f(V, v); U' and V' are sums of two products and `bias`. Six bits behind the point, halves
/// included.
struct YuvOfYuv {
  Level luma;
  int16_t lumaU;
  int16_t lumaV;
  int16_t uu;
  int16_t uv;
  int16_t vu;
  int16_t vv;
};
inline constexpr int32_t kChromaBias = 8224; ///< 128, and a half

/// (red r + green g + blue b + bias) >> 21 of words.
struct Sum {
  int16_t red;
  int16_t green;
  int16_t blue;
  int32_t bias;
};

/// Where the samples of a line of YUV lie.
enum class YuvLayout : int32_t {
  Half,    ///< three rows, a sample of chroma for two columns
  Pairs,   ///< chroma in pairs, u first: `u` points at the pairs, `v` is not looked at
  PairsVu, ///< the same, v first
  Yuyv,    ///< groups Y0 U Y1 V, to which `y` points
  Uyvy,    ///< groups U Y0 V Y1
  Yvyu,    ///< groups Y0 V Y1 U
  Vyuy,    ///< groups V Y0 U Y1
  Full,    ///< three rows, a sample of chroma for every column
};
inline constexpr int32_t kYuvLayouts = 8;

/// What pixels are made of rows at once. Rows: red, green, blue to to[0], to[1], to[2], of 8 bits or of 5, 6 and 5.
enum class RgbLayout : int32_t { Rows, Rgb565, Rgb565Swapped, Rgb24, Bgr24, Rgba, Bgra };
inline constexpr int32_t kRgbLayouts = 7;

struct YuvBytes {
  const uint8_t *y;
  const uint8_t *u;
  const uint8_t *v;
};
struct YuvWords {
  const int16_t *y;
  const int16_t *u;
  const int16_t *v;
};

using RgbOfBytes = void (*)(const YuvBytes &from, const RgbOfYuv &colours, const Rounding &rounding, int32_t pixels,
                            uint8_t *const to[3]);
using RgbOfWords = void (*)(const YuvWords &from, const RgbOfYuv &colours, const Rounding &rounding, int32_t pixels,
                            uint8_t *const to[3]);

struct ColourStages {
  /// Chroma of an odd last column is that of its pair. Alpha is 255. `to` has one row unless RgbLayout::Rows.
  const RgbOfBytes (*rgbOfBytes)[kRgbLayouts]; ///< of a YuvLayout
  const RgbOfWords *rgbOfWords;
  /// A component of RGB: (L + rounding[column % 8]) >> shift, held in 0..most.
  void (*componentOfBytes)(const uint8_t *from, const Component &component, const uint16_t rounding[8], int32_t count,
                           uint8_t *to);
  void (*componentOfWords)(const int16_t *from, const Component &component, const uint16_t rounding[8], int32_t count,
                           uint8_t *to);
  /// (word + 64) >> 7.
  void (*bytesOfWords)(const int16_t *from, int32_t count, uint8_t *to);
  void (*lumaOfYuv)(const YuvWords &from, const YuvOfYuv &colours, int32_t count, uint8_t *to);
  void (*chromaOfYuv)(const int16_t *u, const int16_t *v, const YuvOfYuv &colours, int32_t count, uint8_t *toU,
                      uint8_t *toV);
  /// Of rows of red, green and blue.
  void (*sumOfBytes)(const uint8_t *const from[3], const Sum &sum, int32_t count, uint8_t *to);
  void (*sumOfWords)(const int16_t *const from[3], const Sum &sum, int32_t count, uint8_t *to);
  /// What sumOfBytes makes of pixels of four bytes as they lie, alpha last and red or blue first.
  void (*lumaOfFourBytes)(const uint8_t *from, bool isBlueFirst, const Sum &sum, int32_t pixels, uint8_t *to);
  /// What sumOfWords makes of the means of 2 x 2 of them, for u and v; an odd last column is its own neighbour.
  void (*chromaOfFourBytes)(const uint8_t *upper, const uint8_t *lower, bool isBlueFirst, const Sum sum[2],
                            int32_t pixels, uint8_t *toU, uint8_t *toV);
  /// The same of columns 2 k - 1, 2 k and 2 k + 1, of which the middle one counts twice. At the start of the picture,
  /// where no column is before, and at its odd end the two that there are count two thirds and one third.
  void (*leftChromaOfFourBytes)(const uint8_t *upper, const uint8_t *lower, bool isBlueFirst, const Sum sum[2],
                                bool hasBefore, int32_t pixels, uint8_t *toU, uint8_t *toV);
};

} // namespace zqp
