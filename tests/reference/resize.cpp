#include "reference/resize.h"

#include "reference/resize_frame.h"
#include "reference/tables.h"
#include "support/picture.h"

#include <utility>

namespace reference::resize {
namespace {

bool turnsBeforehand(int type) {
  return type == 0 || type == 2 || type == 4 || type == 37;
}

/// Every second byte of the pairs' plane, from `first` on, as a plane with half the pitch, to its last sample.
std::vector<uint8_t> everySecond(const ConvertParams &p, int first) {
  const std::ptrdiff_t pitch = p.inStride >> 1;
  const int columns = p.inWidth / 2;
  const int lines = p.inHeight / 2;
  std::vector<uint8_t> samples(static_cast<std::size_t>((lines - 1) * pitch + columns));
  for (int y = 0; y < lines; ++y) {
    for (int x = 0; x < columns; ++x) {
      samples[static_cast<std::size_t>(y * pitch + x)] = p.inBuf[1][std::ptrdiff_t{y} * p.inStride + 2 * x + first];
    }
  }
  return samples;
}

void turnFrame(Frame &frame) {
  for (std::size_t i = 0; i < 3; ++i) {
    Plane &plane = frame.planes[i];
    frame.scratch[i] = turnedSamples(plane, frame.rotation == ROTATION_90_LEFT);
    plane = {frame.scratch[i].data(), plane.lines, plane.lines, plane.columns};
  }
  std::swap(frame.width, frame.height);
  std::swap(frame.outWidth, frame.outHeight);
  frame.stride = frame.width;
  frame.layout = turnedLayout(frame.layout);
}

void arrangePlanes(const ConvertParams &p, Frame &frame) {
  std::array<const uint8_t *, 3> data{p.inBuf[0], p.inBuf[1], p.inBuf[2]};
  frame.layout = p.inType;
  if (p.inType == 12 || p.inType == 13) {
    std::swap(data[1], data[2]);
    frame.layout = p.inType == 12 ? 3 : 1;
  } else if (support::isSemiPlanar(p.inType)) {
    frame.scratch[1] = everySecond(p, p.inType == 11 ? 0 : 1);
    frame.scratch[2] = everySecond(p, p.inType == 11 ? 1 : 0);
    data[1] = frame.scratch[1].data();
    data[2] = frame.scratch[2].data();
    frame.layout = 3;
  }
  frame.planes[0] = {data[0], p.inStride, p.inWidth, p.inHeight};
  for (std::size_t i = 1; i < 3; ++i) {
    frame.planes[i] = chromaPlane(frame.layout, data[i], p.inWidth, p.inHeight, p.inStride);
  }
}

void describeOutput(const ConvertParams &p, Frame &frame) {
  frame.width = p.inWidth;
  frame.height = p.inHeight;
  frame.stride = p.inStride;
  frame.outWidth = p.outWidth;
  frame.outHeight = p.outHeight;
  frame.outStride = p.outStride;
  frame.out = p.outBuf[0];
  const auto rotation = static_cast<int>(p.rotation);
  frame.rotation = rotation >= 3 && rotation <= 5 ? rotation : 2;
  frame.quality = static_cast<int>(p.antiAlias);
}

void resizePlanar(const ConvertParams &p, const Colour &colour) {
  Frame frame;
  arrangePlanes(p, frame);
  describeOutput(p, frame);
  if (turnsBeforehand(p.inType)) {
    if (frame.rotation == 3 || frame.rotation == 4) {
      turnFrame(frame);
    }
    // Nothing but the pre-pass turns these types: a half turn comes out upright.
    frame.rotation = 2;
  }
  if (p.outType == 32) {
    resizeRunLength(frame, colour);
  } else if (frame.quality != 0 && frame.rotation == 2) {
    resizeFiltered(frame);
  } else {
    resizeBlocks(frame);
  }
}

} // namespace

std::vector<Tap> expandGroups(int source, int positions) {
  const Words words = grouped(source, positions);
  std::vector<Tap> taps;
  std::size_t at = 0;
  while (at < words.size()) {
    const int count = words[at++];
    const int32_t *group = words.data() + at;
    for (int i = 0; i < count; ++i) {
      const int first = i - i % 2;
      const int second = std::min(first + 1, count - 1);
      const int32_t *t = group + static_cast<std::ptrdiff_t>(3) * i;
      taps.push_back({t[0], t[1], t[2], i, group[3 * first], group[3 * second]});
    }
    at += 3 * static_cast<std::size_t>(count);
  }
  return taps;
}

} // namespace reference::resize

namespace reference {

void convertResized(const ConvertParams &params, const Colour &colour) {
  if (support::isPacked422(params.inType)) {
    resize::resizePacked(params, colour);
  } else if (params.inType == COLOR_RGB24) {
    resize::resizeRgb24(params);
  } else {
    resize::resizePlanar(params, colour);
  }
}

} // namespace reference
