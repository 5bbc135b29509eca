#include "frame/oneshot_layout.h"

#include "base/picture_shape.h"

namespace zqcc {
namespace {

/// Samples of a plane; the products of two sizes never overflow in 64 bits.
int64_t area(int32_t a, int32_t b) {
  return int64_t{a} * b;
}

/// A place in the caller's buffer; nothing is derived from a missing buffer. Computed on the address, since arguments
/// that make no sense may lead anywhere before they are refused.
template <class Byte>
Byte *moved(Byte *p, int64_t bytes) {
  if (p == nullptr) {
    return nullptr;
  }
  // NOLINTNEXTLINE(performance-no-int-to-ptr): pointer arithmetic must not overflow before the arguments are refused
  return reinterpret_cast<Byte *>(reinterpret_cast<std::uintptr_t>(p) + static_cast<std::uintptr_t>(bytes));
}

/// Planes that follow one another: chroma behind `luma` samples, the third plane a `share`-th of that further on; both
/// moved by `offset`.
template <class Byte>
void placeChroma(Byte *planes[3], Byte *base, int64_t luma, int64_t share, int64_t offset) {
  planes[1] = moved(base, luma + offset);
  planes[2] = moved(base, luma + luma / share + offset);
}

/// Chroma offset of a crop in 4:2:0 planes, on the full product: exact for even tops only.
int64_t chromaCropOffset(int32_t stride, const Crop &crop) {
  return area(stride, crop.top) / 4 + crop.left / 2;
}

} // namespace

bool isInside(const Crop &crop, int64_t width, int64_t height) {
  const bool starts = crop.left >= 0 && crop.top >= 0;
  const bool ends = crop.left + width <= crop.pictureWidth && crop.top + height <= crop.pictureHeight;
  return width < 1 || height < 1 || (starts && ends);
}

int32_t strideOf(int32_t bytesPerPixel, int32_t pixels) {
  const int64_t bytes = area(bytesPerPixel, pixels);
  const bool fits = bytes > kNoStride && bytes <= std::numeric_limits<int32_t>::max();
  return fits ? static_cast<int32_t>(bytes) : kNoStride;
}

void placeInput420(ConvertParams &p, const uint8_t *input, int32_t stride, const Crop &crop) {
  p.inStride = stride;
  p.inBuf[0] = moved(input, area(stride, crop.top) + crop.left);
  placeChroma(p.inBuf, input, area(stride, crop.pictureHeight), 4, chromaCropOffset(stride, crop));
}

void placeInputSemiPlanar(ConvertParams &p, const uint8_t *input, int32_t stride, const Crop &crop) {
  p.inStride = stride;
  p.inBuf[0] = moved(input, area(stride, crop.top) + crop.left);
  p.inBuf[1] = moved(input, area(stride, crop.pictureHeight) + area(stride, crop.top) / 2 + crop.left);
}

void placeInputTwoBytes(ConvertParams &p, const uint8_t *input, const Crop &crop) {
  p.inStride = strideOf(2, crop.pictureWidth);
  p.inBuf[0] = moved(input, area(p.inStride, crop.top) + 2 * int64_t{crop.left});
}

void placeInputBytes(ConvertParams &p, const uint8_t *input, const Crop &crop) {
  p.inStride = crop.pictureWidth;
  p.inBuf[0] = moved(input, area(p.inStride, crop.top) + crop.left);
}

bool placeConvertInput(ConvertParams &p, const uint8_t *input) {
  const int64_t luma = area(p.inHeight, p.inStride);
  p.inBuf[0] = input;
  if (p.inType == COLOR_YUV420_PLANAR) {
    placeChroma(p.inBuf, input, luma, 4, 0);
  } else if (p.inType == COLOR_YUV422_PLANAR) {
    placeChroma(p.inBuf, input, luma, 2, 0);
  } else if (isSemiPlanar(p.inType)) {
    p.inBuf[1] = moved(input, luma);
  } else {
    return isPacked422(p.inType);
  }
  return true;
}

void placeOutput420(ConvertParams &p, uint8_t *output, int32_t lineLength, int32_t lines) {
  p.outStride = lineLength;
  p.outBuf[0] = output;
  placeChroma(p.outBuf, output, area(lineLength, lines), 4, 0);
}

void placeOutput(ConvertParams &p, uint8_t *output, int32_t bytesPerPixel, int32_t lineLength) {
  p.outStride = strideOf(bytesPerPixel, lineLength);
  p.outBuf[0] = output;
}

void placeOutputRgb565(ConvertParams &p, uint8_t *output, int32_t stridePixels, int32_t left, int32_t top) {
  p.outStride = strideOf(2, stridePixels);
  p.outBuf[0] = moved(output, area(p.outStride, top) + 2 * int64_t{left});
}

bool placeConvertOutput(ConvertParams &p, uint8_t *output) {
  if (isPlanar420(p.outType)) {
    placeOutput420(p, output, p.outWidth, p.outHeight);
  } else if (isRgb16(p.outType)) {
    placeOutput(p, output, 2, p.outWidth);
  } else if (p.outType == COLOR_RGB24) {
    placeOutput(p, output, 3, p.outWidth);
  } else {
    return false;
  }
  return true;
}

} // namespace zqcc
