// Frames without a header: plane after plane, line after line, nothing between them.
#pragma once

#include "frame.h"

#include <iosfwd>
#include <string>

namespace zqconvert {

class RawReader final : public FrameSource {
public:
  /// `name` stands for the stream in messages. Throws Error if no such picture can be.
  RawReader(std::istream &stream, std::string name, int type, Size size);

  [[nodiscard]] const StreamInfo &info() const override { return info_; }
  bool next(Frame &frame) override;
  [[nodiscard]] uint64_t bytesPerFrame() const override;

private:
  std::istream &stream_;
  std::string name_;
  StreamInfo info_;
  int frames_ = 0;
};

} // namespace zqconvert
