// Makes the n-th allocation of the library fail, for every n, and checks the code, that nothing was written and that
// every block was given back exactly once.
#include "frame/memory_ledger.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

using memory::begin;
using memory::check;
using memory::failureReached;
using memory::ledger;

constexpr std::size_t kBytes = std::size_t{4} * 64 * 64;
std::vector<uint8_t> input(kBytes, 90);
std::vector<uint8_t> output(kBytes, 7);

bool outputUntouched() {
  return std::all_of(output.begin(), output.end(), [](uint8_t byte) { return byte == 7; });
}

ConvertParams description(int inType, int outType, uint32_t isResize, uint32_t rotation, uint32_t antiAlias) {
  ConvertParams p{};
  p.inType = inType;
  p.outType = outType;
  p.inWidth = p.inHeight = 32;
  p.inStride = 64;
  p.outWidth = p.outHeight = isResize != 0 ? 24 : 32;
  p.outStride = 128;
  for (std::size_t i = 0; i < 3; ++i) {
    p.inBuf[i] = input.data() + i * 64 * 64;
    p.outBuf[i] = output.data() + i * 64 * 64;
  }
  p.isResize = isResize;
  p.rotation = rotation;
  p.antiAlias = antiAlias;
  return p;
}

/// One handle's life with a second set-up in the middle. True while the n-th allocation was reached.
bool handleLife(const char *name, const ConvertParams &first, const ConvertParams &second, int n) {
  ConvertParams frame = second;
  std::fill(output.begin(), output.end(), uint8_t{7});
  begin(n);
  ConvertContext *handle = nullptr;
  const uint32_t init = zqCCInit(&handle);
  if (init != CC_OK) {
    check(n == 1 && init == CC_ERR_NO_MEMORY && handle == nullptr, "zqCCInit reports and clears the handle", name, n);
    memory::finish(name, n);
    return true;
  }
  for (const ConvertParams &one : {first, second}) {
    ConvertParams copy = one;
    const uint32_t code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &copy);
    if (code != CC_OK) {
      // The context went with it: nothing is left to release.
      check(code == CC_ERR_NO_MEMORY && failureReached(), "set-up reports the lack of memory", name, n);
      memory::finish(name, n);
      check(outputUntouched(), "nothing is written", name, n);
      return true;
    }
    check(!failureReached(), "set-up notices the failure", name, n);
  }
  const int before = ledger.asked;
  check(zqCCProcess(handle, &frame) == CC_OK, "the frame is converted", name, n);
  check(ledger.asked == before, "a frame allocates nothing", name, n);
  check(!outputUntouched(), "the frame is written", name, n);
  check(zqCCUninit(handle) == CC_OK, "the handle is released", name, n);
  memory::finish(name, n);
  return failureReached();
}

void handleLives() {
  struct Scenario {
    const char *name;
    ConvertParams first, second;
  };
  const std::array<Scenario, 7> scenarios{
      {{"planar to RGB565, resized twice", description(3, 30, 1, 2, 0), description(3, 30, 1, 3, 0)},
       {"semi-planar, box filter", description(11, 30, 0, 2, 0), description(35, 30, 1, 2, 3)},
       {"4:4:0 turned through scratch planes", description(3, 3, 1, 2, 1), description(2, 30, 1, 3, 0)},
       {"4:1:1 turned, filtered", description(4, 31, 1, 4, 2), description(37, 30, 1, 4, 1)},
       {"to RGB24", description(3, 32, 1, 2, 0), description(35, 32, 1, 2, 0)},
       {"same format", description(11, 11, 1, 3, 0), description(30, 30, 1, 2, 2)},
       {"packed", description(6, 30, 1, 3, 0), description(17, 17, 1, 4, 0)}}};
  for (const Scenario &scenario : scenarios) {
    int n = 1;
    while (handleLife(scenario.name, scenario.first, scenario.second, n)) {
      ++n;
    }
    check(n > 4, "set-up allocates", scenario.name, n);
  }
}

