// The nine one-shot functions with every argument drawn. What a call needs is worked out in 64 bits: accepted calls get
// buffers of exactly that size and are compared with the reference models, refused ones get buffers of no size at all.
#include "containment/expectation.h"
#include "fuzz/frame_memory.h"
#include "fuzz/one_shot_call.h"
#include "fuzz/records.h"
#include "reference/result_code.h"
#include "support/levels.h"
#include "support/picture.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

using fuzz::Call;
using fuzz::fail;

/// A buffer that ends where nothing may be touched any more.
fuzz::PlaneMemory bufferOf(fuzz::Room room, int64_t bytes, uint32_t seed) {
  fuzz::PlaneMemory buffer(room, 0, bytes);
  buffer.fillWithNoise(seed);
  return buffer;
}

struct Need {
  int64_t in = 0;
  int64_t out = 0;
  fuzz::FrameBytes planes;
  bool possible = true;   ///< no plane begins in front of its buffer and all of it is small
  bool comparable = true; ///< no byte of the output belongs to two planes or lines
};

Need needOf(const Call &call) {
  Need need;
  const fuzz::FrameBytes bytes = need.planes = fuzz::bytesOf(call.params, call.cropped);
  int64_t end = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (bytes.in[i] > 0) {
      need.possible = need.possible && call.in[i] >= 0;
      need.in = std::max(need.in, fuzz::bounded(call.in[i] + bytes.in[i]));
    }
    if (bytes.out[i] > 0) {
      need.possible = need.possible && call.out[i] >= 0;
      need.comparable = need.comparable && call.out[i] >= end;
      end = fuzz::bounded(call.out[i] + bytes.out[i]);
      need.out = std::max(need.out, end);
    }
  }
  need.possible = need.possible && std::max(need.in, need.out) <= fuzz::kRoomBytes;
  need.possible = need.possible && fuzz::canBeTried(call.params, bytes);
  need.comparable = need.comparable && fuzz::linesAreApart(call.params) && !fuzz::inputLinesOverlap(call.params);
  return need;
}

uint32_t codeOf(const Call &call) {
  if (call.code != CC_OK) {
    return call.code;
  }
  ConvertParams p = call.params;
  static uint8_t somewhere = 0;
  std::fill(std::begin(p.inBuf), std::end(p.inBuf), &somewhere);
  std::fill(std::begin(p.outBuf), std::end(p.outBuf), &somewhere);
  const uint32_t code = reference::resultCode(p, p);
  return code == CC_OK && call.impossible ? CC_ERR_ARGUMENT : code;
}

/// Calls that cannot convert anything get buffers of no size.
uint32_t invokeWithoutMemory(const Call &call) {
  fuzz::announce(call.params);
  const auto nothing = std::make_unique<uint8_t[]>(0);
  return fuzz::invoke(call, nothing.get(), nothing.get());
}

/// Whether the planes of both buffers hold the same.
bool areEqual(const fuzz::PlaneMemory &a, const fuzz::PlaneMemory &b, const Call &call, const Need &need) {
  for (std::size_t i = 0; i < 3; ++i) {
    if (!a.equals(b, call.out[i], need.planes.outLines[i])) {
      return false;
    }
  }
  return true;
}

void accepted(const Call &call) {
  const Need need = needOf(call);
  if (!need.possible) {
    return;
  }
  const fuzz::PlaneMemory in = bufferOf(fuzz::Room::Input, need.in, 3);
  const fuzz::PlaneMemory out = bufferOf(fuzz::Room::Output, need.out, 4);
  const fuzz::PlaneMemory expected = bufferOf(fuzz::Room::Expected, need.out, 4);
  fuzz::announce(call.params);
  const uint32_t code = fuzz::invoke(call, in.data(), out.data());
  if (code == CC_ERR_ARGUMENT && areEqual(out, expected, call, need) && fuzz::isSemiPlanarConversion(call.params) &&
      fuzz::inputLinesOverlap(call.params)) {
    return; // the planes for the split chroma are measured by the stride
  }
  if (code != CC_OK) {
    fail("unexpected code of an accepted call", call.params);
  }
  if (!need.comparable || !fuzz::isComparedInTime(call.params) || call.params.outWidth == 0 ||
      call.params.outHeight == 0) {
    const support::LevelsForced portable(zqcc::LEVEL_PORTABLE);
    if (fuzz::invoke(call, in.data(), expected.data()) != CC_OK || !areEqual(out, expected, call, need)) {
      fail("a one-shot picture differs from the portable level's", call.params);
    }
    return;
  }
  ConvertParams p = call.params;
  for (std::size_t i = 0; i < 3; ++i) {
    p.inBuf[i] = call.in[i] >= 0 && call.in[i] <= need.in ? in.data() + call.in[i] : nullptr;
    p.outBuf[i] = call.out[i] >= 0 && call.out[i] <= need.out ? expected.data() + call.out[i] : nullptr;
  }
  containment::convertByReference(p, call.colour, static_cast<int>(call.cropped));
  if (!areEqual(out, expected, call, need)) {
    fail("a one-shot picture differs from the reference", p);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  const reference::DitherRestorer dither;
  fuzz::Script script(bytes, count);
  const support::LevelsForced level(fuzz::readLevel(script));
  const Call call = fuzz::readCall(script);
  const ConvertParams &p = call.params;
  if (fuzz::setUpMemory(p) == fuzz::SetUpMemory::Unclear) {
    return 0;
  }
  if (std::min({p.inWidth, p.inHeight, p.outWidth, p.outHeight}) < 0) {
    invokeWithoutMemory(call);
    return 0;
  }
  const uint32_t code = codeOf(call);
  if (code != CC_OK) {
    if (invokeWithoutMemory(call) != code) {
      fail("unexpected code of a refused call", p);
    }
  } else if (p.inStride >= 0 && p.outStride >= 0) {
    accepted(call);
  }
  return 0;
}
