// Words of samples become what the output holds, in integers.
#pragma once

#include "picture/reference/formats.h"

#include <cstdint>

namespace reference {

/// What the numbers of a picture stand for.
struct Numbers {
  double kr;
  double kg;
  double kb;
  double black;
  double white;
  double chroma; ///< how many numbers a component of chroma spans
};
Numbers numbersOf(const Format &format, const ZqpColours &colours);

/// The threshold of an output pixel, 0 to 63.
int thresholdOf(int x, int y);

class Colours {
public:
  explicit Colours(const ZqpConversion &conversion);

  /// Whether matrix and range of YUV stay.
  [[nodiscard]] bool isSameYuv() const { return isSameYuv_; }
  /// An output component of the words at its place, of the output's component and of all three. `x` and `y` are those
  /// of the pixel.
  [[nodiscard]] int rgbOfYuv(int component, const int words[3], int x, int y) const;
  [[nodiscard]] int rgbOfRgb(int component, const int words[3], int x, int y) const;
  [[nodiscard]] int yuvOfRgb(int component, const int words[3]) const;
  [[nodiscard]] int yuvOfYuv(int component, const int words[3]) const;

private:
  struct Level {
    int factor;
    int bias;
  };
  [[nodiscard]] Level levelOf(int most, int bits, bool isDithered) const;
  [[nodiscard]] int finished(int component, int value, int x, int y) const;
  [[nodiscard]] int changedLuma(const int words[3]) const;

  const Format *out_;
  Numbers from_;
  Numbers to_;
  bool isSameYuv_;
  bool isDithered_;
};

} // namespace reference
