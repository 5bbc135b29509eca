#include "reference/one_shot.h"

#include "support/picture.h"

#include <cstddef>

namespace reference {

namespace {

using Offset = std::ptrdiff_t;

bool hasTwoBytePixels(int type) {
  return support::isPacked422(type) || support::isRgb16(type);
}

OneShot refuse(uint32_t code) {
  OneShot result;
  result.code = code;
  return result;
}

OneShot describe(Buffers buffers, int inType, int outType, Size in, Size out, uint32_t rotation) {
  OneShot result;
  ConvertParams &p = result.params;
  p.inType = inType;
  p.outType = outType;
  p.inWidth = in.width;
  p.inHeight = in.height;
  p.outWidth = out.width;
  p.outHeight = out.height;
  p.rotation = rotation;
  p.inBuf[0] = buffers.input;
  p.outBuf[0] = buffers.output;
  return result;
}

/// Chroma planes of 4:2:0 behind a luma plane of stride x lines bytes.
void outputPlanes420(ConvertParams &p, int stride, int lines) {
  const Offset luma = Offset{stride} * lines;
  p.outStride = stride;
  p.outBuf[1] = p.outBuf[0] + luma;
  p.outBuf[2] = p.outBuf[0] + luma + luma / 4;
}

void inputPlanes420(ConvertParams &p, int stride, int lines) {
  const Offset luma = Offset{stride} * lines;
  p.inStride = stride;
  p.inBuf[1] = p.inBuf[0] + luma;
  p.inBuf[2] = p.inBuf[0] + luma + luma / 4;
}

/// The chroma offset halves the whole product, so it is that of line top / 2 for even tops only.
void inputPlanes420(ConvertParams &p, const Crop &crop) {
  const uint8_t *picture = p.inBuf[0];
  const Offset stride = crop.picture.width;
  const Offset luma = stride * crop.picture.height;
  const Offset chroma = (stride * crop.top) / 4 + crop.left / 2;
  p.inStride = crop.picture.width;
  p.inBuf[0] = picture + stride * crop.top + crop.left;
  p.inBuf[1] = picture + luma + chroma;
  p.inBuf[2] = picture + luma + luma / 4 + chroma;
}

void inputWords(ConvertParams &p, const Crop &crop) {
  p.inStride = 2 * crop.picture.width;
  p.inBuf[0] += Offset{p.inStride} * crop.top + 2 * Offset{crop.left};
}

bool hasFilter(int type) {
  return (type >= 6 && type <= 9) || type == 3 || type == 30;
}

Crop wholePicture(Size size) {
  return {size, 0, 0, size};
}

OneShot scale(Buffers buffers, const Crop &crop, Size out, int type, int antiAlias, bool yvuToo) {
  if (antiAlias != 0 && !hasFilter(type)) {
    return refuse(CC_ERR_IN_TYPE);
  }
  OneShot result = describe(buffers, type, type, crop.part, out, ROTATION_NONE);
  ConvertParams &p = result.params;
  p.isResize = 1;
  p.antiAlias = static_cast<uint32_t>(antiAlias);
  result.cropped = 2 * crop.left;
  if (type == 3 || (type == 12 && yvuToo)) {
    inputPlanes420(p, crop);
    outputPlanes420(p, out.width, out.height);
  } else if (hasTwoBytePixels(type)) {
    inputWords(p, crop);
    p.outStride = 2 * out.width;
  } else {
    return refuse(CC_ERR_IN_TYPE);
  }
  return result;
}

OneShot rotate(Buffers buffers, const Crop &crop, int dimensionA, int dimensionB, int type, int rotation) {
  OneShot result = describe(buffers, type, type, crop.part, crop.part, static_cast<uint32_t>(rotation));
  ConvertParams &p = result.params;
  result.cropped = 2 * crop.left;
  const int line = rotation == ROTATION_NONE ? dimensionA : dimensionB;
  const int lines = rotation == ROTATION_NONE ? dimensionB : dimensionA;
  if (type == 3) {
    inputPlanes420(p, crop);
    outputPlanes420(p, line, lines);
  } else if (hasTwoBytePixels(type)) {
    inputWords(p, crop);
    p.outStride = 2 * line;
  } else {
    return refuse(CC_ERR_IN_TYPE);
  }
  return result;
}

void placeWords(ConvertParams &p, Place place) {
  p.outStride = 2 * place.stridePixels;
  p.outBuf[0] += Offset{p.outStride} * place.top + 2 * Offset{place.left};
}

bool layInput(ConvertParams &p, Size size, int stride) {
  p.inStride = stride;
  const Offset luma = Offset{stride} * size.height;
  if (p.inType == 3) {
    inputPlanes420(p, stride, size.height);
  } else if (p.inType == 11 || p.inType == 35) {
    p.inBuf[1] = p.inBuf[0] + luma;
  } else if (support::isPacked422(p.inType)) {
    p.inStride = 2 * size.width;
  } else if (p.inType == 1) {
    p.inBuf[1] = p.inBuf[0] + luma;
    p.inBuf[2] = p.inBuf[0] + luma + luma / 2;
  } else {
    return false;
  }
  return true;
}

bool layOutput(ConvertParams &p, Size size) {
  if (p.outType == 30 || p.outType == 31) {
    p.outStride = 2 * size.width;
  } else if (p.outType == 32) {
    p.outStride = 3 * size.width;
  } else if (p.outType == 3 || p.outType == 12) {
    outputPlanes420(p, size.width, size.height);
  } else {
    return false;
  }
  return true;
}

} // namespace

OneShot scaleFrame(Buffers buffers, Size in, Size out, int32_t type, int32_t antiAlias) {
  return scale(buffers, wholePicture(in), out, type, antiAlias, true);
}

OneShot scaleCroppedFrame(Buffers buffers, const Crop &crop, Size out, int32_t type, int32_t antiAlias) {
  return scale(buffers, crop, out, type, antiAlias, false);
}

OneShot rotateFrame(Buffers buffers, Size in, int32_t dimensionA, int32_t dimensionB, int32_t type, int32_t rotation) {
  return rotate(buffers, wholePicture(in), dimensionA, dimensionB, type, rotation);
}

OneShot rotateCroppedFrame(Buffers buffers, const Crop &crop, int32_t dimensionA, int32_t dimensionB, int32_t type,
                           int32_t rotation) {
  return rotate(buffers, crop, dimensionA, dimensionB, type, rotation);
}

OneShot colorConvert(Buffers buffers, int32_t inType, int32_t outType, Size size, int32_t inStride) {
  if (inType == outType) {
    return refuse(CC_ERR_SAME_TYPE);
  }
  OneShot result = describe(buffers, inType, outType, size, size, ROTATION_NONE);
  if (!layInput(result.params, size, inStride) || !layOutput(result.params, size)) {
    return refuse(CC_ERR_IN_TYPE);
  }
  return result;
}

OneShot yuv420PlanarToRgb16(Buffers buffers, const Crop &crop, Place place, int32_t rotation) {
  OneShot result = describe(buffers, 3, 30, crop.part, crop.part, static_cast<uint32_t>(rotation));
  inputPlanes420(result.params, crop);
  placeWords(result.params, place);
  return result;
}

OneShot packed422ToRgb16(Buffers buffers, int32_t inType, const Crop &crop, Place place, int32_t rotation) {
  if (!support::isPacked422(inType)) {
    return refuse(CC_ERR_SAME_TYPE);
  }
  OneShot result = describe(buffers, inType, 30, crop.part, crop.part, static_cast<uint32_t>(rotation));
  ConvertParams &p = result.params;
  p.inStride = 2 * crop.picture.width;
  p.inBuf[0] += Offset{p.inStride} * crop.top + crop.left;
  placeWords(p, place);
  return result;
}

OneShot semiPlanarToRgb16(Buffers buffers, int32_t inType, const Crop &crop, Place place, int32_t rotation) {
  OneShot result = describe(buffers, inType, 30, crop.part, crop.part, static_cast<uint32_t>(rotation));
  ConvertParams &p = result.params;
  const Offset stride = crop.picture.width;
  p.inStride = crop.picture.width;
  p.inBuf[0] = buffers.input + stride * crop.top + crop.left;
  p.inBuf[1] = buffers.input + stride * crop.picture.height + (stride * crop.top) / 2 + crop.left;
  placeWords(p, place);
  return result;
}

} // namespace reference
