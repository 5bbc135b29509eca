#include "frame/frame_check.h"

#include "frame/picture_shape.h"

namespace zqcc {
namespace {

constexpr int64_t kLargestFactor = 1024;
/// Run-length tables hold source positions in 16 bits.
constexpr int32_t kRunLengthLimit = 65536;

bool enlargesTooMuch(int32_t in, int32_t out) {
  return out > in * kLargestFactor;
}

int planesOfType(int32_t type) {
  if (isPlanar(type)) {
    return 3;
  }
  return isSemiPlanar(type) ? 2 : 1;
}

template <class Planes>
bool planesAreThere(const Planes &planes, int count) {
  for (int i = 0; i < count; ++i) {
    if (planes[i] == nullptr) {
      return false;
    }
  }
  return true;
}

/// A copy of a single line moves luma only; everything else needs a sample in every plane.
bool needsChroma(const ConvertParams &p, const Route &route) {
  return !route.copies || p.outHeight >= 2;
}

bool hasSamples(int32_t type, int32_t width, int32_t height) {
  if (!isPlanar(type) && !isSemiPlanar(type)) {
    return true;
  }
  const ChromaShape chroma = chromaShape(type, width, height, 0);
  return chroma.columns > 0 && chroma.lines > 0;
}

/// No chroma plane is so small that it holds no sample. A routine that keeps the size takes the source picture's from
/// the output fields.
bool chromaIsThere(const ConvertParams &p, const Route &route) {
  const bool resizes = p.isResize == 1 && route.scales;
  return hasSamples(p.inType, resizes ? p.inWidth : p.outWidth, resizes ? p.inHeight : p.outHeight) &&
         hasSamples(p.outType, p.outWidth, p.outHeight);
}

bool sameDescription(const ConvertParams &a, const ConvertParams &b) {
  return a.inType == b.inType && a.outType == b.outType && a.inWidth == b.inWidth && a.inHeight == b.inHeight &&
         a.outWidth == b.outWidth && a.outHeight == b.outHeight && a.isResize == b.isResize &&
         a.rotation == b.rotation && a.antiAlias == b.antiAlias;
}

/// What set-up remembers is the description that the routine sees; whether the planes were turned for it is told by the
/// scratch planes being there.
bool isPrepared(const ConvertContext &context, const ConvertParams &p, const Route &route) {
  const bool turns = route.prePass == PrePass::TurnPlanes;
  ConvertParams seen = turns ? turnedDescription(p) : p;
  seen.rotation = p.rotation;
  return turns == (context.rotBuf[0] != nullptr) && sameDescription(context.params, seen);
}

bool tablesFit(const ConvertContext &context, const ConvertParams &p, const Route &route) {
  if (route.tables == TableFormat::None && route.prePass != PrePass::TurnPlanes) {
    return true;
  }
  return (route.tables == TableFormat::None || context.xTable != nullptr) && isPrepared(context, p, route);
}

/// The split planes are as large as the set-up's stride and height made them; a frame may have others. A frame whose
/// output fields exceed its input's would read chroma that is never split.
bool splitScratchFits(const ConvertContext &context, const ConvertParams &p, const Route &route) {
  if (route.prePass != PrePass::SplitChroma) {
    return true;
  }
  if (context.uvBuf[0] == nullptr || p.inStride < 0) {
    return false;
  }
  if ((p.isResize == 0 || !route.scales) && (p.outWidth > p.inWidth || p.outHeight > p.inHeight)) {
    return false;
  }
  return chromaPlaneBytes(p.inType, p.inWidth, p.inHeight, p.inStride) <= splitChromaBytes(context.params);
}

bool sizesSuitRoute(const ConvertParams &p, const Route &route) {
  if (p.isResize == 0) {
    return true;
  }
  if (!route.scales) {
    return p.outWidth <= p.inWidth && p.outHeight <= p.inHeight;
  }
  return route.tables != TableFormat::RunLength || (p.inWidth <= kRunLengthLimit && p.inHeight <= kRunLengthLimit);
}

/// With a stride shorter than a line, a picture placed from the stride's end would begin in front of its buffer.
bool beginsInBuffer(const ConvertParams &p, const Route &route) {
  if (!route.fromStrideEnd) {
    return true;
  }
  const int64_t pixels = p.rotation == ROTATION_90_RIGHT ? p.outHeight : p.outWidth;
  return p.outStride >= (isRgb16(p.outType) ? 2 * pixels : pixels);
}

} // namespace

bool modesAreValid(const ConvertParams &params) {
  return params.isResize <= 1 && params.rotation <= 7 && params.antiAlias <= 3;
}

bool sizesArePossible(const ConvertParams &p) {
  if (isSemiPlanar(p.inType) && (p.inStride < 0 || p.inHeight < 0)) {
    return false;
  }
  if (p.isResize == 0) {
    return true;
  }
  return p.inWidth >= 2 && p.inHeight >= 2 && p.outWidth >= 1 && p.outHeight >= 1 &&
         !enlargesTooMuch(p.inWidth, p.outWidth) && !enlargesTooMuch(p.inHeight, p.outHeight);
}

bool isEmptyPicture(const ConvertParams &params) {
  return params.isResize == 0 && (params.outWidth <= 0 || params.outHeight <= 0);
}

int64_t splitChromaBytes(const ConvertParams &params) {
  return int64_t{params.inStride} * params.inHeight / 4 + 32;
}

bool frameCanRun(const ConvertContext &context, const ConvertParams &params, const Route &route) {
  const bool chroma = needsChroma(params, route);
  return planesAreThere(params.inBuf, chroma ? planesOfType(params.inType) : 1) &&
         planesAreThere(params.outBuf, chroma ? planesOfType(params.outType) : 1) && sizesArePossible(params) &&
         sizesSuitRoute(params, route) && (!chroma || chromaIsThere(params, route)) && beginsInBuffer(params, route) &&
         tablesFit(context, params, route) && splitScratchFits(context, params, route);
}

} // namespace zqcc
