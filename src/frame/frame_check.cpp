#include "frame/frame_check.h"

#include "base/picture_shape.h"
#include "base/table_format.h"
#include "base/turn.h"

namespace zqcc {
namespace {

constexpr int64_t kLargestFactor = 1024;

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

/// The description that the routine sees: that of the turned planes where a pre-pass turns them.
ConvertParams seenByRoutine(const ConvertParams &p, const Route &route) {
  return route.prePass == PrePass::TurnPlanes ? turnedDescription(p) : p;
}

/// A copy of a single line moves luma only; everything else needs a sample in every plane.
bool movesChroma(const ConvertParams &seen, const Route &route) {
  return !route.copies || seen.outHeight >= 2;
}

/// Pre-passes go by the input fields and read what chroma the input has, whatever the routine needs of it.
bool prePassReadsChroma(const ConvertParams &p, const Route &route) {
  return route.prePass == PrePass::TurnPlanes || (route.prePass == PrePass::SplitChroma && p.inHeight >= 2);
}

bool hasSamples(int32_t type, const PictureSize &size) {
  if (!isPlanar(type) && !isSemiPlanar(type)) {
    return true;
  }
  const ChromaShape chroma = chromaShape(type, size.width, size.height, 0);
  return chroma.columns > 0 && chroma.lines > 0;
}

PictureSize inputSize(const ConvertParams &p) {
  return {p.inWidth, p.inHeight};
}
PictureSize outputSize(const ConvertParams &p) {
  return {p.outWidth, p.outHeight};
}

/// The source picture's size.
PictureSize sourceSize(const ConvertParams &seen, const Route &route) {
  return route.sizedByInput ? inputSize(seen) : planesSize(seen);
}

/// Every plane that is read or written is there, and no chroma plane is so small that it holds no sample.
bool planesSuffice(const ConvertParams &p, const Route &route) {
  const ConvertParams seen = seenByRoutine(p, route);
  const bool chroma = movesChroma(seen, route);
  const bool prePass = prePassReadsChroma(p, route);
  if (!planesAreThere(p.inBuf, chroma || prePass ? planesOfType(p.inType) : 1) ||
      !planesAreThere(p.outBuf, chroma ? planesOfType(p.outType) : 1)) {
    return false;
  }
  if (prePass && !hasSamples(p.inType, inputSize(p))) {
    return false;
  }
  if (route.fromLastInputLine && !hasSamples(p.inType, {sourceSize(seen, route).width, p.inHeight})) {
    return false;
  }
  if (!chroma) {
    return true;
  }
  const PictureSize written = p.isResize == 0 && route.sizedByInput ? inputSize(p) : outputSize(seen);
  if (route.ownPairs) {
    return sourceSize(seen, route).height >= 2 && written.height >= 2; // one column is a pair already
  }
  return hasSamples(seen.inType, sourceSize(seen, route)) && hasSamples(p.outType, written);
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
  ConvertParams seen = seenByRoutine(p, route);
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
  if (context.uvBuf[0] == nullptr) {
    return false;
  }
  if ((p.isResize == 0 || !route.scales) && (p.outWidth > p.inWidth || p.outHeight > p.inHeight)) {
    return false;
  }
  return chromaPlaneBytes(p.inType, p.inWidth, p.inHeight, p.inStride) <= splitChromaBytes(context.params);
}

bool sizesAreThere(const ConvertParams &p, const Route &route) {
  const PictureSize size = sourceSize(p, route);
  return size.width > 0 && size.height > 0 && (!route.fromLastInputLine || p.inHeight > 0);
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

/// Lines follow one another upwards in memory. With a stride shorter than a line, a picture placed from the stride's
/// end would begin in front of its buffer.
bool stridesArePossible(const ConvertParams &p, const Route &route) {
  if (p.inStride < 0 || p.outStride < 0) {
    return false;
  }
  if (!route.fromStrideEnd) {
    return true;
  }
  const int64_t pixels = turnOf(p.rotation) == Turn::Right ? p.outHeight : p.outWidth;
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

bool isEmptyPicture(const ConvertParams &params, const Route &route) {
  const PictureSize size = sourceSize(params, route);
  return params.isResize == 0 && (size.width == 0 || size.height == 0) && size.width >= 0 && size.height >= 0;
}

int64_t splitChromaBytes(const ConvertParams &params) {
  return int64_t{params.inStride} * params.inHeight / 4 + 32;
}

bool frameCanRun(const ConvertContext &context, const ConvertParams &params, const Route &route) {
  return sizesArePossible(params) && sizesAreThere(params, route) && sizesSuitRoute(params, route) &&
         stridesArePossible(params, route) && planesSuffice(params, route) && tablesFit(context, params, route) &&
         splitScratchFits(context, params, route);
}

} // namespace zqcc
