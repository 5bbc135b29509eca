// zqp_likeness: converts a photograph by zqPicture and by libswscale, from every format to every format of bytes that
// both have, and says how alike the results are.
#include "likeness/likeness.h"
#include "likeness/swscale_picture.h"
#include "likeness/table.h"
#include "picture/reference/ideal_model.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace {

using likeness::Comparison;
using reference::Format;
using reference::Kind;
using reference::OwnPicture;

/// What libswscale writes or reads beyond a line's end, in vectors, must be the picture's memory.
OwnPicture pictureOf(int32_t format, int width, int height, uint32_t seed = 1) {
  reference::Lie lie;
  lie.behind = 256;
  return {format, width, height, lie, seed};
}

/// What the numbers of pictures of a format may mean. libswscale knows RGB and grey of the full range alone.
std::vector<ZqpColours> coloursOf(const Format &format, int32_t siting) {
  std::vector<ZqpColours> colours;
  for (const int32_t matrix : {ZQP_BT601, ZQP_BT709}) {
    for (const int32_t range : {ZQP_RANGE_LIMITED, ZQP_RANGE_FULL}) {
      const bool known =
          format.kind == Kind::Yuv || (range == ZQP_RANGE_FULL && (format.kind == Kind::Grey || matrix == ZQP_BT601));
      if (known) {
        colours.push_back({matrix, range, siting, 0, 0});
      }
    }
  }
  return colours;
}

/// Whether either has chroma for several columns, so that its siting counts.
bool isSited(const Format &in, const Format &out) {
  return in.shiftX > 0 || out.shiftX > 0;
}

bool same(const ZqpColours &one, const ZqpColours &other) {
  return one.matrix == other.matrix && one.range == other.range;
}

std::string textOf(const Format &format, const ZqpColours &colours) {
  std::string text = format.name;
  if (format.kind != Kind::Rgb) {
    text += colours.matrix == ZQP_BT709 ? " 709" : " 601";
    text += colours.range == ZQP_RANGE_FULL ? " full" : " limited";
  }
  return text;
}

std::string classOf(const ZqpConversion &c) {
  const Kind from = reference::formatOf(c.inFormat).kind;
  const Kind to = reference::formatOf(c.outFormat).kind;
  const char *const names[] = {"YUV", "grey", "RGB"};
  std::string text = std::string(names[static_cast<int>(from)]) + " to " + std::string(names[static_cast<int>(to)]);
  if (from == Kind::Yuv && to == Kind::Yuv) {
    text += c.inColours.matrix != c.outColours.matrix ? ", another matrix"
            : c.inColours.range != c.outColours.range ? ", another range"
                                                      : ", the same colours";
  }
  return text;
}

bool convertHere(const ZqpConversion &c, OwnPicture &in, OwnPicture &out) {
  ZqpConverter *converter = nullptr;
  if (zqpConverterMake(&c, &converter) != ZQP_OK) {
    return false;
  }
  const ZqpPicture from = in.view();
  const ZqpPicture to = out.view();
  const int32_t error = zqpConvert(converter, &from, &to);
  zqpConverterFree(converter);
  return error == ZQP_OK;
}

class Run {
public:
  Run(OwnPicture &photo, double limit) : photo_(photo), limit_(limit) {}

  void all() {
    for (const Format &in : reference::allFormats()) {
      for (const int32_t siting : {ZQP_SITING_LEFT, ZQP_SITING_CENTRE}) {
        for (const ZqpColours &colours :
             likeness::swscaleHas(in.number, false) ? coloursOf(in, siting) : std::vector<ZqpColours>{}) {
          from(in, colours);
        }
      }
    }
  }
  [[nodiscard]] const std::vector<Comparison> &comparisons() const { return comparisons_; }
  [[nodiscard]] bool failed() const { return failed_; }

private:
  [[nodiscard]] ZqpConversion described(int32_t in, const ZqpColours &inColours, int32_t out,
                                        const ZqpColours &outColours) const {
    ZqpConversion c{};
    c.recordSize = sizeof c;
    zqpConversionInit(&c);
    c.inFormat = in;
    c.outFormat = out;
    c.inWidth = c.outWidth = photo_.width();
    c.inHeight = c.outHeight = photo_.height();
    c.inColours = inColours;
    c.outColours = outColours;
    return c;
  }

