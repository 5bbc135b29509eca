// Colour types by code and by the names people use, and where the samples of each lie in memory: those of the thirteen
// functions, and further ones that only zqPicture knows.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zqconvert {

enum class Family { Planar, SemiPlanar, Packed422, Rgb16, Rgb24, Rgb32, Grey };

/// Which library converts: the thirteen functions (--classic) or zqPicture.
enum class Library { Classic, Picture };

/// Codes of our own for what the thirteen functions have no code for; nobody types them.
enum : int { kRgb565Swapped = 1001, kRgb24, kRgba, kBgra, kGrey };

struct ColorTypeInfo {
  int code;
  Family family;
  int chromaShiftX; ///< log2 of the pixels that share a chroma sample along a line (and of a packed group's length).
  int chromaShiftY; ///< log2 of the lines that share a chroma line.
  const char *constant; ///< The name in the public header.
  const char *names;    ///< Short names, separated by blanks; the first one is used in messages.
  const char *layout;
};

/// All that the library converts from.
std::span<const ColorTypeInfo> colorTypes(Library library = Library::Classic);
/// Of the thirteen functions.
bool isColorType(int code);
/// The code must be one of colorTypes(Library::Picture), which has all of them.
const ColorTypeInfo &colorType(int code);
std::string shortName(int code);
/// A name in any case, the header's constant, or the code in digits. Throws Error for anything else.
int parseColorType(std::string_view text, Library library = Library::Classic);
/// The table that --list-types prints.
std::string describeColorTypes();
bool isYuv(int code); ///< Grey, which is luma alone, among them.

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
/// Whether every plane has a sample where chroma sizes are truncated.
bool holdsSamples(int code, int width, int height);
/// Throws Error, naming the picture as `what`, if some plane would hold no sample at all.
void requireSamples(int code, int width, int height, std::string_view what);

} // namespace zqconvert
