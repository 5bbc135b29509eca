#include "tables/color_matrix.h"

#include <limits>

namespace zqcc {
namespace {

/// The matrices and, right behind them, the green dither words. The custom entry starts out as the red/blue dither
/// words and is the only storage that those have.
struct ColorTables {
  ColorMatrix entries[kMatrixCount];
  int32_t greenDither[4];
};
static_assert(sizeof(ColorMatrix) == 16 && sizeof(ColorTables) == 80);

ColorTables colorTables = {{
                               {1471152, 748683, 1859125, 360710}, // ITU-R BT.601: 1.403, 0.714, 1.773, 0.344
                               {1646369, 489055, 1945737, 196083}, // ITU-R BT.709: 1.570, 0.466, 1.856, 0.187
                               {0, 0, 0, 0},                       // grey
                               {2, -1, 1, -3},                     // custom; at first the red/blue dither words
                           },
                           {0, -3, -2, -1}};

const ColorMatrix *current = &colorTables.entries[0];

/// A custom coefficient has 11 fractional bits although the converters shift by 20: the scale is part of the interface.
int32_t customWord(double coefficient) {
  const double scaled = coefficient * 2048.0;
  if (!(scaled == scaled)) {
    return 0;
  }
  if (scaled >= 2147483648.0) {
    return std::numeric_limits<int32_t>::max();
  }
  if (scaled <= -2147483649.0) {
    return std::numeric_limits<int32_t>::min();
  }
  return static_cast<int32_t>(scaled);
}

} // namespace

const ColorMatrix *currentMatrix() {
  return current;
}

const ColorMatrix *matrixEntry(uint32_t index) {
  return &colorTables.entries[index];
}

void selectMatrix(uint32_t index) {
  current = &colorTables.entries[index];
}

void selectCustomMatrix(const double coefficients[4]) {
  colorTables.entries[kCustomMatrix] = {customWord(coefficients[0]), customWord(coefficients[1]),
                                        customWord(coefficients[2]), customWord(coefficients[3])};
  selectMatrix(kCustomMatrix);
}

DitherWords currentDither() {
  const ColorMatrix &custom = colorTables.entries[kCustomMatrix];
  const int32_t *green = colorTables.greenDither;
  return {{{custom.crToR, custom.crToG}, {custom.cbToB, custom.cbToG}}, {{green[0], green[1]}, {green[2], green[3]}}};
}

} // namespace zqcc
