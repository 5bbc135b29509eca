#include "fuzz/frame_memory.h"

#include "containment/expectation.h"
#include "fuzz/records.h"
#include "reference/result_code.h"
#include "support/picture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {
namespace {

constexpr uint8_t kGround = 0xA5;

using Extent = support::BasicPlaneShape<int64_t>;

int64_t bytesOf(const Extent &extent) {
  return static_cast<int64_t>(extent.bytes());
}

bool isTurn(const ConvertParams &p) {
  return p.rotation >= ROTATION_90_LEFT && p.rotation <= ROTATION_180;
}

/// Turns of planar 4:2:0 take their planes for tight whatever the strides say.
bool isTight(const ConvertParams &p) {
  return p.inType == p.outType && (p.inType == 3 || p.inType == 12) && p.isResize == 0 && isTurn(p);
}

/// Same-format lines of odd packed width are cut where what the crop leaves of the stride has no room for the whole
/// group.
Extent cut(Extent extent, const ConvertParams &p, int64_t width, int64_t cropped = 0) {
  const bool packed = p.inType == p.outType && support::isPacked422(p.inType);
  if (packed && width % 2 != 0 && extent.stride - cropped < extent.lineBytes) {
    extent.lineBytes -= 2;
  }
  return extent;
}

Extent inputPlane(const ConvertParams &p, int plane, int64_t cropped) {
  // Converters that keep the size take it from the output fields, a pre-pass from the input's.
  const bool larger = p.isResize == 0;
  const int64_t width = larger ? std::max(p.inWidth, p.outWidth) : p.inWidth;
  const int64_t height = larger ? std::max(p.inHeight, p.outHeight) : p.inHeight;
  Extent extent = support::planeShape<int64_t>(p.inType, width, height, p.inStride, plane, support::lastInputPair(p));
  if (isTight(p)) {
    extent.stride = extent.lineBytes;
  }
  return cut(extent, p, width, cropped);
}

Extent outputPlane(const ConvertParams &p, int plane) {
  reference::Size written = containment::writtenSize(p);
  if (isTight(p)) {
    // These write the input's size, whatever the output fields say.
    const bool half = p.rotation == ROTATION_180;
    written = half ? reference::Size{p.inWidth, p.inHeight} : reference::Size{p.inHeight, p.inWidth};
  }
  Extent extent = support::planeShape<int64_t>(p.outType, written.width, written.height, p.outStride, plane,
                                               support::lastOutputPair(p));
  if (isTight(p)) {
    extent.stride = extent.lineBytes;
  }
  return cut(extent, p, written.width);
}

int64_t outputBytes(const ConvertParams &p, int plane) {
  const Extent extent = outputPlane(p, plane);
  // Turned pictures may lie at the right end of their lines.
  const bool resizedHalf = p.inType == p.outType && p.isResize == 1 && p.rotation == ROTATION_180;
  const bool toRgb16 = p.inType != p.outType && support::isRgb16(p.outType) && isTurn(p) && plane == 0;
  const int64_t whole = resizedHalf || toRgb16 ? extent.lines * extent.stride : 0;
  return std::max(bytesOf(extent), whole);
}

Lines linesOf(const Extent &extent) {
  return {bounded(extent.lineBytes), bounded(extent.lines), bounded(extent.stride)};
}

/// The frame that is being converted, for reports of the address sanitizer.
ConvertParams inWork{};

void print(const char *what, const ConvertParams &f) {
  std::fprintf(stderr,
               "%s: type %d to %d, %dx%d (stride %d) to %dx%d (stride %d), isResize %u, rotation %u, quality %u\n",
               what, f.inType, f.outType, f.inWidth, f.inHeight, f.inStride, f.outWidth, f.outHeight, f.outStride,
               f.isResize, f.rotation, f.antiAlias);
}

PlaneMemory groundPlane(Room room, int plane, int64_t bytes) {
  PlaneMemory memory(room, plane, bytes);
  memory.fill(kGround);
  return memory;
}

/// Whether every sample of the input is read, and not a few for every pixel of the output.
bool readsAll(const ConvertParams &p) {
  return !reference::scales(p) || isSemiPlanarConversion(p) || turnsPlanes(p);
}

} // namespace

