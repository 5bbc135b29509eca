// The library's colour types by code and by the names people use, and where the samples of each lie in memory.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zqconvert {

enum class Family { Planar, SemiPlanar, Packed422, Rgb16, Rgb24 };

struct ColorTypeInfo {
  int code;
  Family family;
  int chromaShiftX; ///< log2 of the pixels that share a chroma sample along a line (and of a packed group's length).
  int chromaShiftY; ///< log2 of the lines that share a chroma line.
  const char *constant; ///< The name in the public header.
  const char *names;    ///< Short names, separated by blanks; the first one is used in messages.
  const char *layout;
};

std::span<const ColorTypeInfo> colorTypes();
bool isColorType(int code);
/// The code must be one of colorTypes().
const ColorTypeInfo &colorType(int code);
std::string shortName(int code);
/// A name in any case, the header's constant, or the code in digits. Throws Error for anything else.
int parseColorType(std::string_view text);
/// The table that --list-types prints.
std::string describeColorTypes();

struct PlaneShape {
  int lineBytes = 0;
  int lines = 0;
  int stride = 0;
  /// Bytes from the plane's first sample to its last.
  [[nodiscard]] std::size_t bytes() const;
};

int planeCount(int code);
/// Smallest stride of the first plane: the bytes of one line. Packed lines of odd width hold whole groups.
int tightStride(int code, int width);
/// Shape of plane `index` as the library reads and writes it, chroma sizes truncated.
PlaneShape planeShape(int code, int width, int height, int stride, int index);
int roundedUp(int value, int shift); ///< value / 2^shift, rounded up.
/// Smallest stride of the first plane with which no chroma line is cut: the library divides it to get theirs.
int roomyStride(int code, int width);
/// Shape of plane `index` as files have it, chroma sizes rounded up. Fits into frames of roomyStride().
PlaneShape wholeShape(int code, int width, int height, int stride, int index);
/// Throws Error, naming the picture as `what`, if some plane would hold no sample at all.
void requireSamples(int code, int width, int height, std::string_view what);

} // namespace zqconvert
