#include "likeness/swscale_picture.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <utility>

namespace likeness {
namespace {

using reference::OwnPicture;

constexpr std::pair<int32_t, AVPixelFormat> kFormats[] = {
    {ZQP_I420, AV_PIX_FMT_YUV420P}, {ZQP_YV12, AV_PIX_FMT_YUV420P},    {ZQP_NV12, AV_PIX_FMT_NV12},
    {ZQP_NV21, AV_PIX_FMT_NV21},    {ZQP_I422, AV_PIX_FMT_YUV422P},    {ZQP_I444, AV_PIX_FMT_YUV444P},
    {ZQP_GREY, AV_PIX_FMT_GRAY8},   {ZQP_YUYV, AV_PIX_FMT_YUYV422},    {ZQP_UYVY, AV_PIX_FMT_UYVY422},
    {ZQP_YVYU, AV_PIX_FMT_YVYU422}, {ZQP_RGB24, AV_PIX_FMT_RGB24},     {ZQP_BGR24, AV_PIX_FMT_BGR24},
    {ZQP_RGBA, AV_PIX_FMT_RGBA},    {ZQP_BGRA, AV_PIX_FMT_BGRA},       {ZQP_I440, AV_PIX_FMT_YUV440P},
    {ZQP_I411, AV_PIX_FMT_YUV411P}, {ZQP_RGB_PLANES, AV_PIX_FMT_GBRP}, {ZQP_RGB565, AV_PIX_FMT_RGB565LE},
};

AVPixelFormat formatOf(int32_t number) {
  for (const auto &[ours, theirs] : kFormats) {
    if (ours == number) {
      return theirs;
    }
  }
  return AV_PIX_FMT_NONE;
}

struct Planes {
  uint8_t *data[4] = {};
  int stride[4] = {};
};

/// In the order in which it has them: green, blue, red; U before V.
Planes planesOf(OwnPicture &picture) {
  constexpr int kAsOurs[3] = {0, 1, 2};
  constexpr int kGbr[3] = {1, 2, 0};
  constexpr int kUFirst[3] = {0, 2, 1};
  const ZqpPicture view = picture.view();
  const int *order = view.format == ZQP_RGB_PLANES ? kGbr : view.format == ZQP_YV12 ? kUFirst : kAsOurs;
  Planes planes;
  for (int i = 0; i < 3; ++i) {
    const ZqpPlane &plane = view.planes[order[i]];
    planes.data[i] = static_cast<uint8_t *>(plane.data);
    planes.stride[i] = static_cast<int>(plane.stride);
  }
  return planes;
}

bool isFull(const OwnPicture &picture, const ZqpColours &colours) {
  return colours.range == ZQP_RANGE_FULL ||
         (colours.range == ZQP_RANGE_USUAL && picture.format().kind == reference::Kind::Rgb);
}

const int *tableOf(const ZqpColours &colours) {
  return sws_getCoefficients(colours.matrix == ZQP_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601);
}

/// In 256ths of a pixel from the first one that shares the sample; the default is midway.
int positionOf(const ZqpColours &colours) {
  constexpr int kMidway = -513;
  return colours.siting == ZQP_SITING_LEFT ? 0 : kMidway;
}

/// Its area filter is bilinear where it enlarges.
int flagsOf(const ZqpConversion &c) {
  const int filter = c.filter == ZQP_FILTER_NEAREST ? SWS_POINT : SWS_AREA;
  return filter | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
}

} // namespace

bool swscaleHas(int32_t format, bool asOutput) {
  const AVPixelFormat theirs = formatOf(format);
  return theirs != AV_PIX_FMT_NONE && (asOutput ? sws_isSupportedOutput(theirs) : sws_isSupportedInput(theirs)) != 0;
}

bool convertBySwscale(const ZqpConversion &c, OwnPicture &in, OwnPicture &out) {
  const std::unique_ptr<SwsContext, decltype(&sws_freeContext)> owned(sws_alloc_context(), &sws_freeContext);
  SwsContext *context = owned.get();
  const bool fromFull = isFull(in, c.inColours);
  const bool toFull = isFull(out, c.outColours);
  const std::pair<const char *, int> options[] = {
      {"srcw", in.width()},
      {"srch", in.height()},
      {"src_format", formatOf(in.format().number)},
      {"src_range", fromFull},
      {"src_h_chr_pos", positionOf(c.inColours)},
      {"dstw", out.width()},
      {"dsth", out.height()},
      {"dst_format", formatOf(out.format().number)},
      {"dst_range", toFull},
      {"dst_h_chr_pos", positionOf(c.outColours)},
      {"sws_flags", flagsOf(c)},
  };
  bool done = context != nullptr;
  for (const auto &[name, value] : options) {
    done = done && av_opt_set_int(context, name, value, 0) >= 0;
  }
  constexpr int kOne = 1 << 16;
  done = done && sws_init_context(context, nullptr, nullptr) >= 0 &&
         sws_setColorspaceDetails(context, tableOf(c.inColours), fromFull, tableOf(c.outColours), toFull, 0, kOne,
                                  kOne) >= 0;
  if (!done) {
    return false;
  }
  const Planes from = planesOf(in);
  const Planes to = planesOf(out);
  return sws_scale(context, from.data, from.stride, 0, in.height(), to.data, to.stride) == out.height();
}

} // namespace likeness
