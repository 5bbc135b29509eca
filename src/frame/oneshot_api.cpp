// The one-shot functions: lay out a record from one buffer pointer a side, set up, convert, release.
#include "base/picture_shape.h"
#include "frame/context.h"
#include "frame/dispatch.h"
#include "frame/oneshot_layout.h"
#include "frame/route.h"
#include "frame/setup.h"
#include "tables/color_matrix.h"
#include "zqColorConversion.h"

#include <cstdint>
#include <limits>

namespace {

using zqcc::Crop;
using zqcc::isInside;
using zqcc::isPacked422;
using zqcc::isPlanar420;
using zqcc::isRgb16;
using zqcc::kNoStride;
using zqcc::strideOf;

bool hasTwoBytesPerPixel(int32_t type) {
  return isPacked422(type) || isRgb16(type);
}

/// Types that can be resized with quality above 0.
bool hasFilteredResize(int32_t type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_RGB565 || (type >= 6 && type <= 9);
}

ConvertParams description(int32_t inType, int32_t outType, int32_t width, int32_t height) {
  ConvertParams p{};
  p.inType = inType;
  p.outType = outType;
  p.inWidth = p.outWidth = width;
  p.inHeight = p.outHeight = height;
  p.rotation = ROTATION_NONE;
  return p;
}

/// The temporary context of a one-shot call, released on every path. Set-up releases it itself when memory runs out.
class OneShot {
public:
  OneShot() : context_(zqcc::createContext()) {
    if (context_ != nullptr) {
      zqcc::selectMatrix(MATRIX_BT601);
    }
  }
  ~OneShot() { zqcc::destroyContext(context_); }
  OneShot(const OneShot &) = delete;
  OneShot &operator=(const OneShot &) = delete;

  [[nodiscard]] bool hasContext() const { return context_ != nullptr; }

  uint32_t setUp(const ConvertParams &p) {
    const uint32_t code = zqcc::setUp(context_, p);
    if (code == CC_ERR_NO_MEMORY) {
      context_ = nullptr;
    }
    return code;
  }

  /// `skippedBytes` of each input line are cropped away at its start.
  uint32_t convert(ConvertParams &p, bool isPossible = true, int64_t skippedBytes = 0) {
    if (!isPossible || p.inStride == kNoStride || p.outStride == kNoStride) {
      const uint32_t code = zqcc::routeOf(p).code; // types are judged first
      return code != CC_OK ? code : CC_ERR_ARGUMENT;
    }
    return zqcc::dispatchFrame(*context_, p, skippedBytes);
  }

private:
  ConvertContext *context_;
};

/// Same-format calls: planes of the input, of the output, and whether type 12 can be laid out.
uint32_t processSameFormat(ConvertParams &p, const uint8_t *input, uint8_t *output, const Crop &crop,
                           int32_t outLineLength, int32_t outLines, bool acceptsYvu420) {
  OneShot call;
  if (!call.hasContext()) {
    return CC_ERR_NO_MEMORY_ONESHOT;
  }
  if (p.isResize == 1 && p.antiAlias != 0 && !hasFilteredResize(p.inType)) {
    return CC_ERR_IN_TYPE;
  }
  const uint32_t code = call.setUp(p);
  if (code != CC_OK) {
    return code;
  }
  const bool isPossible = isInside(crop, p.inWidth, p.inHeight);
  if (p.inType == COLOR_YUV420_PLANAR || (acceptsYvu420 && isPlanar420(p.inType))) {
    zqcc::placeInput420(p, input, crop.pictureWidth, crop);
    zqcc::placeOutput420(p, output, outLineLength, outLines);
    return call.convert(p, isPossible);
  }
  if (!hasTwoBytesPerPixel(p.inType)) {
    return CC_ERR_IN_TYPE;
  }
  zqcc::placeInputTwoBytes(p, input, crop);
  zqcc::placeOutput(p, output, 2, outLineLength);
  return call.convert(p, isPossible, 2 * int64_t{crop.left});
}

/// Conversions to RGB565 at a place in a larger picture, turned.
ConvertParams turnedToRgb565(int32_t inType, int32_t width, int32_t height, int32_t rotation) {
  ConvertParams p = description(inType, COLOR_RGB565, width, height);
  p.rotation = static_cast<uint32_t>(rotation);
  return p;
}

uint32_t setUpAndConvert(OneShot &call, ConvertParams &p, bool isPossible) {
  const uint32_t code = call.setUp(p);
  return code == CC_OK ? call.convert(p, isPossible) : code;
}

uint32_t convertSemiPlanar(int32_t type, const uint8_t *input, uint8_t *output, int32_t inStride, const Crop &crop,
                           int32_t width, int32_t height, int32_t outStridePixels, int32_t outLeft, int32_t outTop,
                           int32_t rotation) {
  OneShot call;
  if (!call.hasContext()) {
    return CC_ERR_NO_MEMORY_ONESHOT;
  }
  ConvertParams p = turnedToRgb565(type, width, height, rotation);
  zqcc::placeInputSemiPlanar(p, input, inStride, crop);
  zqcc::placeOutputRgb565(p, output, outStridePixels, outLeft, outTop);
  return setUpAndConvert(call, p, isInside(crop, width, height));
}

} // namespace

