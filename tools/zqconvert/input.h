// Where frames come from: a stream or file, taken for what the options or its first byte say.
#pragma once

#include "frame.h"
#include "options.h"

#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace zqconvert {

class Input {
public:
  /// Throws Error if there is nothing to read or it is not what the library takes.
  explicit Input(const Options &options);

  FrameSource &source() { return *source_; }
  [[nodiscard]] const std::string &name() const { return name_; }
  /// Of a range of its frames; 0 if nobody knows.
  [[nodiscard]] uint64_t expectedFrames(const FrameRange &range) const;

private:
  void openFile(const std::string &path);
  [[nodiscard]] std::unique_ptr<FrameSource> makeSource(std::istream &stream, const Options &options) const;

  std::string name_;
  std::ifstream file_;
  std::optional<uint64_t> bytes_; ///< Of a file; nothing for pipes and devices.
  std::unique_ptr<FrameSource> source_;
};

} // namespace zqconvert
