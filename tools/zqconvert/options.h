// The command line.
#pragma once

#include "convert.h"
#include "formats.h"
#include "option_values.h"
#include "picture_request.h"
#include "raw_reader.h"

#include <optional>
#include <string>
#include <vector>

namespace zqconvert {

struct Options {
  /// Not empty: print this and do nothing else (--help, --version, --list-types).
  std::string message;

  Library library = Library::Picture;
  std::string input;
  std::string output;
  std::optional<Size> rawSize; ///< With rawLayout: the input is raw frames; without either: its bytes say what it is.
  std::optional<RawLayout> rawLayout;
  std::optional<int> outType; ///< Nothing: what suits the output format.
  Format format = Format::Raw;
  Request request;        ///< Of Library::Classic. Its outType is filled when the input is known.
  PictureRequest picture; ///< Of Library::Picture; the same holds.
  FrameRange frames;
  bool stats = false;
};

/// `arguments` without the program's name. Throws Error for a command line that makes no sense.
Options parseOptions(const std::vector<std::string> &arguments);

} // namespace zqconvert
