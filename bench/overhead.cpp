// What does not depend on the pixels: set-up of every kind of table and scratch memory, and calls on tiny pictures.
#include "runner.h"

#include "zqColorConversion.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace bench {
namespace {

constexpr Size kSetUpSize = {1920, 1080};
constexpr Size kTinySize = {16, 16};

void initUninit(benchmark::State &state) {
  for (auto step : state) {
    static_cast<void>(step);
    ConvertContext *context = nullptr;
    if (zqCCInit(&context) != CC_OK || zqCCUninit(context) != CC_OK) {
      state.SkipWithError("no context");
      return;
    }
  }
}

void setUp(benchmark::State &state, const Job &job) {
  ConvertParams params = describe(job, kSetUpSize);
  ConvertContext *context = nullptr;
  if (zqCCInit(&context) != CC_OK) {
    state.SkipWithError("no context");
    return;
  }
  for (auto step : state) {
    static_cast<void>(step);
    if (zqCCSetParameter(context, PARAM_CONVERT_DESC, &params) != CC_OK) {
      state.SkipWithError("set-up refused"); // a failed allocation has released the context
      return;
    }
  }
  zqCCUninit(context);
}

/// The whole road in one call: context, set-up, conversion, release.
void oneShot(benchmark::State &state) {
  Frame output(COLOR_RGB565, kTinySize);
  // The function wants its planes behind one another.
  std::vector<uint8_t> planes(static_cast<std::size_t>(kTinySize.width * kTinySize.height * 3 / 2), 128);
  for (auto step : state) {
    static_cast<void>(step);
    if (zqColorConvert(planes.data(), output.view().plane[0], COLOR_YUV420_PLANAR, COLOR_RGB565, kTinySize.width,
                       kTinySize.height, kTinySize.width, nullptr) != CC_OK) {
      state.SkipWithError("refused");
      return;
    }
  }
}

} // namespace

void registerOverhead() {
  for (const Job &job : setUps()) {
    const std::string name = std::string(job.family) + "/" + job.name + "/1920x1080/zqcc";
    benchmark::RegisterBenchmark(name.c_str(), [&job](benchmark::State &state) { setUp(state, job); });
  }
  benchmark::RegisterBenchmark("call/init_uninit/none/zqcc", initUninit);
  benchmark::RegisterBenchmark("call/one_shot/16x16/zqcc", oneShot);
}

} // namespace bench
