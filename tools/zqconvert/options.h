// The command line.
#pragma once

#include "convert.h"
#include "writers.h"

#include <optional>
#include <string>
#include <vector>

namespace zqconvert {

/// Frames are counted from 1; both ends belong to the range. last == 0: to the end of the input.
struct FrameRange {
  int first = 1;
  int last = 0;
};

struct Options {
  /// Not empty: print this and do nothing else (--help, --version, --list-types).
  std::string message;

  std::string input;
  std::string output;
  std::optional<Size> rawSize; ///< With rawType: the input is raw frames; without either: YUV4MPEG2.
  std::optional<int> rawType;
  std::optional<int> outType; ///< Nothing: what suits the output format.
  Format format = Format::Raw;
  Request request; ///< Its outType is filled when the input is known.
  FrameRange frames;
  bool stats = false;
};

/// `arguments` without the program's name. Throws Error for a command line that makes no sense.
Options parseOptions(const std::vector<std::string> &arguments);

} // namespace zqconvert
