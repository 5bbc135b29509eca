#include "writers.h"
#include "zqColorConversion.h"

#include <array>
#include <ostream>

namespace zqconvert {

void writeY4mHeader(std::ostream &stream, const StreamInfo &info) {
  stream << "YUV4MPEG2 W" << info.width << " H" << info.height << " F" << info.rate << " I" << info.interlacing << " A"
         << info.aspect << " C" << info.siting;
  for (const std::string &word : info.extras) {
    stream << " " << word;
  }
  stream << "\n";
}

void writeY4mFrame(std::ostream &stream, const Frame &frame) {
  stream << "FRAME" << frame.tags << "\n";
  // The stream always has U first.
  const bool vFirst = frame.type == COLOR_YVU420_PLANAR;
  for (const int i : vFirst ? std::array{0, 2, 1} : std::array{0, 1, 2}) {
    writePlane(stream, frame, i);
  }
}

} // namespace zqconvert
