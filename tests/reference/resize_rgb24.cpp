// Resizing of planar input to RGB24 by run-length tables, repeats included.
#include "reference/resize_frame.h"
#include "reference/tables.h"

#include <cstring>

namespace reference::resize {
namespace {

constexpr int32_t kPairFlag = 0x10000;

/// Chroma is read at half the luma pitch and half the width whatever the type; a line that is not wholly inside the
/// plane at that pitch gives way to the last one that is.
int chromaSample(const Frame &frame, const Plane &plane, int column, int line) {
  const int pitch = frame.stride >> 1;
  const int half = frame.width / 2;
  const int lastLine = std::max((plane.end() - half) / pitch, 0);
  return plane.data[std::min(std::min(line, lastLine) * pitch + std::min(column, half - 1), plane.end() - 1)];
}

class Writer {
public:
  Writer(const Frame &frame, const Colour &colour)
      : frame_(frame), colour_(colour), columns_(runLengthX(frame.width, frame.outWidth)) {}

  void line(int outLine, int sourceLine, int chromaLine) const {
    if (outLine >= frame_.outHeight) {
      return;
    }
    const Plane &luma = frame_.planes[0];
    uint8_t *to = frame_.out + outLine * frame_.outStride;
    Terms terms;
    for (int x = 0; x < frame_.outWidth; ++x, to += 3) {
      const int32_t w = columns_[static_cast<std::size_t>(x)];
      if ((w & 1) != 0) {
        terms = matrixTerms(colour_, chromaSample(frame_, frame_.planes[1], w >> 17, chromaLine),
                            chromaSample(frame_, frame_.planes[2], w >> 17, chromaLine));
      }
      if ((w & 2) != 0) {
        const int y = luma.at(w >> 16, sourceLine);
        to[0] = static_cast<uint8_t>(clip8(y + terms.blue));
        to[1] = static_cast<uint8_t>(clip8(y - terms.green));
        to[2] = static_cast<uint8_t>(clip8(y + terms.red));
      } else {
        std::memcpy(to, to - 3, 3);
      }
    }
  }

  /// Length and offset of a repeat suit two-byte pixels: it begins W (rounded up to whole groups of four) bytes into
  /// the line and is 2 W bytes long, so most of a repeated line is not a copy of its source. The picture's edge cuts it
  /// off.
  void repeat(int fromLine, int toLine) const {
    const int width = frame_.outWidth;
    const int begin = (width + 3) / 4 * 4;
    const int end = std::min(begin + 2 * width, 3 * width);
    if (fromLine >= frame_.outHeight || toLine >= frame_.outHeight || begin >= end) {
      return;
    }
    std::memcpy(frame_.out + toLine * frame_.outStride + begin, frame_.out + fromLine * frame_.outStride + begin,
                static_cast<std::size_t>(end - begin));
  }

private:
  const Frame &frame_;
  const Colour &colour_;
  Words columns_;
};

} // namespace

void resizeRunLength(const Frame &frame, const Colour &colour) {
  const Writer writer(frame, colour);
  const Words words = runLengthY(frame.height, frame.outHeight);
  std::size_t cursor = 0;
  // The table's memory behind its last word is zero and is read like the rest: line 0, single.
  const auto word = [&](std::size_t at) { return at < words.size() ? words[at] : 0; };
  int j = 0;
  while (j < frame.outHeight) {
    int32_t e = word(cursor++);
    int lead = 0;
    if (e < 0) {
      lead = -e;
      e = word(cursor++);
    }
    const int top = j + lead;
    const int source = e & 0xFFFF;
    const int chroma = (e >> 1) & 0x7FFF;
    const bool pair = (e & kPairFlag) != 0;
    writer.line(top, source, chroma);
    if (pair) {
      writer.line(top + 1, source + 1, chroma);
    }
    for (int i = 1; i <= lead; ++i) {
      writer.repeat(top, top - i);
    }
    j = top + (pair ? 2 : 1);
    // Later repeats copy the line below the upper one, even where only the upper one has been converted.
    if (word(cursor) < 0) {
      const int repeats = -word(cursor++);
      for (int i = 1; i <= repeats; ++i) {
        writer.repeat(top + 1, top + 1 + i);
      }
      j += repeats;
    }
  }
}

} // namespace reference::resize
