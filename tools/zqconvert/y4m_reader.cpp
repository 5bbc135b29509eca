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
  Siting columns;
};

constexpr auto kChromaTags = std::to_array<ChromaTag>({
    {"420", COLOR_YUV420_PLANAR, Siting::Centre},
    {"420jpeg", COLOR_YUV420_PLANAR, Siting::Centre},
    {"420mpeg2", COLOR_YUV420_PLANAR, Siting::Left},
    {"420paldv", COLOR_YUV420_PLANAR, Siting::Left},
    {"422", COLOR_YUV422_PLANAR, Siting::Left},
    {"444", COLOR_YUV444_PLANAR, Siting::Unknown},
    {"440", COLOR_YUV440_PLANAR, Siting::Unknown},
    {"411", COLOR_YUV411_PLANAR, Siting::Left},
    {"mono", kGrey, Siting::Unknown},
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

/// Any of the words that the format knows; '?' for all others.
char interlacingOf(std::string_view value) {
  const bool known = value.size() == 1 && std::string_view("ptbm").find(value.front()) != std::string_view::npos;
  return known ? value.front() : '?';
}

constexpr std::string_view kSampling = "YSCSS=";
constexpr std::string_view kRange = "COLORRANGE=";

Range rangeOf(std::string_view value) {
  const std::string lower = lowerCase(value);
  return lower == "full" ? Range::Full : lower == "limited" ? Range::Limited : Range::Unknown;
}

} // namespace

Y4mReader::Y4mReader(std::istream &stream, std::string name, Library library)
    : stream_(stream), name_(std::move(name)), library_(library) {
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
  std::optional<std::string> chroma;
  std::optional<std::string> sampling; // an older way to say the chroma kind, used where the newer one is missing
  info_.interlacing = '?';
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
    case 'I':
      info_.interlacing = interlacingOf(value);
      break;
    case 'A':
      info_.aspect = isRate(value) ? value : "0:0";
      break;
    case 'X':
      if (value.starts_with(kSampling)) {
        sampling = lowerCase(value.substr(kSampling.size()));
      } else if (value.starts_with(kRange)) {
        info_.range = rangeOf(value.substr(kRange.size()));
      }
      info_.extras.push_back(word);
      break;
    default:
      break;
    }
  }
  if (!width || !height) {
    throw Error(name_ + ": the header gives no " + (width ? "height" : "width"));
  }
  info_.width = *width;
  info_.height = *height;
  requirePlausible({info_.width, info_.height}, name_);
  parseChroma(chroma.value_or(sampling.value_or("420jpeg")));
  if (library_ == Library::Classic) {
    requireSamples(info_.type, info_.width, info_.height, name_);
  }
}

void Y4mReader::parseChroma(const std::string &tag) {
  const bool greyToo = library_ == Library::Picture;
  for (const ChromaTag &known : kChromaTags) {
    if (tag == known.tag && (known.type != kGrey || greyToo)) {
      info_.type = known.type;
      info_.columns = known.columns;
      if (known.type == COLOR_YUV420_PLANAR) {
        info_.siting = tag;
      }
      return;
    }
  }
  throw Error(name_ + ": chroma kind 'C" + printable(tag) +
              "' is not taken (8-bit 420, 420jpeg, 420mpeg2, 420paldv, 422, 444, 440" +
              (greyToo ? ", 411 and mono are)" : " and 411 are)"));
}

uint64_t Y4mReader::bytesPerFrame() const {
  uint64_t bytes = kFrame.size() + 1;
  for (int i = 0; i < planes(); ++i) {
    const PlaneShape shape = wholeShape(info_.type, info_.width, info_.height, info_.width, i);
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
  if (!line && stream_.eof()) {
    throw Truncated(name_ + ": ends in the header of " + where);
  }
  if (!line || !line->starts_with(kFrame) || (line->size() > kFrame.size() && (*line)[kFrame.size()] != ' ')) {
    throw Error(name_ + ": no FRAME line where " + where + " should begin");
  }
  frame.tags = line->substr(kFrame.size());
  frame.type = info_.type;
  frame.width = info_.width;
  frame.height = info_.height;
  // The library divides the first plane's stride to get the chroma's: the lines of odd pictures are padded until the
  // quotient has room for the last sample.
  frame.stride = roomyStride(info_.type, info_.width);
  for (int i = 0; i < planes(); ++i) {
    const PlaneShape shape = frame.whole(i);
    std::vector<uint8_t> &plane = frame.planes.at(static_cast<std::size_t>(i));
    if (!readPlane(stream_, plane, shape.lineBytes, shape.lines, shape.stride)) {
      throw Truncated(name_ + ": ends in the middle of " + where);
    }
    extendPlane(plane, shape, shape, 1);
  }
  return true;
}

} // namespace zqconvert
