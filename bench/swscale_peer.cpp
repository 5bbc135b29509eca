// libswscale doing a job. It has no turns; the flip is a picture written from its last line up.
#include "runner.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <utility>

namespace bench {
namespace {

constexpr std::pair<int32_t, AVPixelFormat> kFormats[] = {
    {COLOR_YUV420_PLANAR, AV_PIX_FMT_YUV420P}, {COLOR_YVU420_PLANAR, AV_PIX_FMT_YUV420P},
    {COLOR_YUV422_PLANAR, AV_PIX_FMT_YUV422P}, {COLOR_YUV444_PLANAR, AV_PIX_FMT_YUV444P},
    {COLOR_YUV440_PLANAR, AV_PIX_FMT_YUV440P}, {COLOR_YUV411_PLANAR, AV_PIX_FMT_YUV411P},
    {COLOR_YUV420_PACK, AV_PIX_FMT_NV12},      {COLOR_YUV422_YUYV, AV_PIX_FMT_YUYV422},
    {COLOR_YUV422_UYVY, AV_PIX_FMT_UYVY422},   {COLOR_RGB565, AV_PIX_FMT_RGB565LE},
    {COLOR_RGB24, AV_PIX_FMT_BGR24},           {COLOR_RGB888_PLANAR, AV_PIX_FMT_GBRP},
};

AVPixelFormat formatOf(int32_t type) {
  for (const auto &[ours, theirs] : kFormats) {
    if (ours == type) {
      return theirs;
    }
  }
  return AV_PIX_FMT_NONE;
}

/// The fastest scaler of each kind: fast bilinear skips samples when it reduces, plain bilinear is no slower when it
/// enlarges.
int flagsOf(const Job &job) {
  switch (job.sampling) {
  case Sampling::Bilinear:
    return job.scale.numerator < job.scale.denominator ? SWS_FAST_BILINEAR : SWS_BILINEAR;
  case Sampling::Filtered:
    return SWS_BILINEAR;
  case Sampling::Box:
    return SWS_AREA;
  default:
    return SWS_POINT;
  }
}

struct Planes {
  uint8_t *data[4] = {};
  int stride[4] = {};
};

Planes planesOf(const View &view) {
  Planes planes;
  // Planar RGB has its planes in the order green, blue, red there.
  constexpr std::size_t kGbr[3] = {1, 2, 0};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t from = view.type == COLOR_RGB888_PLANAR ? kGbr[i] : i;
    planes.data[i] = view.plane[from];
    planes.stride[i] = view.stride[from];
  }
  return planes;
}

} // namespace

Runner swscaleRunner(const Task &task) {
  const AVPixelFormat in = formatOf(task.job.inType);
  const AVPixelFormat out = formatOf(task.job.outType);
  // Its copy of semi-planar pictures of the same size leaves the chroma out.
  const bool incomplete = in == AV_PIX_FMT_NV12 && out == in && !task.job.resizes();
  const bool turns = task.job.quarterTurns() || task.job.rotation == ROTATION_180;
  if (in == AV_PIX_FMT_NONE || out == AV_PIX_FMT_NONE || turns || incomplete) {
    return {};
  }
  av_log_set_level(AV_LOG_ERROR);
  const Size from = task.input.size;
  const Size to = task.resized();
  const std::shared_ptr<SwsContext> context(sws_getContext(from.width, from.height, in, to.width, to.height, out,
                                                           flagsOf(task.job), nullptr, nullptr, nullptr),
                                            sws_freeContext);
  if (!context) {
    return {};
  }
  const Planes source = planesOf(task.input);
  const Planes target = planesOf(task.job.rotation == ROTATION_FLIP_V ? bottomUp(task.output) : task.output);
  return [context, source, target, from, to] {
    return sws_scale(context.get(), source.data, source.stride, 0, from.height, target.data, target.stride) ==
           to.height;
  };
}

} // namespace bench
