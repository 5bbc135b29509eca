#include "picture_colours.h"

#include <algorithm>

namespace zqconvert {

namespace {

/// Whether several columns share a chroma sample, so that it matters where it stands.
bool sharesColumns(int type) {
  return isYuv(type) && colorType(type).chromaShiftX > 0;
}

int32_t zqpRange(Range range) {
  return range == Range::Full ? ZQP_RANGE_FULL : range == Range::Limited ? ZQP_RANGE_LIMITED : ZQP_RANGE_USUAL;
}

int32_t zqpSiting(Siting siting) {
  return siting == Siting::Centre ? ZQP_SITING_CENTRE : ZQP_SITING_LEFT;
}

Range rangeOfInput(const StreamInfo &input, const PictureRequest &request) {
  return request.in.range.value_or(input.range);
}

/// YUV keeps its range. Files to look at take the lightness of a grey picture from 0 to 255.
Range rangeOfOutput(const StreamInfo &input, const PictureRequest &request, Format format) {
  if (request.out.range) {
    return *request.out.range;
  }
  if (request.outType == kGrey && isPictureFormat(format)) {
    return Range::Full;
  }
  return isYuv(input.type) && isYuv(request.outType) ? rangeOfInput(input, request) : Range::Unknown;
}

Siting sitingOfInput(const StreamInfo &input, const PictureRequest &request) {
  const Siting siting = request.in.siting.value_or(input.columns);
  return siting == Siting::Unknown ? Siting::Left : siting;
}

/// YUV keeps its siting, where the file can say so: of 4:2:2, a y4m file cannot, and it is read as left.
Siting sitingOfOutput(const StreamInfo &input, const PictureRequest &request, Format format) {
  if (request.out.siting) {
    return *request.out.siting;
  }
  if (format == Format::Y4m && !isPlanar420(request.outType)) {
    return Siting::Left;
  }
  return sharesColumns(input.type) ? sitingOfInput(input, request) : Siting::Left;
}

void setMatrix(ZqpColours &colours, const MatrixChoice &choice) {
  colours.matrix = choice.matrix;
  colours.kr = choice.kr;
  colours.kb = choice.kb;
}

void adaptSiting(StreamInfo &output, const StreamInfo &input, const PictureRequest &request,
                 const ColourPair &colours) {
  const bool samePlaces = request.orientation <= 1 && !request.scale && !request.crop;
  const bool kept = samePlaces && isPlanar420(input.type) && isPlanar420(output.type) &&
                    input.columns != Siting::Unknown && colours.out.siting == zqpSiting(input.columns);
  if (kept) {
    return;
  }
  output.siting = colours.out.siting == ZQP_SITING_CENTRE ? "420jpeg" : "420mpeg2";
  output.columns = colours.out.siting == ZQP_SITING_CENTRE ? Siting::Centre : Siting::Left;
  std::erase_if(output.extras,
                [](const std::string &word) { return word.starts_with("XYSCSS=") || word.starts_with("XCHROMA"); });
}

} // namespace

ColourPair resolveColours(const StreamInfo &input, const PictureRequest &request, Format format) {
  ColourPair colours{};
  const MatrixChoice matrix = request.in.matrix.value_or(MatrixChoice{});
  setMatrix(colours.in, matrix);
  setMatrix(colours.out, request.out.matrix.value_or(matrix));
  colours.in.range = zqpRange(rangeOfInput(input, request));
  colours.out.range = zqpRange(rangeOfOutput(input, request, format));
  colours.in.siting = zqpSiting(sitingOfInput(input, request));
  colours.out.siting = zqpSiting(sitingOfOutput(input, request, format));
  return colours;
}

void adaptColourTags(StreamInfo &output, const StreamInfo &input, const PictureRequest &request,
                     const ColourPair &colours) {
  adaptSiting(output, input, request, colours);
  // Where nobody said the range of the YUV that stays YUV, nobody knows it afterwards.
  const bool known = colours.out.range != ZQP_RANGE_USUAL || !isYuv(input.type);
  output.range = !known ? Range::Unknown : colours.out.range == ZQP_RANGE_FULL ? Range::Full : Range::Limited;
  std::erase_if(output.extras, [](const std::string &word) { return word.starts_with("XCOLORRANGE="); });
  if (known) {
    output.extras.emplace_back(output.range == Range::Full ? "XCOLORRANGE=FULL" : "XCOLORRANGE=LIMITED");
  }
}

std::vector<std::string> idleColourOptions(int inType, const PictureRequest &request) {
  const bool yuvIn = isYuv(inType);
  const bool yuvOut = isYuv(request.outType);
  const std::string pair = " changes nothing from " + shortName(inType) + " to " + shortName(request.outType);
  std::vector<std::string> notes;
  if ((request.in.matrix || request.out.matrix) && !yuvIn && !yuvOut) {
    notes.push_back("--matrix" + pair + ", which are both RGB");
  }
  if ((request.in.siting || request.out.siting) && !sharesColumns(inType) && !sharesColumns(request.outType)) {
    notes.push_back("--siting" + pair + ", whose columns share no chroma");
  }
  if (request.dither != ZQP_DITHER_NONE && colorType(request.outType).family != Family::Rgb16) {
    notes.push_back("--dither" + pair + ", which has 8 bits for every component");
  }
  return notes;
}

} // namespace zqconvert