void fail(const char *what, const ConvertParams &frame) {
  print(what, frame);
  std::abort();
}

void announce(const ConvertParams &frame) {
  inWork = frame;
}

FrameBytes bytesOf(const ConvertParams &frame, int64_t cropped) {
  FrameBytes bytes;
  for (int i = 0; i < 3; ++i) {
    const auto plane = static_cast<std::size_t>(i);
    bytes.in[plane] = bounded(bytesOf(inputPlane(frame, i, cropped)));
    bytes.out[plane] = bounded(outputBytes(frame, i));
    bytes.inLines[plane] = linesOf(inputPlane(frame, i, cropped));
    bytes.outLines[plane] = linesOf(outputPlane(frame, i));
  }
  return bytes;
}

bool canBeTried(const ConvertParams &frame, const FrameBytes &bytes) {
  const bool all = readsAll(frame);
  const int64_t samples = int64_t{std::max(frame.inWidth, 0)} * std::max(frame.inHeight, 0);
  // Resizing reads some samples for each pixel, on a page each at worst.
  const int64_t mostRead = all ? INT64_MAX : pixelsOf(frame) * (frame.antiAlias == 3 ? 64 : 20);
  int64_t blocks = 0;
  int64_t pages = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::max(bytes.in[i], bytes.out[i]) > kRoomBytes) {
      return false;
    }
    blocks += (bytes.in[i] <= kLargestBlock ? bytes.in[i] : 0) + (bytes.out[i] <= kLargestBlock ? bytes.out[i] : 0);
    pages += std::min(pagesOf(bytes.inLines[i]), mostRead) + pagesOf(bytes.outLines[i]);
  }
  return blocks <= kLargest && pages <= kMostPages && pixelsOf(frame) <= kLargest && (!all || samples <= kLargest);
}

bool linesAreApart(const ConvertParams &frame) {
  const reference::Size written = containment::writtenSize(frame);
  const Extent extent =
      cut(support::planeShape<int64_t>(frame.outType, written.width, written.height, frame.outStride, 0), frame,
          written.width);
  return isTight(frame) || extent.stride >= extent.lineBytes;
}

FrameMemory::FrameMemory(const FrameBytes &bytes, uint32_t seed) : bytes_(bytes) {
  for (int i = 0; i < 3; ++i) {
    const auto plane = static_cast<std::size_t>(i);
    in_[plane] = PlaneMemory(Room::Input, i, bytes.in[plane]);
    in_[plane].fillWithNoise(seed + static_cast<uint32_t>(i));
    out_[plane] = groundPlane(Room::Output, i, bytes.out[plane]);
    expected_[plane] = groundPlane(Room::Expected, i, bytes.out[plane]);
  }
}

void FrameMemory::attach(ConvertParams &frame, bool expected) {
  for (std::size_t i = 0; i < 3; ++i) {
    frame.inBuf[i] = in_[i].data();
    frame.outBuf[i] = (expected ? expected_ : out_)[i].data();
  }
}

bool FrameMemory::agrees() const {
  for (std::size_t i = 0; i < 3; ++i) {
    if (!out_[i].equals(expected_[i], 0, bytes_.outLines[i])) {
      return false;
    }
  }
  return true;
}

bool FrameMemory::untouched() const {
  for (std::size_t i = 0; i < 3; ++i) {
    if (!out_[i].holdsOnly(kGround, 0, bytes_.outLines[i])) {
      return false;
    }
  }
  return true;
}

} // namespace fuzz

/// The sanitizer calls this before it prints what it has found.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void __asan_on_error() {
  fuzz::print("while converting", fuzz::inWork);
}
