// A call of one of the one-shot functions: its arguments, and the record and plane offsets that follow from them.
#pragma once

#include "fuzz/script.h"
#include "reference/colour.h"
#include "zqColorConversion.h"

#include <array>
#include <cstdint>

namespace fuzz {

enum class Function {
  ScaleFrame,
  ScaleCropped,
  RotateFrame,
  RotateCropped,
  ColorConvert,
  PlanarToRgb16,
  PackedToRgb16,
  SemiPlanarToRgb16,
  SemiPlanar2ToRgb16
};
inline constexpr int kFunctionCount = 9;

struct Call {
  Function function{};
  std::array<int32_t, 13> arguments{}; ///< in the function's order, buffers left out
  bool hasCoefficients = false;
  std::array<double, 4> coefficients{};

  uint32_t code = CC_OK;       ///< other than CC_OK: the answer, whatever the picture
  ConvertParams params{};      ///< sizes, types, modes and strides of the picture
  std::array<int64_t, 3> in{}; ///< where the planes begin in the buffers
  std::array<int64_t, 3> out{};
  int64_t cropped = 0;     ///< bytes of each input line in front of the picture's
  bool impossible = false; ///< 32 bits do not hold a line, or a crop leaves its picture
  reference::Colour colour;
};

Call readCall(Script &script);
/// Sizes and places may be any numbers, the other arguments are those of an ordinary call.
void writeCall(ScriptWriter &writer, Function function, const std::array<int32_t, 13> &arguments);
uint32_t invoke(const Call &call, const uint8_t *input, uint8_t *output);

} // namespace fuzz
