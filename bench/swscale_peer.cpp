// libswscale doing a job, in one step or, where that takes a slow general path, by two steps through a layout that has
// fast ones. It has no turns; the flip is a picture written from its last line up.
#include "runner.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <memory>
#include <utility>

namespace bench {
namespace {

constexpr std::pair<int32_t, AVPixelFormat> kFormats[] = {
    {COLOR_YUV420_PLANAR, AV_PIX_FMT_YUV420P},
    {COLOR_YVU420_PLANAR, AV_PIX_FMT_YUV420P},
    {COLOR_YUV422_PLANAR, AV_PIX_FMT_YUV422P},
    {COLOR_YUV444_PLANAR, AV_PIX_FMT_YUV444P},
    {COLOR_YUV440_PLANAR, AV_PIX_FMT_YUV440P},
    {COLOR_YUV411_PLANAR, AV_PIX_FMT_YUV411P},
    {COLOR_YUV420_PACK, AV_PIX_FMT_NV12},
    {COLOR_YUV420_PACK2, AV_PIX_FMT_NV21},
    {COLOR_YUV422_YUYV, AV_PIX_FMT_YUYV422},
    {COLOR_YUV422_UYVY, AV_PIX_FMT_UYVY422},
    {COLOR_YUV422_YVYU, AV_PIX_FMT_YVYU422},
    {COLOR_RGB565, AV_PIX_FMT_RGB565LE},
    {COLOR_RGB24, AV_PIX_FMT_BGR24},
    {COLOR_RGB888_PLANAR, AV_PIX_FMT_GBRP},
    {kBgra, AV_PIX_FMT_BGRA},
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
int flagsOf(const Task &task) {
  switch (task.job.sampling) {
  case Sampling::Bilinear:
    return !task.enlarges() ? SWS_FAST_BILINEAR : SWS_BILINEAR;
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

using Context = std::shared_ptr<SwsContext>;

Context contextOf(const Size &from, AVPixelFormat in, const Size &to, AVPixelFormat out, int flags) {
  return {sws_getContext(from.width, from.height, in, to.width, to.height, out, flags, nullptr, nullptr, nullptr),
          sws_freeContext};
}

bool offers(const Task &task) {
  const Job &job = task.job;
  // Its copy of semi-planar pictures of the same size leaves the chroma out.
  const bool incomplete = job.inType == COLOR_YUV420_PACK && job.outType == job.inType && !job.resizes();
  return formatOf(job.inType) != AV_PIX_FMT_NONE && formatOf(job.outType) != AV_PIX_FMT_NONE && !job.turns() &&
         !incomplete;
}

Planes targetOf(const Task &task) {
  return planesOf(task.job.rotation == ROTATION_FLIP_V ? bottomUp(task.output) : task.output);
}

Runner inOneStep(const Task &task, int flags) {
  if (!offers(task)) {
    return {};
  }
  const Size from = task.input.size;
  const Size to = task.resized();
  const Context context = contextOf(from, formatOf(task.job.inType), to, formatOf(task.job.outType), flags);
  if (!context) {
    return {};
  }
  const Planes source = planesOf(task.input);
  const Planes target = targetOf(task);
  return [=] {
    return sws_scale(context.get(), source.data, source.stride, 0, from.height, target.data, target.stride) ==
           to.height;
  };
}

/// Converted twice, or scaled and then converted, through a layout in between; so many lines of the input at a time.
Runner inTwoSteps(const Task &task, int32_t through, int flags, int32_t lines) {
  const Job &job = task.job;
  const Size from = task.input.size;
  const Size to = task.resized();
  const bool tooNarrow = from.width < 64; // its fast paths want lines of aligned vectors
  // Lines that do not suit vectors are scaled into others that do, and copied.
  const bool aligned = to.width % 32 == 0;
  const bool repeats =
      job.resizes() ? aligned && job.outType == through : job.outType == through || job.inType == through;
  // Planes of planar RGB are scaled as if they were samples of 4:4:4: as RGB they would be converted on the way.
  const bool asSamples = through == COLOR_RGB888_PLANAR;
  if (!offers(task) || tooNarrow || repeats || (asSamples && (job.inType != through || !job.resizes()))) {
    return {};
  }
  const Context first = contextOf(from, asSamples ? AV_PIX_FMT_YUV444P : formatOf(job.inType), to,
                                  asSamples ? AV_PIX_FMT_YUV444P : formatOf(through), flags);
  const Context second = contextOf(to, formatOf(through), to, formatOf(job.outType), SWS_POINT);
  if (!first || !second) {
    return {};
  }
  const auto between = std::make_shared<Frame>(through, to, Lines::Aligned);
  const View input = task.input;
  const Planes target = targetOf(task);
  return [=] { // a slice at a time, of which the second context gets what the first one has finished
    int32_t finished = 0;
    int32_t converted = 0;
    for (int32_t top = 0; top < from.height; top += lines) {
      const int32_t count = std::min(lines, from.height - top);
      const Planes source = planesOf(part(input, 0, top, {from.width, count}));
      const Planes middle = planesOf(between->view());
      finished += sws_scale(first.get(), source.data, source.stride, top, count, middle.data, middle.stride);
      const int32_t ready = (finished == to.height ? finished : finished & ~1) - converted;
      if (ready > 0) {
        const Planes slice = planesOf(part(between->view(), 0, converted, {to.width, ready}));
        sws_scale(second.get(), slice.data, slice.stride, converted, ready, target.data, target.stride);
        converted += ready;
      }
    }
    return converted == to.height;
  };
}

} // namespace

void addSwscale(std::vector<Program> &programs) {
  av_log_set_level(AV_LOG_ERROR);
  programs.push_back({"swscale", [](const Task &task) { return inOneStep(task, flagsOf(task)); }});
  // Five taps may be a mean of areas just as well.
  programs.push_back({"swscale by areas", [](const Task &task) {
                        return task.job.sampling == Sampling::Filtered ? inOneStep(task, SWS_AREA) : Runner{};
                      }});
  constexpr std::pair<int32_t, const char *> kThrough[] = {
      {COLOR_YUV420_PLANAR, "yuv420p"}, {COLOR_YUV422_PLANAR, "yuv422p"}, {COLOR_YUV444_PLANAR, "yuv444p"},
      {COLOR_RGB888_PLANAR, "gbrp"},    {COLOR_RGB24, "bgr24"},
  };
  for (const auto &[type, name] : kThrough) {
    programs.push_back({std::string("swscale via ") + name, [type = type](const Task &task) {
                          return inTwoSteps(task, type, flagsOf(task), task.input.size.height);
                        }});
  }
  programs.push_back({"swscale by areas via yuv420p", [](const Task &task) {
                        return task.job.sampling == Sampling::Filtered
                                   ? inTwoSteps(task, COLOR_YUV420_PLANAR, SWS_AREA, task.input.size.height)
                                   : Runner{};
                      }});
  // What enlarged planes take is too much for the cache.
  programs.push_back({"swscale by slices via yuv420p", [](const Task &task) {
                        constexpr int32_t kLines = 64;
                        return task.enlarges() ? inTwoSteps(task, COLOR_YUV420_PLANAR, flagsOf(task), kLines)
                                               : Runner{};
                      }});
}

} // namespace bench