/// How many blocks a set-up asks for.
void setUpCounts() {
  struct Count {
    const char *name;
    ConvertParams params;
    int blocks;
  };
  const std::array<Count, 6> counts{{{"planar, no resizing", description(3, 30, 0, 2, 0), 0},
                                     {"semi-planar, no resizing", description(11, 30, 0, 2, 0), 2},
                                     {"planar resized", description(3, 30, 1, 2, 0), 2},
                                     {"semi-planar resized", description(35, 30, 1, 2, 0), 4},
                                     {"4:4:0 turned", description(2, 30, 1, 3, 0), 5},
                                     {"no such type", description(99, 30, 0, 2, 0), 0}}};
  for (const Count &count : counts) {
    begin(0);
    ConvertContext *handle = nullptr;
    check(zqCCInit(&handle) == CC_OK, "zqCCInit", count.name, 0);
    check(ledger.asked == 1, "a context is one block", count.name, 0);
    ConvertParams params = count.params;
    check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params) == CC_OK, "set-up", count.name, 0);
    if (ledger.asked != 1 + count.blocks) {
      std::fprintf(stderr, "%s: %d blocks, expected %d\n", count.name, ledger.asked - 1, count.blocks);
    }
    check(ledger.asked == 1 + count.blocks, "set-up asks for what it needs and no more", count.name, 0);
    const std::size_t chroma = std::size_t{64} * 32 / 4 + 32;
    if (params.inType == 11 || params.inType == 35) {
      check(ledger.sizes[1] >= chroma && ledger.sizes[2] >= chroma, "chroma planes have room", count.name, 0);
    }
    check(zqCCUninit(handle) == CC_OK, "zqCCUninit", count.name, 0);
    memory::finish(count.name, 0);
  }
}

void argumentErrorsReleaseNothing() {
  const char *name = "refused set-up";
  begin(0);
  ConvertContext *handle = nullptr;
  check(zqCCInit(&handle) == CC_OK, "zqCCInit", name, 0);
  ConvertParams good = description(11, 30, 1, 2, 0);
  check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &good) == CC_OK, "set-up", name, 0);
  const int live = ledger.liveCount();
  ConvertParams bad = good;
  bad.rotation = 8;
  check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &bad) == CC_ERR_ARGUMENT, "refused", name, 0);
  check(ledger.liveCount() == live, "the earlier set-up is kept", name, 0);
  check(zqCCProcess(handle, &good) == CC_OK, "and still serves", name, 0);
  check(zqCCUninit(handle) == CC_OK, "zqCCUninit", name, 0);
  memory::finish(name, 0);
}

/// Sizes whose products leave 32 and 64 bits must end as a lack of memory, never as a small block.
void hugeSizes() {
  const char *name = "sizes beyond memory";
  for (const uint32_t isResize : {0U, 1U}) {
    begin(0);
    ConvertContext *handle = nullptr;
    check(zqCCInit(&handle) == CC_OK, "zqCCInit", name, 0);
    ConvertParams p = description(11, 30, isResize, 2, 0);
    p.inWidth = p.outWidth = p.inHeight = p.outHeight = p.inStride = INT32_MAX;
    check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &p) == CC_ERR_NO_MEMORY, "no memory", name, 0);
    memory::finish(name, 0);
  }
  begin(0);
  ConvertContext *handle = nullptr;
  check(zqCCInit(&handle) == CC_OK, "zqCCInit", name, 0);
  ConvertParams p = description(3, 30, 1, 2, 0);
  p.inWidth = p.inHeight = p.outWidth = p.outHeight = INT32_MAX;
  check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &p) == CC_ERR_NO_MEMORY, "no memory for tables", name, 0);
  memory::finish(name, 0);
  // 15 words a position: 4294967310, which is 14 where sizes have 32 bits.
  begin(0);
  check(zqCCInit(&handle) == CC_OK, "zqCCInit", name, 0);
  p = description(3, 30, 1, 2, 1);
  p.inWidth = 2097152;
  p.outWidth = 286331154;
  check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &p) == CC_ERR_NO_MEMORY, "no memory for filters", name, 0);
  memory::finish(name, 0);
}

using Call = std::function<uint32_t()>;

/// Every allocation of a one-shot call fails in turn; the first is the context's and has a code of its own.
void oneShot(const char *name, int leastBlocks, const Call &call) {
  int n = 1;
  for (bool reached = true; reached; ++n) {
    std::fill(output.begin(), output.end(), uint8_t{7});
    begin(n);
    const uint32_t code = call();
    reached = failureReached();
    memory::finish(name, n);
    if (reached) {
      check(code == (n == 1 ? CC_ERR_NO_MEMORY_ONESHOT : CC_ERR_NO_MEMORY), "the lack of memory is reported", name, n);
      check(outputUntouched(), "nothing is written", name, n);
    } else {
      check(code == CC_OK && !outputUntouched(), "with memory the call succeeds", name, n);
    }
  }
  check(n - 2 >= leastBlocks, "the call allocates", name, n);
}

