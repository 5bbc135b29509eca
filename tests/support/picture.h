// Pictures and buffers for tests: planes of exactly the size that a colour type implies, filled by name, and output
// buffers whose every byte, guards included, is compared.
#pragma once

#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace support {

enum class Fill { Noise, Ramp, Extremes, Flat };

/// Bytes of one line and number of lines of a plane. Sizes that nobody has memory for are counted in 64 bits.
template <class Number>
struct BasicPlaneShape {
  Number lineBytes = 0;
  Number lines = 0;
  Number stride = 0;
  /// Bytes from the first to the last sample; the padding behind the last line does not belong to the plane.
  [[nodiscard]] std::size_t bytes() const {
    const bool empty = lines <= 0 || lineBytes <= 0;
    return empty ? 0
                 : static_cast<std::size_t>(lines - 1) * static_cast<std::size_t>(stride) +
                       static_cast<std::size_t>(lineBytes);
  }
};
using PlaneShape = BasicPlaneShape<int>;

bool isSemiPlanar(int type);
bool isPacked422(int type);
bool isRgb16(int type);
int planeCount(int type);

/// Smallest stride of the first plane: the bytes of one line (packed lines of odd width hold whole groups).
template <class Number>
Number tightStride(int type, Number width);

/// Whether semi-planar lines of odd width end with a chroma pair for their lone last column. Pictures that keep their
/// type have it; conversions to other types take width / 2 pairs, and so do turned pictures.
enum class LastPair { Dropped, Kept };
LastPair lastInputPair(const ConvertParams &p);
LastPair lastOutputPair(const ConvertParams &p);

/// Shape of plane `index` of a w x h picture whose first plane has the given stride. A last pair that is kept is whole
/// where the stride has room for its second byte; else the line ends with its first.
template <class Number>
BasicPlaneShape<Number> planeShape(int type, Number width, Number height, Number stride, int index,
                                   LastPair lastPair = LastPair::Dropped);

/// Heap block of exactly `bytes` bytes, starting `misalign` bytes (0..15) past the allocator's
/// boundary and ending with its allocation, so that the address sanitizer sees the first byte read or
/// written past its end.
class Block {
public:
  Block() = default;
  explicit Block(std::size_t bytes, unsigned misalign = 0);
  [[nodiscard]] uint8_t *data() { return store_.data() + offset_; }
  [[nodiscard]] const uint8_t *data() const { return store_.data() + offset_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  Block(const Block &other);
  Block &operator=(const Block &other);
  Block(Block &&) noexcept = default;
  Block &operator=(Block &&) noexcept = default;
  ~Block() = default;

private:
  std::vector<uint8_t> store_;
  std::size_t offset_ = 0;
  std::size_t size_ = 0;
};

void fill(uint8_t *bytes, std::size_t count, Fill kind, uint32_t seed);

/// An input picture whose planes live in blocks of exactly their size.
class Picture {
public:
  Picture(int type, int width, int height, int stride, Fill kind, uint32_t seed, unsigned misalign = 0,
          LastPair lastPair = LastPair::Dropped);
  [[nodiscard]] const uint8_t *plane(int index) const;
  [[nodiscard]] uint8_t *plane(int index);
  /// Writes type, sizes, stride and planes into the input half of a record.
  void describe(ConvertParams &params) const;
  int type, width, height, stride;

private:
  std::array<Block, 3> planes_;
};

/// Output buffers with guard bytes in front of and behind every plane. Two canvases made with the same arguments hold
/// the same bytes; convert into one, let the reference write into the other, and compare().
class Canvas {
public:
  /// One shape a plane; a plane spans lines * stride bytes (the half turn of wide strides needs the last padding).
  explicit Canvas(const std::vector<PlaneShape> &shapes, unsigned misalign = 0);
  /// Canvas for an output picture of a type; width and height are those of the written picture (after a turn).
  static Canvas forPicture(int type, int width, int height, int stride, unsigned misalign = 0);
  [[nodiscard]] uint8_t *plane(int index);
  void describe(ConvertParams &params);
  /// Empty when all bytes are equal; otherwise names the first differing plane, line, byte and both values, and counts
  /// the differing bytes.
  [[nodiscard]] std::string difference(const Canvas &expected) const;
  /// Empty when not a single byte has changed since construction.
  [[nodiscard]] std::string touched() const;

private:
  static constexpr std::size_t kGuard = 96;
  std::vector<PlaneShape> shapes_;
  std::vector<Block> blocks_;
};

/// A record with everything zero except rotation, which is ROTATION_NONE.
ConvertParams blankParams();

/// Sets up a handle for the record, converts one frame and releases the handle. Set-up's code is returned if it fails.
uint32_t convertOnce(ConvertParams &params);

} // namespace support