uint32_t zqScaleFrame(const uint8_t *input, uint8_t *output, int32_t inWidth, int32_t inHeight, int32_t outWidth,
                      int32_t outHeight, int32_t colorType, int32_t antiAlias) {
  ConvertParams p = description(colorType, colorType, inWidth, inHeight);
  p.outWidth = outWidth;
  p.outHeight = outHeight;
  p.isResize = 1;
  p.antiAlias = static_cast<uint32_t>(antiAlias);
  return processSameFormat(p, input, output, {inWidth, inHeight, 0, 0}, outWidth, outHeight, true);
}

uint32_t zqScaleCroppedFrame(const uint8_t *input, uint8_t *output, int32_t pictureWidth, int32_t pictureHeight,
                             int32_t cropLeft, int32_t cropTop, int32_t cropWidth, int32_t cropHeight, int32_t outWidth,
                             int32_t outHeight, int32_t colorType, int32_t antiAlias) {
  ConvertParams p = description(colorType, colorType, cropWidth, cropHeight);
  p.outWidth = outWidth;
  p.outHeight = outHeight;
  p.isResize = 1;
  p.antiAlias = static_cast<uint32_t>(antiAlias);
  return processSameFormat(p, input, output, {pictureWidth, pictureHeight, cropLeft, cropTop}, outWidth, outHeight,
                           false);
}

uint32_t zqRotateFrame(const uint8_t *input, uint8_t *output, int32_t width, int32_t height, int32_t dimensionA,
                       int32_t dimensionB, int32_t colorType, int32_t rotation) {
  return zqRotateCroppedFrame(input, output, width, height, 0, 0, width, height, dimensionA, dimensionB, colorType,
                              rotation);
}

uint32_t zqRotateCroppedFrame(const uint8_t *input, uint8_t *output, int32_t pictureWidth, int32_t pictureHeight,
                              int32_t cropLeft, int32_t cropTop, int32_t cropWidth, int32_t cropHeight,
                              int32_t dimensionA, int32_t dimensionB, int32_t colorType, int32_t rotation) {
  ConvertParams p = description(colorType, colorType, cropWidth, cropHeight);
  p.rotation = static_cast<uint32_t>(rotation);
  const bool upright = rotation == ROTATION_NONE;
  return processSameFormat(p, input, output, {pictureWidth, pictureHeight, cropLeft, cropTop},
                           upright ? dimensionA : dimensionB, upright ? dimensionB : dimensionA, false);
}

