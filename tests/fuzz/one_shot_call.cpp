#include "fuzz/one_shot_call.h"

#include "fuzz/records.h"
#include "reference/direct_case.h"
#include "reference/result_code.h"
#include "support/picture.h"

#include <algorithm>
#include <limits>

namespace fuzz {
namespace {

/// What the arguments hold, by function.
enum class Argument : uint8_t { Size, Type, Rotation, Quality, Place };
constexpr int kMaxArguments = 13;

using A = Argument;
struct Signature {
  int count;
  Argument kinds[kMaxArguments];
};

constexpr Signature kPlanarRotate{
    11, {A::Size, A::Size, A::Place, A::Place, A::Size, A::Size, A::Place, A::Size, A::Place, A::Place, A::Rotation}};
constexpr Signature kSignatures[kFunctionCount] = {
    {6, {A::Size, A::Size, A::Size, A::Size, A::Type, A::Quality}},
    {10, {A::Size, A::Size, A::Place, A::Place, A::Size, A::Size, A::Size, A::Size, A::Type, A::Quality}},
    {6, {A::Size, A::Size, A::Size, A::Size, A::Type, A::Rotation}},
    {10, {A::Size, A::Size, A::Place, A::Place, A::Size, A::Size, A::Size, A::Size, A::Type, A::Rotation}},
    {5, {A::Type, A::Type, A::Size, A::Size, A::Size}},
    kPlanarRotate,
    {12,
     {A::Type, A::Size, A::Place, A::Place, A::Place, A::Size, A::Size, A::Place, A::Size, A::Place, A::Place,
      A::Rotation}},
    kPlanarRotate,
    kPlanarRotate,
};

int32_t read(Script &script, Argument kind) {
  switch (kind) {
  case A::Type:
    return kTypes[script.below(kTypeCount)];
  case A::Rotation: {
    const uint8_t code = script.byte();
    return code < 250 ? code % 8 : script.number();
  }
  case A::Quality: {
    const uint8_t code = script.byte();
    return code < 250 ? code % 3 : script.number();
  }
  case A::Place: {
    const uint8_t place = script.byte();
    if (place >= 200 && place < 204) {
      return script.nearLimit();
    }
    return place < 250 ? place % 16 : script.number();
  }
  default:
    return script.size();
  }
}

bool isPlanar420(int type) {
  return type == 3 || type == 12;
}
bool hasTwoBytes(int type) {
  return support::isPacked422(type) || support::isRgb16(type);
}
bool hasFilter(int type) {
  return type == 3 || type == 30 || (type >= 6 && type <= 9);
}

/// A stride in bytes; lines that no stride can hold make the call impossible.
int32_t strideOf(Call &call, int32_t bytesPerPixel, int32_t pixels) {
  const int64_t stride = int64_t{bytesPerPixel} * pixels;
  if (stride > std::numeric_limits<int32_t>::max() || stride <= std::numeric_limits<int32_t>::min()) {
    call.impossible = true;
    return 0;
  }
  return static_cast<int32_t>(stride);
}

struct Crop {
  int32_t lineLength, lines, left, top;
};

/// Parts that leave their picture, on whichever side.
void requireInside(Call &call, const Crop &crop, int64_t width, int64_t height) {
  const bool empty = width <= 0 || height <= 0;
  const bool before = crop.left < 0 || crop.top < 0;
  const bool behind = crop.left > crop.lineLength - width || crop.top > crop.lines - height;
  call.impossible = call.impossible || (!empty && (before || behind));
}

void describe(Call &call, int32_t inType, int32_t outType, int32_t width, int32_t height) {
  ConvertParams &p = call.params;
  p.inType = inType;
  p.outType = outType;
  p.inWidth = p.outWidth = width;
  p.inHeight = p.outHeight = height;
  p.rotation = ROTATION_NONE;
}

void refuse(Call &call, uint32_t code) {
  call.code = call.code == CC_OK ? code : call.code;
}

/// Set-up answers before the types that a function cannot lay out do.
void setUp(Call &call) {
  refuse(call, reference::setupCode(call.params));
  if (setUpMemory(call.params) == SetUpMemory::TooLittle) {
    refuse(call, CC_ERR_NO_MEMORY);
  }
}

void placeInput420(Call &call, int32_t stride, const Crop &crop) {
  const int64_t luma = int64_t{stride} * crop.lines;
  const int64_t chroma = int64_t{stride} * crop.top / 4 + crop.left / 2;
  call.params.inStride = stride;
  call.in = {int64_t{stride} * crop.top + crop.left, luma + chroma, luma + luma / 4 + chroma};
}

void placeOutput420(Call &call, int32_t stride, int32_t lines) {
  const int64_t luma = int64_t{stride} * lines;
  call.params.outStride = stride;
  call.out = {0, luma, luma + luma / 4};
}

void placeRgb16(Call &call, int32_t stridePixels, int32_t left, int32_t top) {
  ConvertParams &p = call.params;
  p.outStride = strideOf(call, 2, stridePixels);
  call.out[0] = int64_t{p.outStride} * top + 2 * int64_t{left};
}

void sameFormat(Call &call, const Crop &crop, int32_t outLine, int32_t outLines, bool yvuToo) {
  ConvertParams &p = call.params;
  if (p.isResize == 1 && p.antiAlias != 0 && !hasFilter(p.inType)) {
    refuse(call, CC_ERR_IN_TYPE);
  }
  setUp(call);
  requireInside(call, crop, p.inWidth, p.inHeight);
  if (p.inType == 3 || (yvuToo && isPlanar420(p.inType))) {
    placeInput420(call, crop.lineLength, crop);
    placeOutput420(call, outLine, outLines);
  } else if (hasTwoBytes(p.inType)) {
    p.inStride = strideOf(call, 2, crop.lineLength);
    p.outStride = strideOf(call, 2, outLine);
    call.in[0] = int64_t{p.inStride} * crop.top + 2 * int64_t{crop.left};
    call.cropped = 2 * int64_t{crop.left};
  } else {
    refuse(call, CC_ERR_IN_TYPE);
  }
}

void scale(Call &call, const Crop &crop, const int32_t *a, bool yvuToo) {
  // a: width, height, output width and height, type, quality
  describe(call, a[4], a[4], a[0], a[1]);
  call.params.outWidth = a[2];
  call.params.outHeight = a[3];
  call.params.isResize = 1;
  call.params.antiAlias = static_cast<uint32_t>(a[5]);
  sameFormat(call, crop, a[2], a[3], yvuToo);
}

void rotate(Call &call, const Crop &crop, const int32_t *a) {
  // a: width, height, two output dimensions, type, rotation
  describe(call, a[4], a[4], a[0], a[1]);
  call.params.rotation = static_cast<uint32_t>(a[5]);
  const bool upright = a[5] == ROTATION_NONE;
  sameFormat(call, crop, upright ? a[2] : a[3], upright ? a[3] : a[2], false);
}

void colorConvert(Call &call, const int32_t *a) {
  // a: types, width, height, stride
  if (a[0] == a[1]) {
    refuse(call, CC_ERR_SAME_TYPE);
  }
  describe(call, a[0], a[1], a[2], a[3]);
  ConvertParams &p = call.params;
  const bool packed = support::isPacked422(p.inType);
  p.inStride = a[4];
  if (support::isSemiPlanar(p.inType) && (p.inStride < 0 || p.inHeight < 0)) {
    refuse(call, CC_ERR_ARGUMENT);
  }
  setUp(call);
  const bool laysInput = packed || p.inType == 1 || p.inType == 3 || support::isSemiPlanar(p.inType);
  const bool laysOutput = isPlanar420(p.outType) || support::isRgb16(p.outType) || p.outType == COLOR_RGB24;
  if (!laysInput || !laysOutput) {
    refuse(call, CC_ERR_IN_TYPE);
    return;
  }
  p.inStride = packed ? strideOf(call, 2, p.inWidth) : p.inStride;
  const int64_t luma = int64_t{p.inStride} * p.inHeight;
  call.in = {0, luma, luma + luma / (p.inType == 1 ? 2 : 4)};
  if (isPlanar420(p.outType)) {
    placeOutput420(call, p.outWidth, p.outHeight);
  } else {
    p.outStride = strideOf(call, p.outType == COLOR_RGB24 ? 3 : 2, p.outWidth);
  }
}

void toRgb16(Call &call, int32_t inType, const int32_t *a) {
  // a: stride, lines, left, top, width, height, ignored, output stride, left, top, rotation
  describe(call, inType, COLOR_RGB565, a[4], a[5]);
  ConvertParams &p = call.params;
  p.rotation = static_cast<uint32_t>(a[10]);
  p.inStride = a[0];
  if (support::isSemiPlanar(inType) && (p.inStride < 0 || p.inHeight < 0)) {
    refuse(call, CC_ERR_ARGUMENT);
  }
  setUp(call);
  requireInside(call, {a[0], a[1], a[2], a[3]}, a[4], a[5]);
  placeInput420(call, a[0], {a[0], a[1], a[2], a[3]});
  if (support::isSemiPlanar(inType)) {
    call.in[1] = int64_t{a[0]} * a[1] + int64_t{a[0]} * a[3] / 2 + a[2];
  }
  placeRgb16(call, a[7], a[8], a[9]);
}

void packedToRgb16(Call &call, const int32_t *a) {
  // a: type, line pixels, ignored, left, top, width, height, ignored, output line pixels, left, top, rotation
  if (!support::isPacked422(a[0])) {
    refuse(call, CC_ERR_SAME_TYPE);
  }
  describe(call, a[0], COLOR_RGB565, a[5], a[6]);
  call.params.rotation = static_cast<uint32_t>(a[11]);
  setUp(call);
  call.params.inStride = strideOf(call, 2, a[1]);
  call.in[0] = int64_t{call.params.inStride} * a[4] + a[3];
  requireInside(call, {call.params.inStride, INT32_MAX, a[3], a[4]}, 2 * int64_t{a[5]}, a[6]);
  placeRgb16(call, a[8], a[9], a[10]);
}

void derive(Call &call) {
  const int32_t *a = call.arguments.data();
  switch (call.function) {
  case Function::ScaleFrame:
    scale(call, {a[0], a[1], 0, 0}, a, true);
    break;
  case Function::ScaleCropped:
    scale(call, {a[0], a[1], a[2], a[3]}, a + 4, false);
    break;
  case Function::RotateFrame:
    rotate(call, {a[0], a[1], 0, 0}, a);
    break;
  case Function::RotateCropped:
    rotate(call, {a[0], a[1], a[2], a[3]}, a + 4);
    break;
  case Function::ColorConvert:
    colorConvert(call, a);
    break;
  case Function::PlanarToRgb16:
    toRgb16(call, COLOR_YUV420_PLANAR, a);
    break;
  case Function::PackedToRgb16:
    packedToRgb16(call, a);
    break;
  case Function::SemiPlanarToRgb16:
    toRgb16(call, COLOR_YUV420_PACK, a);
    break;
  case Function::SemiPlanar2ToRgb16:
    toRgb16(call, COLOR_YUV420_PACK2, a);
    break;
  }
}

} // namespace

Call readCall(Script &script) {
  Call call;
  const int function = script.below(kFunctionCount);
  call.function = static_cast<Function>(function);
  const Signature &signature = kSignatures[function];
  for (int i = 0; i < signature.count; ++i) {
    call.arguments[static_cast<std::size_t>(i)] = read(script, signature.kinds[i]);
  }
  if (call.function == Function::ColorConvert && script.byte() % 4 == 1) {
    call.hasCoefficients = true;
    for (double &value : call.coefficients) {
      value = script.real();
    }
    call.colour = reference::MatrixChoice::customOf(call.coefficients).colour();
  }
  derive(call);
  return call;
}

void writeCall(ScriptWriter &writer, Function function, const std::array<int32_t, 13> &arguments) {
  writer.byte(static_cast<uint8_t>(function));
  const Signature &signature = kSignatures[static_cast<int>(function)];
  for (int i = 0; i < signature.count; ++i) {
    const int32_t value = arguments[static_cast<std::size_t>(i)];
    const bool type = signature.kinds[i] == A::Type;
    const auto number = static_cast<int32_t>(type ? std::find(kTypes, kTypes + kTypeCount, value) - kTypes : value);
    writer.size(number);
  }
}

uint32_t invoke(const Call &call, const uint8_t *in, uint8_t *out) {
  const int32_t *a = call.arguments.data();
  switch (call.function) {
  case Function::ScaleFrame:
    return zqScaleFrame(in, out, a[0], a[1], a[2], a[3], a[4], a[5]);
  case Function::ScaleCropped:
    return zqScaleCroppedFrame(in, out, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9]);
  case Function::RotateFrame:
    return zqRotateFrame(in, out, a[0], a[1], a[2], a[3], a[4], a[5]);
  case Function::RotateCropped:
    return zqRotateCroppedFrame(in, out, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9]);
  case Function::ColorConvert:
    return zqColorConvert(in, out, a[0], a[1], a[2], a[3], a[4],
                          call.hasCoefficients ? call.coefficients.data() : nullptr);
  case Function::PlanarToRgb16:
    return zqYUV420PlanartoRGB16Rotate(in, out, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10]);
  case Function::PackedToRgb16:
    return zqYUV422PacktoRGB16Rotate(a[0], in, out, a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10], a[11]);
  case Function::SemiPlanarToRgb16:
    return zqYUV420PacktoRGB16Rotate(in, out, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10]);
  default:
    return zqYUV420Pack2toRGB16Rotate(in, out, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10]);
  }
}

} // namespace fuzz
