#include "raw_reader.h"

#include "error.h"

#include <istream>
#include <utility>

namespace zqconvert {

RawReader::RawReader(std::istream &stream, std::string name, int type, Size size)
    : stream_(stream), name_(std::move(name)) {
  requirePlausible(size, "--size");
  requireSamples(type, size.width, size.height, name_);
  info_.type = type;
  info_.width = size.width;
  info_.height = size.height;
}

uint64_t RawReader::bytesPerFrame() const {
  uint64_t bytes = 0;
  for (int i = 0; i < planeCount(info_.type); ++i) {
    const PlaneShape shape = planeShape(info_.type, info_.width, info_.height, tightStride(info_.type, info_.width), i);
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
  frame.stride = tightStride(info_.type, info_.width);
  for (int i = 0; i < planeCount(info_.type); ++i) {
    // Only the chroma pairs of an odd width are shorter than their stride; the file holds no padding for them.
    const PlaneShape shape = frame.shape(i);
    if (!readPlane(stream_, frame.planes[static_cast<std::size_t>(i)], shape.lineBytes, shape.lines, shape.stride)) {
      throw Error(name_ + ": ends in the middle of frame " + std::to_string(frames_) + " (a frame of " +
                  toText({info_.width, info_.height}) + " " + shortName(info_.type) + " takes " +
                  std::to_string(bytesPerFrame()) + " bytes)");
    }
  }
  return true;
}

} // namespace zqconvert
