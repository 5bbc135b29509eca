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
  std::string tags;         ///< What a YUV4MPEG2 stream says of this frame alone, a blank in front of every word.
  bool wholeChroma = false; ///< The chroma of odd sides is there to the last sample: planes are as whole() says.

  [[nodiscard]] PlaneShape shape(int index) const { return planeShape(type, width, height, stride, index); }
  [[nodiscard]] PlaneShape whole(int index) const { return wholeShape(type, width, height, stride, index); }
};

/// A black frame with tight lines, every plane of exactly the size that its shape says.
Frame makeFrame(int type, int width, int height);
/// A black frame with room for the chroma of odd sides, as the readers make it.
Frame makeRoomyFrame(int type, int width, int height);

struct Rectangle {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

/// Throws Error, in the words of --crop, unless the part has pixels and lies in the picture.
void requireInside(const Rectangle &part, Size picture);

enum class Range { Unknown, Limited, Full };
/// Of chroma columns: on the first of the pixels that share a sample, or midway between them.
enum class Siting { Unknown, Left, Centre };

/// What is the same for every frame of a stream.
struct StreamInfo {
  int type = 0;
  int width = 0;
  int height = 0;
  /// In the words of the YUV4MPEG2 header: frames a second as a fraction, the name of the 4:2:0 siting, the order of
  /// fields, the shape of a pixel, and the X words.
  std::string rate = "25:1";
  std::string siting = "420jpeg";
  char interlacing = 'p';
  std::string aspect = "0:0";
  std::vector<std::string> extras = {};
  bool frameTags = true;        ///< What a frame's own tags say of its lines holds.
  Range range = Range::Unknown; ///< What the stream says of its luma.
  Siting columns = Siting::Unknown;
};

class FrameSource {
public:
  FrameSource() = default;
  FrameSource(const FrameSource &) = delete;
  FrameSource &operator=(const FrameSource &) = delete;
  virtual ~FrameSource() = default;

  [[nodiscard]] virtual const StreamInfo &info() const = 0;
  /// Reads the next frame into `frame`, whose buffers are reused. False at the end of the stream; Truncated if the
  /// stream stops inside a frame; Error for other damage.
  virtual bool next(Frame &frame) = 0;
  /// Bytes of one frame in the stream, for estimating how many there are.
  [[nodiscard]] virtual uint64_t bytesPerFrame() const = 0;
};

/// Reads `lines` lines of `lineBytes` bytes into a plane of the given stride. The buffer grows with the bytes that
/// really arrive, so that a header that lies about the size costs no memory. False if the stream ends early.
bool readPlane(std::istream &stream, std::vector<uint8_t> &plane, int lineBytes, int lines, int stride);

/// Gives a plane whose samples are `given` the shape `wanted`, of the same stride: the last `unit` bytes of each line,
/// and the last line, are repeated, to the line's end in memory too. Whatever filters reach is then part of the
/// picture.
void extendPlane(std::vector<uint8_t> &plane, const PlaneShape &given, const PlaneShape &wanted, int unit);

/// Writes plane `index` without the padding between lines, its chroma rounded up as files have it. The library leaves
/// the last chroma sample and line of odd sides alone; the one before stands twice.
void writePlane(std::ostream &stream, const Frame &frame, int index);

void writeBytes(std::ostream &stream, const uint8_t *bytes, std::size_t count);

} // namespace zqconvert
