// File formats of the output, and how a file's name says which one it is.
#pragma once

#include "color_types.h"

#include <string>
#include <string_view>

namespace zqconvert {

enum class Format { Raw, Bmp, Png, Ppm, Y4m };

/// By the name's extension in any case; Raw for names without one, such as devices. Throws Error, with the known
/// extensions, for any other.
Format formatOfName(std::string_view name, Library library = Library::Classic);
bool isY4mName(std::string_view name);
/// By its own name (raw, bmp, png, ppm, y4m). Throws Error otherwise.
Format parseFormat(std::string_view text);
/// Whether a file of the format holds one picture and never more.
bool isPictureFormat(Format format);
/// Throws Error, in words that help, if the format cannot say pictures of this type, or the library not make them.
void requireHolds(Format format, int type, Library library = Library::Classic);

bool isPlanar420(int type);
/// The chroma word of a y4m stream of this type; empty for 4:2:0, whose word says the siting, and for what it cannot
/// hold.
std::string_view y4mKind(int type);

/// What a raw file's extension promises: nothing (.raw), some YUV (.yuv), or the very colour type.
struct RawName {
  enum Kind { Anything, AnyYuv, OneType };
  Kind kind = Anything;
  int type = 0; ///< With OneType.
};
RawName rawName(std::string_view fileName, Library library = Library::Classic);

} // namespace zqconvert
