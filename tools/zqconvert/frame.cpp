#include "frame.h"

#include "error.h"

#include <algorithm>
#include <istream>
#include <ostream>

namespace zqconvert {

namespace {

bool readBytes(std::istream &stream, uint8_t *bytes, std::size_t count) {
  stream.read(reinterpret_cast<char *>(bytes), static_cast<std::streamsize>(count));
  return static_cast<std::size_t>(stream.gcount()) == count;
}

/// Bytes that belong together: what a plane of pixels or pairs is extended by.
int unitOf(const Frame &frame, int index) {
  return colorType(frame.type).family == Family::SemiPlanar && index > 0 ? 2 : 1;
}

} // namespace

Frame makeFrame(int type, int width, int height) {
  Frame frame{type, width, height, tightStride(type, width), {}, {}, false};
  for (int i = 0; i < planeCount(type); ++i) {
    frame.planes[static_cast<std::size_t>(i)].assign(frame.shape(i).bytes(), 0);
  }
  return frame;
}

Frame makeRoomyFrame(int type, int width, int height) {
  Frame frame{type, width, height, roomyStride(type, width), {}, {}, false};
  for (int i = 0; i < planeCount(type); ++i) {
    const PlaneShape shape = frame.whole(i);
    frame.planes[static_cast<std::size_t>(i)].assign(
        static_cast<std::size_t>(shape.stride) * static_cast<std::size_t>(shape.lines), 0);
  }
  return frame;
}

void requireInside(const Rectangle &part, Size picture) {
  if (part.width == 0 || part.height == 0) {
    throw Error("--crop: a part of " + toText({part.width, part.height}) + " has no pixels");
  }
  if (part.width < 1 || part.height < 1 || part.x < 0 || part.y < 0 || part.width > picture.width - part.x ||
      part.height > picture.height - part.y) {
    throw Error("--crop reaches outside the picture of " + toText(picture));
  }
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

void extendPlane(std::vector<uint8_t> &plane, const PlaneShape &given, const PlaneShape &wanted, int unit) {
  const auto pitch = static_cast<std::size_t>(wanted.stride);
  const auto length = static_cast<std::size_t>(given.lineBytes);
  const auto step = static_cast<std::size_t>(unit);
  plane.resize(pitch * static_cast<std::size_t>(wanted.lines));
  for (std::size_t line = 0; line < static_cast<std::size_t>(given.lines); ++line) {
    uint8_t *at = plane.data() + line * pitch;
    for (std::size_t x = length; x < pitch; ++x) {
      at[x] = at[x - step];
    }
  }
  for (auto line = static_cast<std::size_t>(given.lines); line < static_cast<std::size_t>(wanted.lines); ++line) {
    std::copy_n(plane.data() + (line - 1) * pitch, pitch, plane.data() + line * pitch);
  }
}

void writePlane(std::ostream &stream, const Frame &frame, int index) {
  const PlaneShape given = frame.wholeChroma ? frame.whole(index) : frame.shape(index);
  const PlaneShape wanted = frame.whole(index);
  const auto length = static_cast<std::size_t>(given.lineBytes);
  const auto unit = static_cast<std::size_t>(unitOf(frame, index));
  for (int line = 0; line < wanted.lines; ++line) {
    const auto from = static_cast<std::size_t>(std::min(line, given.lines - 1));
    const uint8_t *at =
        frame.planes[static_cast<std::size_t>(index)].data() + from * static_cast<std::size_t>(given.stride);
    writeBytes(stream, at, length);
    for (auto x = length; x < static_cast<std::size_t>(wanted.lineBytes); x += unit) {
      writeBytes(stream, at + length - unit, unit);
    }
  }
}

} // namespace zqconvert
