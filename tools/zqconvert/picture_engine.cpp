#include "picture_engine.h"

#include "error.h"
#include "picture_colours.h"
#include "picture_types.h"
#include "pixels.h"
#include "stream_tags.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

namespace zqconvert {

namespace {

/// What an orientation does to lines and to the shape of pixels, in the words of the tags.
uint32_t rotationLike(int orientation) {
  if (isQuarterTurn(orientation)) {
    return ROTATION_90_LEFT;
  }
  return orientation == 3 ? ROTATION_180 : orientation == 4 ? ROTATION_FLIP_V : ROTATION_NONE;
}

Size turned(Size size, int orientation) {
  return isQuarterTurn(orientation) ? Size{size.height, size.width} : size;
}

bool isPlanarKind(int type) {
  return isPlanar420(type) || !y4mKind(type).empty();
}

int defaultY4mType(int inType) {
  if (isPlanarKind(inType)) {
    return inType;
  }
  return colorType(inType).family == Family::Packed422 ? COLOR_YUV422_PLANAR : COLOR_YUV420_PLANAR;
}

} // namespace

int defaultPictureType(Format format, std::string_view outputName, int inType) {
  const RawName name = format == Format::Raw ? rawName(outputName, Library::Picture) : RawName{};
  if (name.kind == RawName::OneType) {
    return name.type;
  }
  if (name.kind == RawName::AnyYuv) {
    return isYuv(inType) && isPictureOutput(inType) ? inType : COLOR_YUV420_PLANAR;
  }
  switch (format) {
  case Format::Raw:
    return inType == COLOR_RGB16_ALT ? inType : COLOR_RGB565;
  case Format::Y4m:
    return defaultY4mType(inType);
  case Format::Bmp:
    return hasAlpha(inType) ? int{kBgra} : int{COLOR_RGB24};
  case Format::Png:
    return hasAlpha(inType) ? kRgba : inType == kGrey ? kGrey : kRgb24;
  default:
    return kRgb24;
  }
}

ZqpConversion PictureEngine::describe(const Rectangle &part, const PictureRequest &request, Format format) {
  const ColourPair colours = resolveColours(input_, request, format);
  ZqpConversion conversion{};
  conversion.recordSize = sizeof conversion;
  requireOk(zqpConversionInit(&conversion));
  conversion.inFormat = pictureFormat(input_.type);
  conversion.inWidth = input_.width;
  conversion.inHeight = input_.height;
  conversion.crop = {part.x, part.y, part.width, part.height};
  conversion.outFormat = pictureFormat(request.outType);
  conversion.outWidth = output_.width;
  conversion.outHeight = output_.height;
  conversion.orientation = request.orientation;
  conversion.filter = request.filter;
  conversion.dither = request.dither;
  conversion.inColours = colours.in;
  conversion.outColours = colours.out;
  adaptColourTags(output_, input_, request, colours);
  return conversion;
}

PictureEngine::PictureEngine(const StreamInfo &input, const PictureRequest &request, Format format)
    : input_(input), output_(input), notes_(idleColourOptions(input.type, request)), bands_(request.threads) {
  requirePlausible({input_.width, input_.height}, "input");
  const Rectangle part = request.crop.value_or(Rectangle{0, 0, input_.width, input_.height});
  requireInside(part, {input_.width, input_.height});
  if (!isPictureOutput(request.outType)) {
    throw Error("pictures of " + shortName(request.outType) + " are read, but not made (--list-types shows which are)");
  }
  const Size finished = turned({part.width, part.height}, request.orientation);
  const Size size = request.scale ? completed(*request.scale, finished) : finished;
  requirePlausible(size, "--scale");
  output_.type = request.outType;
  output_.width = size.width;
  output_.height = size.height;
  adaptTags(output_, {part, turned(size, request.orientation), rotationLike(request.orientation)}, input_.type);
  const ZqpConversion conversion = describe(part, request, format);
  ZqpConverter *converter = nullptr;
  requireOk(zqpConverterMake(&conversion, &converter));
  converter_.reset(converter);
}

void PictureEngine::requireOk(int32_t error) const {
  if (error != ZQP_OK) {
    throw Error(shortName(input_.type) + " " + toText({input_.width, input_.height}) + " to " +
                shortName(output_.type) + " " + toText({output_.width, output_.height}) + ": " + zqpErrorText(error));
  }
}

/// Bands of whole sixteens, so that none begins inside lines that share chroma.
int32_t PictureEngine::convertBands(const ZqpPicture &in, const ZqpPicture &out) {
  constexpr int kLines = 16;
  const int pieces = (out.height + kLines - 1) / kLines;
  const int count = std::min(bands_.threads(), pieces);
  std::atomic<int32_t> result{ZQP_OK};
  bands_.run(count, [&](int band) {
    const int first = pieces * band / count * kLines;
    const int end = std::min(pieces * (band + 1) / count * kLines, out.height);
    const int32_t error = zqpConvertLines(converter_.get(), &in, &out, first, end - first);
    if (error != ZQP_OK) {
      result = error;
    }
  });
  return result;
}

void PictureEngine::convert(const Frame &in, Frame &out) {
  if (out.type != output_.type || out.width != output_.width || out.height != output_.height) {
    out = makeRoomyFrame(output_.type, output_.width, output_.height);
    out.wholeChroma = true;
  }
  out.tags = output_.frameTags ? in.tags : "";
  const ZqpPicture from = viewOf(in);
  const ZqpPicture to = viewOf(out);
  const auto start = std::chrono::steady_clock::now();
  const int32_t error = bands_.threads() == 1 ? zqpConvert(converter_.get(), &from, &to) : convertBands(from, to);
  seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  requireOk(error);
}

} // namespace zqconvert
