#include "y4m_reader.h"

#include "error.h"
#include "zqColorConversion.h"

#include <array>
#include <istream>
#include <string_view>
#include <utility>

namespace zqconvert {

namespace {

constexpr std::string_view kMagic = "YUV4MPEG2";
constexpr std::string_view kFrame = "FRAME";
/// Header lines end long before this; what does not is no header.
constexpr std::size_t kMaxLine = 4096;

struct ChromaTag {
  std::string_view tag;
  int type;
};

constexpr auto kChromaTags = std::to_array<ChromaTag>({
    {"420", COLOR_YUV420_PLANAR},
    {"420jpeg", COLOR_YUV420_PLANAR},
    {"420mpeg2", COLOR_YUV420_PLANAR},
    {"420paldv", COLOR_YUV420_PLANAR},
    {"422", COLOR_YUV422_PLANAR},
    {"444", COLOR_YUV444_PLANAR},
    {"440", COLOR_YUV440_PLANAR},
    {"411", COLOR_YUV411_PLANAR},
});

/// The bytes up to the next line feed, which is taken out of the stream but not returned.
std::optional<std::string> readLine(std::istream &stream) {
  std::string line;
  while (line.size() <= kMaxLine) {
    const int byte = stream.get();
    if (byte == std::istream::traits_type::eof()) {
      return std::nullopt;
    }
    if (byte == '\n') {
      return line;
    }
    line.push_back(static_cast<char>(byte));
  }
  return std::nullopt;
}

bool isRate(std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && parseCount(text.substr(0, colon)) && parseCount(text.substr(colon + 1));
}

/// A carriage return at a header line's end tells of a stream that was sent or saved as text: the samples are damaged
/// as well. `begin` is how such a line begins; samples that stand where a line should are another matter.
void requireBinary(const std::optional<std::string> &line, std::string_view begin, const std::string &name) {
  if (line && line->starts_with(begin) && line->ends_with('\r')) {
    throw Error(name +
                ": a header line ends with CR LF, so that the stream was copied or written as text, which damages "
                "pictures; make it again in binary mode");
  }
}

/// Header bytes for a message: damaged files must not write control codes to the user's terminal.
std::string printable(std::string_view text) {
  std::string clean(text.substr(0, 40));
  for (char &c : clean) {
    if (c < ' ' || c > '~') {
      c = '?';
    }
  }
  return clean;
}

int roundedUp(int value, int shift) {
  return (value + (1 << shift) - 1) >> shift;
}

} // namespace

Y4mReader::Y4mReader(std::istream &stream, std::string name) : stream_(stream), name_(std::move(name)) {
  const std::optional<std::string> line = readLine(stream_);
  requireBinary(line, kMagic, name_);
  if (!line || !line->starts_with(kMagic) || (line->size() > kMagic.size() && (*line)[kMagic.size()] != ' ')) {
    throw Error(name_ + ": not a YUV4MPEG2 stream (raw frames need --size and --type)");
  }
  parseHeader(*line);
}

void Y4mReader::parseHeader(const std::string &line) {
  std::optional<int> width;
  std::optional<int> height;
  std::string chroma = "420jpeg";
  for (const std::string &word : split(std::string_view(line).substr(kMagic.size()), ' ')) {
    if (word.empty()) {
      continue;
    }
    const std::string value = word.substr(1);
    switch (word.front()) {
    case 'W':
    case 'H': {
      std::optional<int> &side = word.front() == 'W' ? width : height;
      if (side) {
        throw Error(name_ + ": the header gives the size twice");
      }
      side = parseCount(value);
      if (!side) {
        throw Error(name_ + ": the header's size '" + printable(word) + "' is no number");
      }
      break;
    }
    case 'C':
      chroma = value;
      break;
    case 'F':
      if (!isRate(value)) {
        throw Error(name_ + ": the header's frame rate '" + printable(word) + "' is no fraction");
      }
      info_.rate = value;
      break;
    default:
      break; // interlacing, aspect and comments change no sample
    }
  }
  if (!width || !height) {
    throw Error(name_ + ": the header gives no " + (width ? "height" : "width"));
  }
  info_.width = *width;
  info_.height = *height;
  requirePlausible({info_.width, info_.height}, name_);
  parseChroma(chroma);
  requireSamples(info_.type, info_.width, info_.height, name_);
}

void Y4mReader::parseChroma(const std::string &tag) {
  for (const ChromaTag &known : kChromaTags) {
    if (tag == known.tag) {
      info_.type = known.type;
      if (known.type == COLOR_YUV420_PLANAR) {
        info_.siting = tag;
      }
      return;
    }
  }
  throw Error(name_ + ": chroma kind 'C" + printable(tag) +
              "' is not taken (8-bit 420, 420jpeg, 420mpeg2, 420paldv, 422, 444, 440 and 411 are)");
}

PlaneShape Y4mReader::fileShape(int index, int stride) const {
  if (index == 0) {
    return {info_.width, info_.height, stride};
  }
  const ColorTypeInfo &type = colorType(info_.type);
  return {roundedUp(info_.width, type.chromaShiftX), roundedUp(info_.height, type.chromaShiftY),
          stride >> type.chromaShiftX};
}

uint64_t Y4mReader::bytesPerFrame() const {
  uint64_t bytes = kFrame.size() + 1;
  for (int i = 0; i < 3; ++i) {
    const PlaneShape shape = fileShape(i, info_.width);
    bytes += static_cast<uint64_t>(shape.lineBytes) * static_cast<uint64_t>(shape.lines);
  }
  return bytes;
}

bool Y4mReader::next(Frame &frame) {
  if (stream_.peek() == std::istream::traits_type::eof()) {
    return false;
  }
  ++frames_;
  const std::string where = "frame " + std::to_string(frames_);
  const std::optional<std::string> line = readLine(stream_);
  requireBinary(line, kFrame, name_);
  if (!line || !line->starts_with(kFrame) || (line->size() > kFrame.size() && (*line)[kFrame.size()] != ' ')) {
    throw Error(
        name_ + ": " +
        (line || !stream_.eof() ? "no FRAME line where " + where + " should begin" : "ends in the header of " + where));
  }
  frame.type = info_.type;
  frame.width = info_.width;
  frame.height = info_.height;
  // The stream rounds chroma sizes up, while the library halves the luma stride: lines of odd pictures are padded until
  // the halved stride has room for the last sample.
  const int shift = colorType(info_.type).chromaShiftX;
  frame.stride = roundedUp(info_.width, shift) << shift;
  for (int i = 0; i < 3; ++i) {
    const PlaneShape shape = fileShape(i, frame.stride);
    if (!readPlane(stream_, frame.planes[static_cast<std::size_t>(i)], shape.lineBytes, shape.lines, shape.stride)) {
      throw Error(name_ + ": ends in the middle of " + where);
    }
  }
  return true;
}

} // namespace zqconvert
