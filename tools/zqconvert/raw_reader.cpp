#include "raw_reader.h"

#include "error.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <istream>
#include <utility>

namespace zqconvert {

namespace {

struct FurtherName {
  const char *name;
  int type;
  int filePlanes;
  std::array<int, 3> order;
  Range range;
  const char *layout;
};

constexpr std::array kInOrder{0, 1, 2};

// The thirteen functions know no grey; for zqPicture it is a type like others.
constexpr auto kFurtherNames = std::to_array<FurtherName>({
    {"gray", COLOR_RGB888_PLANAR, 1, kInOrder, Range::Unknown, "one plane, taken for red, green and blue"},
    {"gbrp", COLOR_RGB888_PLANAR, 3, {1, 2, 0}, Range::Unknown, "green, blue and red planes"},
    {"yuvj420p", COLOR_YUV420_PLANAR, 3, kInOrder, Range::Full, "as yuv420p in full range"},
    {"yuvj422p", COLOR_YUV422_PLANAR, 3, kInOrder, Range::Full, "as yuv422p in full range"},
    {"yuvj444p", COLOR_YUV444_PLANAR, 3, kInOrder, Range::Full, "as yuv444p in full range"},
    {"yuvj440p", COLOR_YUV440_PLANAR, 3, kInOrder, Range::Full, "as yuv440p in full range"},
    {"yuvj411p", COLOR_YUV411_PLANAR, 3, kInOrder, Range::Full, "as yuv411p in full range"},
});

std::span<const FurtherName> furtherNames(Library library) {
  const std::span all(kFurtherNames);
  return library == Library::Classic ? all : all.subspan(1);
}

/// Bytes that are repeated where a file of rounded-down chroma lacks the last sample.
int sampleBytes(int type, int index) {
  return index > 0 && colorType(type).family == Family::SemiPlanar ? 2 : 1;
}

} // namespace

RawLayout::RawLayout(int colorTypeCode)
    : type(colorTypeCode), filePlanes(planeCount(colorTypeCode)), name(shortName(colorTypeCode)) {}

RawLayout parseRawLayout(std::string_view text, Library library) {
  const std::string lower = lowerCase(text);
  for (const FurtherName &known : furtherNames(library)) {
    if (lower == known.name) {
      RawLayout layout(known.type);
      layout.filePlanes = known.filePlanes;
      layout.order = known.order;
      layout.range = known.range;
      layout.name = known.name;
      layout.library = library;
      return layout;
    }
  }
  RawLayout layout(parseColorType(text, library));
  layout.library = library;
  return layout;
}

std::string describeRawLayouts(Library library) {
  // In the columns of the table that stands above.
  const bool classic = library == Library::Classic;
  std::string text;
  for (const FurtherName &known : furtherNames(library)) {
    std::string line = std::string(classic ? "    " : "") + known.name;
    line.resize(classic ? 28 : 26, ' ');
    line += classic ? "raw input only" : "input only";
    line.resize(classic ? 55 : 39, ' ');
    text += line + known.layout + "\n";
  }
  return text;
}

std::vector<std::string> rawLayoutNames(Library library) {
  std::vector<std::string> names;
  std::ranges::transform(furtherNames(library), std::back_inserter(names),
                         [](const FurtherName &known) { return known.name; });
  return names;
}

RawReader::RawReader(std::istream &stream, std::string name, RawLayout layout, Size size, std::optional<uint64_t> bytes)
    : stream_(stream), name_(std::move(name)), layout_(std::move(layout)) {
  requirePlausible(size, "--size");
  const bool hasSamples = holdsSamples(layout_.type, size.width, size.height);
  if (layout_.library == Library::Classic) {
    requireSamples(layout_.type, size.width, size.height, name_);
  }
  info_.type = layout_.type;
  info_.width = size.width;
  info_.height = size.height;
  info_.range = layout_.range;
  if (layout_.range == Range::Full) {
    info_.extras = {"XCOLORRANGE=FULL"};
    info_.columns = Siting::Centre; // such pictures come from JPEG files
  }
  roundedDown_ = hasSamples && bytes && *bytes % bytesPerFrame(false) != 0 && *bytes % bytesPerFrame(true) == 0;
}

PlaneShape RawReader::fileShape(int index, bool roundedDown) const {
  const auto shape = roundedDown ? planeShape : wholeShape;
  return shape(info_.type, info_.width, info_.height, roomyStride(info_.type, info_.width), index);
}

uint64_t RawReader::bytesPerFrame(bool roundedDown) const {
  uint64_t bytes = 0;
  for (int i = 0; i < layout_.filePlanes; ++i) {
    const PlaneShape shape = fileShape(i, roundedDown);
    bytes += static_cast<uint64_t>(shape.lineBytes) * static_cast<uint64_t>(shape.lines);
  }
  return bytes;
}

bool RawReader::next(Frame &frame) {
  if (stream_.peek() == std::istream::traits_type::eof()) {
    return false;
  }
  ++frames_;
  frame.type = info_.type;
  frame.width = info_.width;
  frame.height = info_.height;
  frame.stride = roomyStride(info_.type, info_.width);
  for (int i = 0; i < layout_.filePlanes; ++i) {
    const int to = layout_.order.at(static_cast<std::size_t>(i));
    std::vector<uint8_t> &plane = frame.planes.at(static_cast<std::size_t>(to));
    const PlaneShape shape = fileShape(to, roundedDown_);
    if (!readPlane(stream_, plane, shape.lineBytes, shape.lines, shape.stride)) {
      throw Truncated(name_ + ": ends in the middle of frame " + std::to_string(frames_) + ": frames of " +
                      toText({info_.width, info_.height}) + " " + layout_.name + " take " +
                      std::to_string(bytesPerFrame()) + " bytes, so --size or " +
                      (layout_.library == Library::Classic ? "--type" : "--from") + " is wrong or the end is missing");
    }
    extendPlane(plane, shape, frame.whole(to), sampleBytes(info_.type, to));
  }
  for (int i = layout_.filePlanes; i < planeCount(info_.type); ++i) {
    frame.planes.at(static_cast<std::size_t>(i)) = frame.planes.front();
  }
  return true;
}

} // namespace zqconvert
