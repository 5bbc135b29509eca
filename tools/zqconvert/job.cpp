#include "job.h"

#include "error.h"
#include "output.h"
#include "progress.h"
#include "raw_reader.h"
#include "y4m_reader.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

namespace zqconvert {

std::atomic<int> stopSignal{0};

namespace {

struct Input {
  std::ifstream file;
  uint64_t bytes = 0; ///< 0: unknown
  std::unique_ptr<FrameSource> source;
};

void open(Input &input, const Options &options) {
  const bool standard = options.input == "-";
  if (!standard) {
    std::error_code error;
    if (std::filesystem::is_directory(options.input, error)) {
      throw Error(options.input + ": is a directory");
    }
    input.file.open(options.input, std::ios::binary);
    if (!input.file) {
      throw Error(options.input + ": cannot be read: " + std::strerror(errno));
    }
    const auto bytes = std::filesystem::file_size(options.input, error);
    input.bytes = error ? 0 : bytes;
  }
  std::istream &stream = standard ? std::cin : input.file;
  const std::string name = standard ? "standard input" : options.input;
  if (options.rawSize && formatOfName(options.input) == Format::Y4m) {
    throw Error(name + ": a .y4m file says its own size and type; --size and --type are for raw frames");
  }
  if (options.rawSize) {
    input.source = std::make_unique<RawReader>(stream, name, *options.rawType, *options.rawSize);
  } else {
    input.source = std::make_unique<Y4mReader>(stream, name);
  }
}

/// What people expect who did not say: something to look at, or what the file format holds.
int defaultOutType(Format format, int inType) {
  if (format == Format::Y4m) {
    return inType == COLOR_YVU420_PLANAR ? COLOR_YVU420_PLANAR : COLOR_YUV420_PLANAR;
  }
  return inType == COLOR_RGB16_ALT ? COLOR_RGB16_ALT : COLOR_RGB565;
}

uint64_t expectedFrames(const Input &input, const FrameRange &range) {
  const auto first = static_cast<uint64_t>(range.first);
  if (range.last > 0) {
    return static_cast<uint64_t>(range.last) - first + 1;
  }
  const uint64_t present = input.bytes / input.source->bytesPerFrame();
  return present >= first ? present - first + 1 : 0;
}

std::string endsEarly(const std::string &name, int read, const FrameRange &range) {
  if (read == 0) {
    return name + ": holds no frame";
  }
  return name + ": has " + std::to_string(read) + (read == 1 ? " frame" : " frames") + ", so --frames cannot reach " +
         std::to_string(range.last > 0 ? range.last : range.first);
}

void report(const Converter &converter, const StreamInfo &in, int frames) {
  const StreamInfo &out = converter.output();
  const double pixels = 1.0 * frames * out.width * out.height;
  std::ostringstream text;
  text << "zqconvert: " << frames << (frames == 1 ? " frame, " : " frames, ") << shortName(in.type) << " "
       << toText({in.width, in.height}) << " to " << shortName(out.type) << " " << toText({out.width, out.height})
       << std::fixed << std::setprecision(2) << ": " << converter.seconds() * 1000.0 << " ms in the library, "
       << pixels / std::max(converter.seconds(), 1e-9) / 1e6 << " million output pixels per second\n";
  std::cerr << text.str();
}

} // namespace

void run(const Options &options) {
  Input input;
  open(input, options);
  Request request = options.request;
  const StreamInfo &info = input.source->info();
  request.outType = options.outType.value_or(defaultOutType(options.format, info.type));
  requireHolds(options.format, request.outType);
  Converter converter(info, request);
  if (!converter.note().empty()) {
    std::cerr << "zqconvert: note: " + converter.note() + "\n";
  }
  Output output(options.output, options.format, converter.output());
  Progress progress(expectedFrames(input, options.frames));

  Frame in;
  Frame out;
  int read = 0;
  int written = 0;
  const FrameRange &range = options.frames;
  while ((range.last == 0 || read < range.last) && input.source->next(in)) {
    ++read;
    if (stopSignal != 0) {
      throw Interrupted(stopSignal);
    }
    if (read < range.first) {
      continue;
    }
    converter.convert(in, out);
    output.write(out, read);
    progress.show(static_cast<uint64_t>(++written));
  }
  if (written == 0 || read < range.last) {
    throw Error(endsEarly(options.input == "-" ? "standard input" : options.input, read, range));
  }
  output.commit();
  if (options.stats) {
    report(converter, info, written);
  }
}

} // namespace zqconvert
