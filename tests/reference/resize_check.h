// One resizing conversion made twice, by the library and by the reference, compared byte for byte with its guards.
#pragma once

#include "reference/colour.h"
#include "support/picture.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace reference {

struct ResizeCase {
  int inType = 3;
  int outType = 30;
  int width = 0, height = 0;
  int outWidth = 0, outHeight = 0;
  uint32_t rotation = 2;
  uint32_t quality = 0;
  support::Fill fill = support::Fill::Noise;
  uint32_t seed = 1;
  int inPadding = 0; ///< bytes behind each line of the first input plane
  int outPadding = 0;
  unsigned misalign = 0;
};

/// The matrix that a frame is converted with; a custom one is given as its four doubles.
struct Matrix {
  uintptr_t index = 0;
  std::array<double, 4> custom{};
};

/// True when the written picture is outHeight pixels wide: planar input to RGB24 turns only types 0, 2, 4 and 37.
bool writesTurned(const ResizeCase &c);
support::Picture pictureFor(const ResizeCase &c);
/// The same with flat luma (or red) and every chroma sample 128; planar and semi-planar types.
support::Picture greyPicture(const ResizeCase &c, uint8_t luma);
support::Canvas canvasFor(const ResizeCase &c);
/// The record of the case, without planes and strides.
ConvertParams recordFor(const ResizeCase &c);

Colour colourFor(const Matrix &matrix);
/// Set-up, matrix, one frame; the result code of the step that failed or of the frame.
uint32_t convertWith(ConvertParams &params, const Matrix &matrix);
/// A custom matrix replaces the dither words for the whole process: writes their first values again.
void restoreDither();

/// Empty when both canvases are equal and the library answers CC_OK; else the case and what differs.
std::string compareResized(const ResizeCase &c, const Matrix &matrix = {});
/// The same for a picture of the caller's.
std::string compareResized(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix = {});
/// Empty when the frame is refused with CC_ERR_ARGUMENT and not a byte of the output has changed. Plane `missing`
/// (0..2 input, 3 output, -1 none) is null.
std::string refuses(const ResizeCase &c, int missing = -1);

/// The written picture of one conversion by the library, line after line without padding; empty if it fails.
std::vector<uint8_t> convertedBytes(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix = {});
/// The same as 16-bit words.
std::vector<uint16_t> convertedWords(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix = {});
/// Empty when every byte of the written picture comes from the library whatever stood there before.
std::string leavesUnwritten(const ResizeCase &c);

/// A fixed sequence of numbers for thinning grids of cases.
class Mixer {
public:
  explicit Mixer(uint32_t seed) : state_(seed * 2654435761U + 1U) {}
  /// A number from 0 to count - 1.
  int below(int count);
  /// Fill, seed, padding of both strides (a third of them none) and misalignment.
  void vary(ResizeCase &c);

private:
  uint32_t state_;
};

} // namespace reference
