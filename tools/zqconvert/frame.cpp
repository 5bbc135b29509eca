#include "frame.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace zqconvert {

namespace {

bool readBytes(std::istream &stream, uint8_t *bytes, std::size_t count) {
  stream.read(reinterpret_cast<char *>(bytes), static_cast<std::streamsize>(count));
  return static_cast<std::size_t>(stream.gcount()) == count;
}

} // namespace

Frame makeFrame(int type, int width, int height) {
  Frame frame{type, width, height, tightStride(type, width), {}};
  for (int i = 0; i < planeCount(type); ++i) {
    frame.planes[static_cast<std::size_t>(i)].assign(frame.shape(i).bytes(), 0);
  }
  return frame;
}

bool readPlane(std::istream &stream, std::vector<uint8_t> &plane, int lineBytes, int lines, int stride) {
  constexpr std::size_t kStep = std::size_t{1} << 20;
  const auto pitch = static_cast<std::size_t>(stride);
  const auto length = static_cast<std::size_t>(lineBytes);
  const std::size_t batch = std::max<std::size_t>(1, kStep / std::max<std::size_t>(1, pitch));
  for (std::size_t line = 0; line < static_cast<std::size_t>(lines); line += batch) {
    const std::size_t end = std::min(line + batch, static_cast<std::size_t>(lines));
    if (plane.size() < end * pitch) {
      plane.resize(end * pitch);
    }
    uint8_t *at = plane.data() + line * pitch;
    if (length == pitch) {
      if (!readBytes(stream, at, (end - line) * pitch)) {
        return false;
      }
      continue;
    }
    for (std::size_t i = line; i < end; ++i, at += pitch) {
      if (!readBytes(stream, at, length)) {
        return false;
      }
    }
  }
  return true;
}

void writeBytes(std::ostream &stream, const uint8_t *bytes, std::size_t count) {
  stream.write(reinterpret_cast<const char *>(bytes), static_cast<std::streamsize>(count));
}

void writePlane(std::ostream &stream, const std::vector<uint8_t> &plane, const PlaneShape &shape) {
  for (int line = 0; line < shape.lines; ++line) {
    writeBytes(stream, plane.data() + static_cast<std::size_t>(line) * static_cast<std::size_t>(shape.stride),
               static_cast<std::size_t>(shape.lineBytes));
  }
}

} // namespace zqconvert
