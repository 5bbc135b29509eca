// This library doing a job at each of its levels: set up once, then one call a frame.
#include "runner.h"

#include "support/picture.h"
#include "vector/detect.h"

#include <algorithm>
#include <memory>

namespace bench {
namespace {

struct Uninit {
  void operator()(ConvertContext *context) const { zqCCUninit(context); }
};
using Handle = std::shared_ptr<ConvertContext>;

Handle prepared(ConvertParams &params) {
  ConvertContext *context = nullptr;
  if (zqCCInit(&context) != CC_OK) {
    return {};
  }
  Handle handle(context, Uninit{});
  return zqCCSetParameter(context, PARAM_CONVERT_DESC, &params) == CC_OK ? handle : Handle{};
}

} // namespace

ConvertParams describe(const Job &job, const Size &in) {
  const Size out = job.outputOf(in);
  ConvertParams params{};
  params.inType = job.inType;
  params.inWidth = in.width;
  params.inHeight = in.height;
  params.inStride = support::tightStride(job.inType, in.width);
  params.outType = job.outType;
  params.outWidth = out.width;
  params.outHeight = out.height;
  params.outStride = support::tightStride(job.outType, job.quarterTurns() ? out.height : out.width);
  params.isResize = job.resizes() ? 1 : 0;
  params.rotation = job.rotation;
  params.antiAlias = job.quality;
  return params;
}

namespace {

Runner conversion(const Task &task) {
  ConvertParams params = describe(task.job, task.input.size);
  std::copy(task.input.plane.begin(), task.input.plane.end(), params.inBuf);
  std::copy(task.output.plane.begin(), task.output.plane.end(), params.outBuf);
  const Handle handle = prepared(params);
  if (!handle) {
    return {};
  }
  return [handle, params]() mutable { return zqCCProcess(handle.get(), &params) == CC_OK; };
}

} // namespace

std::vector<Program> ownPrograms() {
  constexpr const char *kNames[zqcc::LEVEL_COUNT] = {"portable", "sse4", "avx2", "avx512", "avx512vbmi", "neon"};
  std::vector<Program> programs;
  for (uint32_t level = zqcc::LEVEL_PORTABLE; level < zqcc::LEVEL_COUNT; ++level) {
    const zqcc::LevelSet upTo = 2 * zqcc::setOf(static_cast<zqcc::Level>(level)) - 1;
    if ((zqcc::detectedLevels() >> level & 1U) != 0) {
      programs.push_back({kNames[level], conversion, [upTo] { zqcc::setLevelMask(upTo); }});
    }
  }
  return programs;
}

std::vector<Program> firstLibraryPrograms() {
  return {{"zqColorConversion", conversion, [] { zqcc::setLevelMask(zqcc::kEveryLevel); }}};
}

Runner setUpRunner(const Task &task) {
  ConvertParams params = describe(task.job, task.input.size);
  ConvertContext *context = nullptr;
  if (zqCCInit(&context) != CC_OK) {
    return {};
  }
  const Handle handle(context, Uninit{});
  return [handle, params]() mutable { return zqCCSetParameter(handle.get(), PARAM_CONVERT_DESC, &params) == CC_OK; };
}

Runner contextRunner() {
  return [] {
    ConvertContext *context = nullptr;
    return zqCCInit(&context) == CC_OK && zqCCUninit(context) == CC_OK;
  };
}

namespace {

constexpr Size kTinyResized = {kTinySize.width * 5 / 4, kTinySize.height * 5 / 4};

/// Planes of 4:2:0 behind one another, as the one-shot functions want them, and room for RGB565.
struct TinyPictures {
  std::vector<uint8_t> input = std::vector<uint8_t>(pixels(kTinySize) * 3 / 2, uint8_t{128});
  std::vector<uint8_t> output = std::vector<uint8_t>(pixels(kTinyResized) * 2);

  static std::size_t pixels(const Size &size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
  }
};

} // namespace

Runner oneShotRunner() {
  return [pictures = std::make_shared<TinyPictures>()] {
    return zqColorConvert(pictures->input.data(), pictures->output.data(), COLOR_YUV420_PLANAR, COLOR_RGB565,
                          kTinySize.width, kTinySize.height, kTinySize.width, nullptr) == CC_OK;
  };
}

Runner oneShotScaleRunner() {
  return [pictures = std::make_shared<TinyPictures>()] {
    return zqScaleFrame(pictures->input.data(), pictures->output.data(), kTinySize.width, kTinySize.height,
                        kTinyResized.width, kTinyResized.height, COLOR_YUV420_PLANAR, 0) == CC_OK;
  };
}

Runner oneFrameRunner() {
  const auto pictures = std::make_shared<TinyPictures>();
  ConvertParams params = describe({"", "", COLOR_YUV420_PLANAR, COLOR_RGB565, {5, 4}, Sampling::Bilinear}, kTinySize);
  const std::size_t luma = TinyPictures::pixels(kTinySize);
  params.inBuf[0] = pictures->input.data();
  params.inBuf[1] = params.inBuf[0] + luma;
  params.inBuf[2] = params.inBuf[1] + luma / 4;
  params.outBuf[0] = pictures->output.data();
  return [pictures, params]() mutable {
    const Handle handle = prepared(params);
    return handle && zqCCProcess(handle.get(), &params) == CC_OK;
  };
}

} // namespace bench