void oneShots() {
  const uint8_t *in = input.data();
  uint8_t *out = output.data();
  oneShot("zqScaleFrame", 3, [=] { return zqScaleFrame(in, out, 32, 32, 24, 20, 3, 1); });
  oneShot("zqScaleCroppedFrame", 3, [=] { return zqScaleCroppedFrame(in, out, 32, 32, 2, 2, 16, 16, 24, 20, 30, 0); });
  oneShot("zqRotateFrame", 1, [=] { return zqRotateFrame(in, out, 32, 32, 32, 32, 3, 3); });
  oneShot("zqRotateCroppedFrame", 1, [=] { return zqRotateCroppedFrame(in, out, 32, 32, 2, 2, 16, 16, 16, 16, 6, 4); });
  oneShot("zqColorConvert", 3, [=] { return zqColorConvert(in, out, 11, 30, 32, 32, 32, nullptr); });
  oneShot("zqYUV420PlanartoRGB16Rotate", 1,
          [=] { return zqYUV420PlanartoRGB16Rotate(in, out, 32, 32, 0, 0, 32, 32, 0, 32, 0, 0, 3); });
  oneShot("zqYUV422PacktoRGB16Rotate", 1,
          [=] { return zqYUV422PacktoRGB16Rotate(6, in, out, 32, 0, 0, 0, 32, 32, 0, 32, 0, 0, 3); });
  oneShot("zqYUV420PacktoRGB16Rotate", 3,
          [=] { return zqYUV420PacktoRGB16Rotate(in, out, 32, 32, 0, 0, 32, 32, 0, 32, 0, 0, 3); });
  oneShot("zqYUV420Pack2toRGB16Rotate", 3,
          [=] { return zqYUV420Pack2toRGB16Rotate(in, out, 32, 32, 0, 0, 32, 32, 0, 32, 0, 0, 5); });
}

/// Calls that end early give their context back as well.
void earlyReturns() {
  const uint8_t *in = input.data();
  uint8_t *out = output.data();
  struct Early {
    const char *name;
    uint32_t code;
    Call call;
  };
  const std::array<Early, 8> calls{
      {{"filter type", CC_ERR_IN_TYPE, [=] { return zqScaleFrame(in, out, 32, 32, 24, 20, 11, 1); }},
       {"no layout", CC_ERR_IN_TYPE, [=] { return zqScaleFrame(in, out, 32, 32, 24, 20, 11, 0); }},
       {"refused by set-up", CC_ERR_ARGUMENT, [=] { return zqRotateFrame(in, out, 32, 32, 32, 32, 3, 8); }},
       {"refused by dispatch", CC_ERR_ARGUMENT, [=] { return zqScaleFrame(in, out, 32, 32, 24, 20, 3, 3); }},
       {"same type", CC_ERR_SAME_TYPE, [=] { return zqColorConvert(in, out, 3, 3, 32, 32, 32, nullptr); }},
       {"no route", CC_ERR_OUT_TYPE, [=] { return zqColorConvert(in, out, 6, 12, 32, 32, 32, nullptr); }},
       {"output layout", CC_ERR_IN_TYPE, [=] { return zqColorConvert(in, out, 11, 35, 32, 32, 32, nullptr); }},
       {"not packed", CC_ERR_SAME_TYPE,
        [=] { return zqYUV422PacktoRGB16Rotate(3, in, out, 32, 0, 0, 0, 32, 32, 0, 32, 0, 0, 3); }}}};
  std::fill(output.begin(), output.end(), uint8_t{7});
  for (const Early &early : calls) {
    begin(0);
    const uint32_t code = early.call();
    memory::finish(early.name, 0);
    check(code == early.code, "the code", early.name, 0);
    check(outputUntouched(), "nothing is written", early.name, 0);
  }
}

} // namespace

int main() {
  handleLives();
  setUpCounts();
  argumentErrorsReleaseNothing();
  hugeSizes();
  oneShots();
  earlyReturns();
  return memory::report(300);
}
