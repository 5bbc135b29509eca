// Frames without a header: plane after plane, line after line, nothing between them.
#pragma once

#include "frame.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace zqconvert {

/// What stands in a raw file: mostly the planes of a colour type, in its order.
struct RawLayout {
  // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): every colour type is a layout.
  RawLayout(int colorTypeCode);

  int type;
  int filePlanes;
  std::array<int, 3> order{0, 1, 2}; ///< Which plane of the file becomes which plane of the frame.
  Range range = Range::Unknown;
  std::string name;
  Library library = Library::Classic; ///< The thirteen functions refuse pictures smaller than a chroma sample.
};

/// A colour type's name, or one of the further names that raw files are known by (gbrp, gray, yuvj420p and the like).
/// Throws Error for anything else.
RawLayout parseRawLayout(std::string_view text, Library library = Library::Classic);
/// Those further names, one line each, for --list-types.
std::string describeRawLayouts(Library library = Library::Classic);
/// The same without explanations.
std::vector<std::string> rawLayoutNames(Library library = Library::Classic);

class RawReader final : public FrameSource {
public:
  /// `name` stands for the stream in messages, `bytes` is its length where that is known. Chroma planes of odd sides
  /// are rounded up, unless the length fits only frames that round them down. Throws Error if no such picture can be.
  RawReader(std::istream &stream, std::string name, RawLayout layout, Size size,
            std::optional<uint64_t> bytes = std::nullopt);

  [[nodiscard]] const StreamInfo &info() const override { return info_; }
  bool next(Frame &frame) override;
  [[nodiscard]] uint64_t bytesPerFrame() const override { return bytesPerFrame(roundedDown_); }

private:
  [[nodiscard]] PlaneShape fileShape(int index, bool roundedDown) const;
  [[nodiscard]] uint64_t bytesPerFrame(bool roundedDown) const;

  std::istream &stream_;
  std::string name_;
  RawLayout layout_;
  StreamInfo info_;
  bool roundedDown_ = false;
  uint64_t frames_ = 0;
};

} // namespace zqconvert
