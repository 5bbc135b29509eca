// Resizing of planar input to RGB24. Every byte of the output either comes from one luma and one chroma sample, or is
// the byte above or below it (repeated lines, of which only a part is), or is left as it was.
#include "reference/resize_frame.h"
#include "reference/tables.h"

#include <optional>

namespace reference::resize {
namespace {

/// Where an output line comes from: converted from a luma and a chroma line of the input, or a repeat of another output
/// line.
struct Origin {
  enum class Kind { Untouched, Converted, Repeated };
  Kind kind = Kind::Untouched;
  int line = 0; ///< luma line of the input, or line of the output
  int chroma = 0;
};

/// One or two converted lines with the repeats above and below them.
struct Block {
  int first; ///< output line that it begins with
  int above; ///< repeats of the first converted line
  int source;
  bool isPair;
  int below; ///< repeats of the second
  [[nodiscard]] int converted() const { return first + above; }
  [[nodiscard]] int end() const { return first + above + (isPair ? 2 : 1) + below; }
};

/// Of the repeats between two converted lines, the first instruction belongs to the line before it and only a second
/// one to the line behind. Behind the instructions the table reads as line 0 for ever.
std::vector<Block> blocksOf(int source, int positions) {
  using Kind = LineInstruction::Kind;
  const std::vector<LineInstruction> list = lineInstructions(source, positions);
  const auto repeatsAt = [&](std::size_t i) {
    return i < list.size() && list[i].kind == Kind::Repeat ? list[i].number : 0;
  };
  std::vector<Block> blocks;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (list[i].kind != Kind::Repeat) {
      const bool leads = i == 1 || (i > 1 && repeatsAt(i - 2) > 0);
      const int first = blocks.empty() ? 0 : blocks.back().end();
      blocks.push_back(
          {first, leads ? repeatsAt(i - 1) : 0, list[i].number, list[i].kind == Kind::Pair, repeatsAt(i + 1)});
    }
  }
  while (blocks.back().end() < positions) {
    blocks.push_back({blocks.back().end(), 0, 0, false, 0});
  }
  return blocks;
}

class Origins {
public:
  Origins(int source, int positions) : lines_(static_cast<std::size_t>(positions)) {
    for (const Block &block : blocksOf(source, positions)) {
      if (block.first >= positions) {
        break;
      }
      place(block);
    }
  }
  [[nodiscard]] const Origin &of(int line) const { return lines_[static_cast<std::size_t>(line)]; }

private:
  void place(const Block &block) {
    // Both lines of a pair share the chroma of the first.
    const int chroma = block.source / 2;
    const int upper = block.converted();
    set(upper, {Origin::Kind::Converted, block.source, chroma});
    if (block.isPair) {
      set(upper + 1, {Origin::Kind::Converted, block.source + 1, chroma});
    }
    for (int line = block.first; line < upper; ++line) {
      repeat(upper, line);
    }
    // These are made from the line below the upper one, also where there is no second converted line: then from what
    // that line held, and one line further down, where the next block begins.
    for (int i = 0; i < block.below; ++i) {
      repeat(upper + 1, upper + 2 + i);
    }
  }
  void repeat(int from, int to) {
    if (isInside(from)) {
      set(to, {Origin::Kind::Repeated, from, 0});
    }
  }
  void set(int line, const Origin &origin) {
    if (isInside(line)) {
      lines_[static_cast<std::size_t>(line)] = origin;
    }
  }
  [[nodiscard]] bool isInside(int line) const { return line < static_cast<int>(lines_.size()); }

  std::vector<Origin> lines_;
};

/// Bytes of a repeated line that are copied. Their number and their place suit pixels of two bytes: twice the width,
/// beginning as many bytes into the line as it has pixels in whole groups of four. The picture's edge cuts them off.
bool isRepeated(const Frame &frame, int byte) {
  const int begin = (frame.outWidth + 3) / 4 * 4;
  return byte >= begin && byte < std::min(begin + 2 * frame.outWidth, 3 * frame.outWidth);
}

class Picture {
public:
  Picture(const Frame &frame, const Colour &colour)
      : frame_(frame), colour_(colour), columns_(nearest(frame.width, frame.outWidth)),
        lines_(frame.height, frame.outHeight) {}

  /// Byte 0, 1 or 2 (blue, green, red) of an output pixel; none where it stays as it is.
  [[nodiscard]] std::optional<uint8_t> byteAt(int x, int y, int byte) const {
    const Origin &origin = lines_.of(y);
    if (origin.kind == Origin::Kind::Converted) {
      return convertedByte(x, origin, byte);
    }
    if (origin.kind == Origin::Kind::Untouched || !isRepeated(frame_, 3 * x + byte)) {
      return std::nullopt;
    }
    const Origin &repeated = lines_.of(origin.line);
    return repeated.kind == Origin::Kind::Converted ? convertedByte(x, repeated, byte) : *place(x, origin.line, byte);
  }
  [[nodiscard]] uint8_t *place(int x, int y, int byte) const {
    return frame_.out + static_cast<std::ptrdiff_t>(y) * frame_.outStride + 3 * static_cast<std::ptrdiff_t>(x) + byte;
  }

private:
  /// Columns by nearest index, and for chroma half of it.
  [[nodiscard]] uint8_t convertedByte(int x, const Origin &origin, int byte) const {
    const int column = columns_[static_cast<std::size_t>(x)];
    const auto sample = [&](const Plane &plane) {
      return atHalfPitch(plane, frame_.stride, frame_.width, column / 2, origin.chroma);
    };
    const Chroma chroma{sample(frame_.planes[1]), sample(frame_.planes[2])};
    const Components pixel = matrix24(frame_.planes[0].at(column, origin.line), chroma, colour_);
    const std::array<int, 3> bgr{pixel.blue, pixel.green, pixel.red};
    return static_cast<uint8_t>(bgr.at(static_cast<std::size_t>(byte)));
  }

  const Frame &frame_;
  const Colour &colour_;
  Words columns_;
  Origins lines_;
};

} // namespace

void resizeRunLength(const Frame &frame, const Colour &colour) {
  const Picture picture(frame, colour);
  for (int y = 0; y < frame.outHeight; ++y) {
    for (int x = 0; x < frame.outWidth; ++x) {
      for (int byte = 0; byte < 3; ++byte) {
        if (const std::optional<uint8_t> value = picture.byteAt(x, y, byte)) {
          *picture.place(x, y, byte) = *value;
        }
      }
    }
  }
}

} // namespace reference::resize
