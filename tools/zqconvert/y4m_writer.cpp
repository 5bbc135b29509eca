#include "writers.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <ostream>

namespace zqconvert {

namespace {

void writeRoundedUp(std::ostream &stream, const std::vector<uint8_t> &plane, const PlaneShape &shape, bool oddWidth,
                    bool oddHeight) {
  for (int line = 0; line < shape.lines + (oddHeight ? 1 : 0); ++line) {
    const auto from = static_cast<std::size_t>(std::min(line, shape.lines - 1));
    const uint8_t *at = plane.data() + from * static_cast<std::size_t>(shape.stride);
    const auto count = static_cast<std::size_t>(shape.lineBytes);
    writeBytes(stream, at, count);
    writeBytes(stream, at + count - 1, oddWidth ? 1 : 0);
  }
}

} // namespace

void writeY4mHeader(std::ostream &stream, const StreamInfo &info) {
  stream << "YUV4MPEG2 W" << info.width << " H" << info.height << " F" << info.rate << " Ip A0:0 C" << info.siting
         << "\n";
}

void writeY4mFrame(std::ostream &stream, const Frame &frame) {
  stream << "FRAME\n";
  writePlane(stream, frame.planes[0], frame.shape(0));
  // The stream always has U first.
  const bool vFirst = frame.type == COLOR_YVU420_PLANAR;
  for (const int i : vFirst ? std::array{2, 1} : std::array{1, 2}) {
    writeRoundedUp(stream, frame.planes[static_cast<std::size_t>(i)], frame.shape(i), frame.width % 2 != 0,
                   frame.height % 2 != 0);
  }
}

} // namespace zqconvert
