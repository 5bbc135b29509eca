// Frames as files. Every function writes to a stream and leaves failures of the stream to the caller.
#pragma once

#include "formats.h"
#include "frame.h"

#include <iosfwd>

namespace zqconvert {

/// RGB565 as a 16-bit bitmap with bit fields, RGBA as a 32-bit one, everything else as a 24-bit one. Lines stand top
/// down, as in the frame, each padded to a multiple of four bytes; pixels that are in the file's order already are the
/// frame's bytes unchanged.
void writeBmp(std::ostream &stream, const Frame &frame);
/// 8-bit RGB, with alpha where the frame has it, or grey; the five and six bits of RGB565 are spread over the whole
/// range.
void writePng(std::ostream &stream, const Frame &frame);
void writePpm(std::ostream &stream, const Frame &frame);
/// Planes one after the other, line after line without padding, chroma sizes rounded up.
void writeRaw(std::ostream &stream, const Frame &frame);
/// Planar 4:2:0, 4:2:2, 4:4:4 and grey only.
void writeY4mHeader(std::ostream &stream, const StreamInfo &info);
void writeY4mFrame(std::ostream &stream, const Frame &frame);

} // namespace zqconvert
