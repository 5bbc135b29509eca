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
  /// What chroma adds, per unit of either.
  struct Chroma {
    int u;
    int v;
  };
  struct Sum {
    int red;
    int green;
    int blue;
    int bias;
  };
  [[nodiscard]] Level levelOf(int most) const;
  [[nodiscard]] Chroma chromaOfRgb(int component) const;
  [[nodiscard]] Chroma chromaOfYuv(int component) const;
  [[nodiscard]] Sum sumOf(int component) const;
  [[nodiscard]] int finished(int component, int value, int x, int y) const;

  const Format *out_;
  Numbers from_;
  Numbers to_;
  bool isSameYuv_;
  bool isDithered_;
  Level levels_[3];
  Chroma ofRgb_[3]; ///< for components of RGB
  Chroma ofYuv_[3]; ///< for components of YUV
  Sum sums_[3];
};

} // namespace reference
