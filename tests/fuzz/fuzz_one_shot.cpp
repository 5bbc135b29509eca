// The nine one-shot functions with every argument drawn. What a call needs is worked out in 64 bits: accepted calls get
// buffers of exactly that size and are compared with the reference models, refused ones get buffers of no size at all.
#include "containment/expectation.h"
#include "fuzz/frame_memory.h"
#include "fuzz/one_shot_call.h"
#include "fuzz/records.h"
#include "reference/result_code.h"
#include "support/picture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

using fuzz::Call;
using fuzz::fail;

/// A buffer that ends with its heap block.
std::vector<uint8_t> bufferOf(int64_t bytes, uint32_t seed) {
  std::vector<uint8_t> buffer(static_cast<std::size_t>(bytes));
  support::fill(buffer.data(), buffer.size(), support::Fill::Noise, seed);
  buffer.shrink_to_fit();
  return buffer;
}

struct Need {
  int64_t in = 0;
  int64_t out = 0;
  bool possible = true;   ///< no plane begins in front of its buffer and all of it is small
  bool comparable = true; ///< no byte of the output belongs to two planes or lines
};

Need needOf(const Call &call) {
  Need need;
  const fuzz::FrameBytes bytes = fuzz::bytesOf(call.params, call.cropped);
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
  need.possible = need.possible && std::max(need.in + need.out, fuzz::pixelsOf(call.params)) <= fuzz::kLargest;
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

void accepted(const Call &call) {
  const Need need = needOf(call);
  if (!need.possible) {
    return;
  }
  const std::vector<uint8_t> in = bufferOf(need.in, 3);
  std::vector<uint8_t> out = bufferOf(need.out, 4);
  std::vector<uint8_t> expected = out;
  fuzz::announce(call.params);
  const uint32_t code = fuzz::invoke(call, in.data(), out.data());
  if (code == CC_ERR_ARGUMENT && out == expected && fuzz::isSemiPlanarConversion(call.params) &&
      fuzz::inputLinesOverlap(call.params)) {
    return; // the planes for the split chroma are measured by the stride
  }
  if (code != CC_OK) {
    fail("unexpected code of an accepted call", call.params);
  }
  if (!need.comparable || fuzz::pixelsOf(call.params) > fuzz::kLargestCompared || call.params.outWidth == 0 ||
      call.params.outHeight == 0) {
    return;
  }
  ConvertParams p = call.params;
  for (std::size_t i = 0; i < 3; ++i) {
    p.inBuf[i] = call.in[i] >= 0 && call.in[i] <= need.in ? in.data() + call.in[i] : nullptr;
    p.outBuf[i] = call.out[i] >= 0 && call.out[i] <= need.out ? expected.data() + call.out[i] : nullptr;
  }
  containment::convertByReference(p, call.colour, static_cast<int>(call.cropped));
  if (out != expected) {
    fail("a one-shot picture differs from the reference", p);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  const reference::DitherRestorer dither;
  fuzz::Script script(bytes, count);
  const Call call = fuzz::readCall(script);
  const ConvertParams &p = call.params;
  if (fuzz::setUpBytes(p) > fuzz::kLargestSetUp) {
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