uint32_t zqColorConvert(const uint8_t *input, uint8_t *output, int32_t inType, int32_t outType, int32_t width,
                        int32_t height, int32_t inStride, const double *coefficients) {
  OneShot call;
  if (!call.hasContext()) {
    return CC_ERR_NO_MEMORY_ONESHOT;
  }
  if (inType == outType) {
    return CC_ERR_SAME_TYPE;
  }
  ConvertParams p = description(inType, outType, width, height);
  p.inStride = isPacked422(inType) ? strideOf(2, width) : inStride;
  const uint32_t code = call.setUp(p);
  if (coefficients != nullptr) {
    zqcc::selectCustomMatrix(coefficients);
  }
  if (code != CC_OK) {
    return code;
  }
  if (!zqcc::placeConvertInput(p, input) || !zqcc::placeConvertOutput(p, output)) {
    return CC_ERR_IN_TYPE;
  }
  return call.convert(p);
}

uint32_t zqYUV420PlanartoRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride, int32_t pictureHeight,
                                     int32_t cropLeft, int32_t cropTop, int32_t width, int32_t height,
                                     int32_t /*ignored*/, int32_t outStridePixels, int32_t outLeft, int32_t outTop,
                                     int32_t rotation) {
  OneShot call;
  if (!call.hasContext()) {
    return CC_ERR_NO_MEMORY_ONESHOT;
  }
  ConvertParams p = turnedToRgb565(COLOR_YUV420_PLANAR, width, height, rotation);
  const Crop crop{inStride, pictureHeight, cropLeft, cropTop};
  zqcc::placeInput420(p, input, inStride, crop);
  zqcc::placeOutputRgb565(p, output, outStridePixels, outLeft, outTop);
  return setUpAndConvert(call, p, isInside(crop, width, height));
}

uint32_t zqYUV422PacktoRGB16Rotate(int32_t inType, const uint8_t *input, uint8_t *output, int32_t inStridePixels,
                                   int32_t /*ignored1*/, int32_t cropLeft, int32_t cropTop, int32_t width,
                                   int32_t height, int32_t /*ignored2*/, int32_t outStridePixels, int32_t outLeft,
                                   int32_t outTop, int32_t rotation) {
  OneShot call;
  if (!call.hasContext()) {
    return CC_ERR_NO_MEMORY_ONESHOT;
  }
  if (!isPacked422(inType)) {
    return CC_ERR_SAME_TYPE;
  }
  ConvertParams p = turnedToRgb565(inType, width, height, rotation);
  // How many lines the picture has, nobody says.
  const Crop crop{strideOf(2, inStridePixels), std::numeric_limits<int32_t>::max(), cropLeft, cropTop};
  zqcc::placeInputBytes(p, input, crop);
  zqcc::placeOutputRgb565(p, output, outStridePixels, outLeft, outTop);
  return setUpAndConvert(call, p, isInside(crop, 2 * int64_t{width}, height));
}

uint32_t zqYUV420PacktoRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride, int32_t pictureHeight,
                                   int32_t cropLeft, int32_t cropTop, int32_t width, int32_t height,
                                   int32_t /*ignored*/, int32_t outStridePixels, int32_t outLeft, int32_t outTop,
                                   int32_t rotation) {
  return convertSemiPlanar(COLOR_YUV420_PACK, input, output, inStride, {inStride, pictureHeight, cropLeft, cropTop},
                           width, height, outStridePixels, outLeft, outTop, rotation);
}

uint32_t zqYUV420Pack2toRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride, int32_t pictureHeight,
                                    int32_t cropLeft, int32_t cropTop, int32_t width, int32_t height,
                                    int32_t /*ignored*/, int32_t outStridePixels, int32_t outLeft, int32_t outTop,
                                    int32_t rotation) {
  return convertSemiPlanar(COLOR_YUV420_PACK2, input, output, inStride, {inStride, pictureHeight, cropLeft, cropTop},
                           width, height, outStridePixels, outLeft, outTop, rotation);
}