  /// The photograph in this format, made by libswscale, which has those that are input only here, too.
  void from(const Format &format, const ZqpColours &colours) {
    OwnPicture in = pictureOf(format.number, photo_.width(), photo_.height());
    const ZqpColours rgb{ZQP_BT601, ZQP_RANGE_FULL, colours.siting, 0, 0};
    if (!likeness::convertBySwscale(described(ZQP_RGB24, rgb, format.number, colours), photo_, in)) {
      fail("libswscale does not make " + textOf(format, colours));
      return;
    }
    for (const Format &out : reference::allFormats()) {
      if (out.isInputOnly || out.store != reference::Store::Bytes || !likeness::swscaleHas(out.number, true)) {
        continue;
      }
      for (const ZqpColours &outColours : coloursOf(out, colours.siting)) {
        const bool isNew = isSited(format, out) || colours.siting == ZQP_SITING_LEFT;
        if (isNew && (out.number != format.number || !same(colours, outColours))) {
          compare(in, described(format.number, colours, out.number, outColours));
        }
      }
    }
  }

  void compare(OwnPicture &in, ZqpConversion c) {
    const Format &format = reference::formatOf(c.outFormat);
    for (const int32_t filter : {ZQP_FILTER_BILINEAR, ZQP_FILTER_NEAREST}) {
      c.filter = filter;
      if (filter == ZQP_FILTER_NEAREST && !keepsOrEnlarges(in.format(), format)) {
        continue;
      }
      const std::string name = textOf(in.format(), c.inColours) + " to " + textOf(format, c.outColours) +
                               (!isSited(in.format(), format)           ? ""
                                : c.inColours.siting == ZQP_SITING_LEFT ? ", left"
                                                                        : ", centre") +
                               (filter == ZQP_FILTER_NEAREST ? ", nearest" : ", bilinear");
      OwnPicture ours = pictureOf(c.outFormat, in.width(), in.height());
      OwnPicture theirs = pictureOf(c.outFormat, in.width(), in.height(), 2); // other noise, where nothing is written
      if (!convertHere(c, in, ours) || !likeness::convertBySwscale(c, in, theirs)) {
        fail("One of the two refuses " + name);
        continue;
      }
      Comparison comparison{classOf(c), name, likeness::psnrOf(ours, theirs), {}, {}};
      if (comparison.each.all < limit_) {
        const auto ideal = idealOf(c, in);
        comparison.oursToIdeal = likeness::psnrOf(ours, ideal);
        comparison.theirsToIdeal = likeness::psnrOf(theirs, ideal);
        failed_ = true;
      }
      comparisons_.push_back(comparison);
    }
  }

  /// Whether no chroma is reduced, which is by means under every filter here.
  static bool keepsOrEnlarges(const Format &in, const Format &out) {
    return in.kind == Kind::Yuv && out.kind != Kind::Grey && out.shiftX <= in.shiftX && out.shiftY <= in.shiftY;
  }

  void fail(const std::string &text) {
    std::fprintf(stderr, "zqp_likeness: %s\n", text.c_str());
    failed_ = true;
  }

  OwnPicture &photo_;
  double limit_;
  std::vector<Comparison> comparisons_;
  bool failed_ = false;
};

/// Bytes R G B.
std::optional<OwnPicture> read(const char *file, int width, int height) {
  OwnPicture picture = pictureOf(ZQP_RGB24, width, height);
  std::ifstream stream(file, std::ios::binary);
  const ZqpPlane plane = picture.view().planes[0];
  const auto bytes = static_cast<std::streamsize>(3) * width * height;
  stream.read(static_cast<char *>(plane.data), bytes);
  return stream.gcount() == bytes ? std::optional<OwnPicture>(picture) : std::nullopt;
}

} // namespace

int main(int argc, char **argv) {
  const int width = argc == 5 ? std::atoi(argv[2]) : 0;
  const int height = argc == 5 ? std::atoi(argv[3]) : 0;
  if (width < 16 || height < 16 || width % 16 != 0 || height % 4 != 0) {
    std::fputs("usage: zqp_likeness RGB24-FILE WIDTH HEIGHT RESULTS\n"
               "WIDTH is a multiple of 16, HEIGHT of 4. Fails if a pair of pictures is less alike than 45 dB.\n",
               stderr);
    return 2;
  }
  std::optional<OwnPicture> photo = read(argv[1], width, height);
  if (!photo) {
    std::fprintf(stderr, "zqp_likeness: %s has no picture of %d x %d\n", argv[1], width, height);
    return 2;
  }
  constexpr double kLimit = 45;
  Run run(*photo, kLimit);
  run.all();
  std::ofstream(argv[4]) << likeness::lines(run.comparisons());
  std::fputs(likeness::tables(run.comparisons(), kLimit).c_str(), stdout);
  return run.failed() ? 1 : 0;
}
