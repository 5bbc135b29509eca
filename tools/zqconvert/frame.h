// One picture in memory, and the streams that pictures come from.
#pragma once

#include "color_types.h"
#include "text.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace zqconvert {

/// Planes of a picture, arranged as the library takes them: each is a buffer of its own and holds no less than
/// planeShape() says for this type, size and stride.
struct Frame {
  int type = 0;
  int width = 0;
  int height = 0;
  int stride = 0;
  std::array<std::vector<uint8_t>, 3> planes;

  [[nodiscard]] PlaneShape shape(int index) const { return planeShape(type, width, height, stride, index); }
};

/// A black frame with tight lines, every plane of exactly the size that its shape says.
Frame makeFrame(int type, int width, int height);

/// What is the same for every frame of a stream.
struct StreamInfo {
  int type = 0;
  int width = 0;
  int height = 0;
  /// Frames a second as a fraction in the words of the YUV4MPEG2 header, and the name of its 4:2:0 siting.
  std::string rate = "25:1";
  std::string siting = "420jpeg";
};

class FrameSource {
public:
  FrameSource() = default;
  FrameSource(const FrameSource &) = delete;
  FrameSource &operator=(const FrameSource &) = delete;
  virtual ~FrameSource() = default;

  [[nodiscard]] virtual const StreamInfo &info() const = 0;
  /// Reads the next frame into `frame`, whose buffers are reused. False at the end of the stream; Error if the stream
  /// stops inside a frame.
  virtual bool next(Frame &frame) = 0;
  /// Bytes of one frame in the stream, for estimating how many there are.
  [[nodiscard]] virtual uint64_t bytesPerFrame() const = 0;
};

/// Reads `lines` lines of `lineBytes` bytes into a plane of the given stride. The buffer grows with the bytes that
/// really arrive, so that a header that lies about the size costs no memory. False if the stream ends early.
bool readPlane(std::istream &stream, std::vector<uint8_t> &plane, int lineBytes, int lines, int stride);

/// Writes the lines of a plane without the padding between them.
void writePlane(std::ostream &stream, const std::vector<uint8_t> &plane, const PlaneShape &shape);

void writeBytes(std::ostream &stream, const uint8_t *bytes, std::size_t count);

} // namespace zqconvert
