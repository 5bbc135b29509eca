#include "likeness/swscale_picture.h"

extern "C" {
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace likeness {
namespace {

using reference::Format;
using reference::Kind;
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

/// One side of a conversion.
struct End {
  AVPixelFormat format;
  const Format *own; ///< has kind and subsampling
  ZqpColours colours;
  uint8_t *data[4] = {};
  int stride[4] = {};
};

/// Planes in the order in which it has them: green, blue, red; U before V.
End endOf(OwnPicture &picture, const ZqpColours &colours) {
  constexpr int kAsOurs[3] = {0, 1, 2};
  constexpr int kGbr[3] = {1, 2, 0};
  constexpr int kUFirst[3] = {0, 2, 1};
  const ZqpPicture view = picture.view();
  const int *order = view.format == ZQP_RGB_PLANES ? kGbr : view.format == ZQP_YV12 ? kUFirst : kAsOurs;
  End end{formatOf(view.format), &picture.format(), colours};
  for (int i = 0; i < 3; ++i) {
    const ZqpPlane &plane = view.planes[order[i]];
    end.data[i] = static_cast<uint8_t *>(plane.data);
    end.stride[i] = static_cast<int>(plane.stride);
  }
  return end;
}

struct Size {
  int width;
  int height;
};

/// A picture between two steps, of up to 16 bits a sample.
class Between {
public:
  Between(const Size &size, AVPixelFormat format, int32_t own, const ZqpColours &colours)
      : memory_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 6 + kBehind),
        end_{format, &reference::formatOf(own), colours} {
    const bool isPacked = own == ZQP_RGB24;
    const std::size_t plane = memory_.size() / 3;
    for (int i = 0; i < (isPacked ? 1 : 3); ++i) {
      end_.data[i] = memory_.data() + plane * static_cast<std::size_t>(i);
      end_.stride[i] = size.width * (isPacked ? 3 : 2);
    }
  }
  [[nodiscard]] const End &end() const { return end_; }

private:
  static constexpr std::size_t kBehind = 768; // vectors reach beyond the last line
  std::vector<uint8_t> memory_;
  End end_;
};

/// As its functions want it: 1 or 0.
int isFull(const End &end) {
  const bool full =
      end.colours.range == ZQP_RANGE_FULL || (end.colours.range == ZQP_RANGE_USUAL && end.own->kind == Kind::Rgb);
  return full ? 1 : 0;
}

const int *tableOf(const ZqpColours &colours) {
  return sws_getCoefficients(colours.matrix == ZQP_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601);
}

bool oneGrid(const End &one, const End &other) {
  return one.own->shiftX == other.own->shiftX && one.own->shiftY == other.own->shiftY;
}

/// Where chroma is, in 256ths of a pixel from the first one that shares it; the default is midway. Of an input whose
/// nearest samples are taken it is a little to the right, so that the first of two that are equally near is taken.
int positionOf(const ZqpColours &colours, bool breaksTies) {
  constexpr int kMidway = -513;
  constexpr int kLittle = 4;
  return colours.siting == ZQP_SITING_CENTRE ? kMidway : breaksTies ? kLittle : 0;
}

bool convertInOneStep(const Size &size, const End &from, const End &to, bool nearest) {
  const std::unique_ptr<SwsContext, decltype(&sws_freeContext)> owned(sws_alloc_context(), &sws_freeContext);
  SwsContext *context = owned.get();
  // Its area filter is bilinear where it enlarges.
  const int flags = (nearest ? SWS_POINT : SWS_AREA) | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
  const std::pair<const char *, int> options[] = {
      {"srcw", size.width},
      {"srch", size.height},
      {"src_format", from.format},
      {"src_range", isFull(from)},
      {"src_h_chr_pos", positionOf(from.colours, nearest)},
      {"dstw", size.width},
      {"dsth", size.height},
      {"dst_format", to.format},
      {"dst_range", isFull(to)},
      {"dst_h_chr_pos", positionOf(to.colours, false)},
      {"sws_flags", flags},
  };
  bool done = context != nullptr;
  for (const auto &[name, value] : options) {
    done = done && av_opt_set_int(context, name, value, 0) >= 0;
  }
  constexpr int kOne = 1 << 16;
  return done && sws_init_context(context, nullptr, nullptr) >= 0 &&
         sws_setColorspaceDetails(context, tableOf(from.colours), isFull(from), tableOf(to.colours), isFull(to), 0,
                                  kOne, kOne) >= 0 &&
         sws_scale(context, from.data, from.stride, 0, size.height, to.data, to.stride) == size.height;
}

bool isPacked422(const Format &format) {
  return format.kind == Kind::Yuv && format.places[0].perGroup == 2;
}

/// What it does less exactly, or otherwise, in one step than in two is done by way of another picture.
std::optional<Between> throughOf(const Size &size, const End &from, const End &to, bool nearest) {
  const bool toRgb = to.own->kind == Kind::Rgb;
  const bool fromYuv = from.own->kind == Kind::Yuv;
  // Another matrix is reached through RGB, on the way to which it forgets where chroma is.
  if (fromYuv && to.own->kind == Kind::Yuv && from.colours.matrix != to.colours.matrix) {
    return oneGrid(from, to) ? Between(size, AV_PIX_FMT_RGB24, ZQP_RGB24, {ZQP_BT601, ZQP_RANGE_FULL, 0, 0, 0})
                             : Between(size, to.format, to.own->number, from.colours);
  }
  // Two lines of chroma are mixed coarsely on the way to packed pixels of as many lines.
  if (fromYuv && from.own->shiftY > 0 && !nearest) {
    if (toRgb) {
      return Between(size, AV_PIX_FMT_YUV444P16, ZQP_I444, from.colours);
    }
    if (isPacked422(*to.own)) {
      return Between(size, AV_PIX_FMT_YUV422P, ZQP_I422, to.colours);
    }
  }
  // White of 565 becomes 250 of grey, but 255 of RGB.
  if (from.own->store == reference::Store::Words && !toRgb) {
    return Between(size, AV_PIX_FMT_RGB24, ZQP_RGB24, from.colours);
  }
  // Chroma of pairs is left as it was.
  if (from.own->kind == Kind::Grey && (to.own->number == ZQP_NV12 || to.own->number == ZQP_NV21)) {
    return Between(size, AV_PIX_FMT_YUV420P, ZQP_I420, to.colours);
  }
  return {};
}

bool convert(const Size &size, const End &from, const End &to, bool nearest) {
  const std::optional<Between> through = throughOf(size, from, to, nearest);
  if (!through) {
    return convertInOneStep(size, from, to, nearest);
  }
  const End &middle = through->end();
  // Chroma that stays where it is goes to RGB and back by itself.
  const bool stays = middle.own->kind == Kind::Rgb && from.own->kind == Kind::Yuv;
  return convert(size, from, middle, nearest || stays) && convert(size, middle, to, nearest || stays);
}

} // namespace

bool swscaleHas(int32_t format, bool asOutput) {
  const AVPixelFormat theirs = formatOf(format);
  return theirs != AV_PIX_FMT_NONE && (asOutput ? sws_isSupportedOutput(theirs) : sws_isSupportedInput(theirs)) != 0;
}

bool convertBySwscale(const ZqpConversion &c, OwnPicture &in, OwnPicture &out) {
  av_log_set_level(AV_LOG_ERROR); // it warns of flags that a format has no use for
  return convert({in.width(), in.height()}, endOf(in, c.inColours), endOf(out, c.outColours),
                 c.filter == ZQP_FILTER_NEAREST);
}

} // namespace likeness
