#include "writers.h"
#include "zqColorConversion.h"

#include <array>
#include <ostream>

namespace zqconvert {

void writeY4mHeader(std::ostream &stream, const StreamInfo &info) {
  stream << "YUV4MPEG2 W" << info.width << " H" << info.height << " F" << info.rate << " I" << info.interlacing << " A"
         << info.aspect << " C" << (y4mKind(info.type).empty() ? info.siting : y4mKind(info.type));
  for (const std::string &word : info.extras) {
    stream << " " << word;
  }
  stream << "\n";
}

void writeY4mFrame(std::ostream &stream, const Frame &frame) {
  stream << "FRAME" << frame.tags << "\n";
  // The stream always has U first.
  const bool vFirst = frame.type == COLOR_YVU420_PLANAR || frame.type == COLOR_YVU422_PLANAR;
  for (const int i : vFirst ? std::array{0, 2, 1} : std::array{0, 1, 2}) {
    if (i < planeCount(frame.type)) {
      writePlane(stream, frame, i);
    }
  }
}

} // namespace zqconvert
