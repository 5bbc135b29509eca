// One same-size conversion as a test asks for it: run through the public interface and, into a second canvas, through
// the model.
#pragma once

#include "reference/colour.h"
#include "support/picture.h"
#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace reference {

/// The matrix that is selected before a conversion.
struct MatrixChoice {
  enum class Kind { Default, Entry, Custom };
  Kind kind = Kind::Default;
  uint32_t entry = 0;
  std::array<double, 4> custom{};

  static MatrixChoice entryOf(uint32_t index) { return {Kind::Entry, index, {}}; }
  static MatrixChoice customOf(const std::array<double, 4> &values) { return {Kind::Custom, 3, values}; }
  /// What the library's colour state has to be afterwards.
  [[nodiscard]] Colour colour() const;
  uint32_t select(ConvertContext *handle) const;
};

/// Sets a handle up, selects the matrix (making a handle resets it), converts one frame and releases the handle.
uint32_t convertWith(ConvertParams &params, const MatrixChoice &matrix);

/// Writes the initial dither words back. A custom matrix overwrites them for the rest of the process; every test that
/// selects one holds one of these.
class DitherRestorer {
public:
  DitherRestorer() = default;
  DitherRestorer(const DitherRestorer &) = delete;
  DitherRestorer &operator=(const DitherRestorer &) = delete;
  ~DitherRestorer();
};

struct DirectCase {
  int inType = COLOR_YUV420_PLANAR;
  int outType = COLOR_RGB565;
  int width = 16;
  int height = 16;
  int rotation = ROTATION_NONE;
  int inExtra = 0;  ///< Bytes by which the input stride exceeds the tight one.
  int outExtra = 0; ///< The same for the output.
  unsigned misalign = 0;
  support::Fill fill = support::Fill::Noise;
  uint32_t seed = 1;
  MatrixChoice matrix{};
  uint32_t isResize = 0; ///< 1 only for routes that take the flag and yet do not scale.
  int outWidth = 0;      ///< 0: the input's.
  int outHeight = 0;

  [[nodiscard]] std::string describe() const;
};

/// Whether every plane of the picture holds at least one sample.
bool holdsSamples(int type, int width, int height);

/// Width and height of the written picture for a record.
struct Size {
  int width = 0;
  int height = 0;
};
Size writtenSize(const ConvertParams &params);

/// A picture converted by the library.
struct Converted {
  uint32_t code = CC_OK;
  support::Canvas canvas;
  int stride = 0;

  uint16_t word(int column, int line);
  std::array<int, 3> bgr(int column, int line);
  uint8_t byte(int plane, int offset) { return canvas.plane(plane)[offset]; }
};

/// Converts a picture at its own size with the library.
Converted convertPicture(const support::Picture &picture, int outType, int rotation = ROTATION_NONE, int outExtra = 0,
                         const MatrixChoice &matrix = {});

/// Start of a line of a picture's or canvas's plane.
template <typename T>
auto *lineOf(T &planes, int plane, int line, int pitch) {
  return planes.plane(plane) + static_cast<std::ptrdiff_t>(line) * pitch;
}

struct Comparison {
  uint32_t code = CC_OK;
  std::string difference;
};

/// Converts the case's picture with the library and with the model and compares every byte, guards included.
Comparison compareDirect(const DirectCase &c);
/// The same for a picture of the caller's; type, size and input stride of the case are the picture's.
Comparison compareDirect(const DirectCase &c, const support::Picture &picture);

/// A picture of one colour; y, u, v are red, green, blue for planar RGB and RGB24.
support::Picture flatPicture(int type, int width, int height, int y, int u, int v);

/// What a sweep's samples run through: all 65536 pairs of luma and chroma with U and V equal (for red and blue), or all
/// 256 luma values against 17x17 chroma pairs (for green).
enum class Sweep { Pairs, Greens };

/// A sweep laid out in cells of 2x2 equal pixels (so that every value meets every dither position), or with `cell` 1
/// in cells of 2x2 pixels that share chroma but not luma. The picture is `width` pixels wide, even, and as high as the
/// sweep needs. Types 0, 1, 3 and packed 4:2:2.
support::Picture sweepPicture(Sweep sweep, int type, int width, int cell);

} // namespace reference
