// Frames as files. Every function writes to a stream and leaves failures of the stream to the caller.
#pragma once

#include "frame.h"

#include <iosfwd>
#include <string_view>

namespace zqconvert {

enum class Format { Raw, Bmp, Png, Ppm, Y4m };

/// By the name's extension in any case; Raw for all that are not known.
Format formatOfName(std::string_view name);
/// By its own name (raw, bmp, png, ppm, y4m). Throws Error otherwise.
Format parseFormat(std::string_view text);
/// Whether a file of the format holds one picture and never more.
bool isPictureFormat(Format format);
/// Throws Error, in words that help, if the format cannot say pictures of this type.
void requireHolds(Format format, int type);

/// RGB565 as a 16-bit bitmap with bit fields, RGB24 as a 24-bit one. Lines stand top down, as in the frame, each padded
/// to a multiple of four bytes; the pixels are the frame's bytes unchanged.
void writeBmp(std::ostream &stream, const Frame &frame);
/// 8-bit RGB; the five and six bits of RGB565 are spread over the whole range.
void writePng(std::ostream &stream, const Frame &frame);
void writePpm(std::ostream &stream, const Frame &frame);
/// Planes one after the other, line after line without padding.
void writeRaw(std::ostream &stream, const Frame &frame);
/// Planar 4:2:0 only. The stream rounds chroma sizes up; the last sample or line of an odd picture stands twice.
void writeY4mHeader(std::ostream &stream, const StreamInfo &info);
void writeY4mFrame(std::ostream &stream, const Frame &frame);

} // namespace zqconvert
