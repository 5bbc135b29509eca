// YUV4MPEG2 streams: a header line, then frames of planar 8-bit YUV.
#pragma once

#include "frame.h"

#include <iosfwd>
#include <string>

namespace zqconvert {

class Y4mReader final : public FrameSource {
public:
  /// Reads the stream header; `name` stands for the stream in messages. Throws Error for a header that is damaged or
  /// asks for what no colour type of the library can hold (more than 8 bits, alpha; of the thirteen functions: no
  /// chroma, or not even one sample of it).
  Y4mReader(std::istream &stream, std::string name, Library library = Library::Classic);

  [[nodiscard]] const StreamInfo &info() const override { return info_; }
  bool next(Frame &frame) override;
  [[nodiscard]] uint64_t bytesPerFrame() const override;

private:
  void parseHeader(const std::string &line);
  void parseChroma(const std::string &tag);
  [[nodiscard]] int planes() const { return planeCount(info_.type); }

  std::istream &stream_;
  std::string name_;
  Library library_;
  StreamInfo info_;
  int frames_ = 0;
};

} // namespace zqconvert
