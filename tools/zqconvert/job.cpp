#include "job.h"

#include "error.h"
#include "output.h"
#include "progress.h"
#include "raw_reader.h"
#include "routes.h"
#include "y4m_reader.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

namespace zqconvert {

namespace {

struct Input {
  std::ifstream file;
  std::optional<uint64_t> bytes; ///< Of a file; nothing for pipes and devices.
  std::unique_ptr<FrameSource> source;
};

std::string nameOfInput(const Options &options) {
  return options.input == "-" ? "standard input" : options.input;
}

void openFile(Input &input, const std::string &path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    throw Error(path + ": is a directory");
  }
  input.file.open(path, std::ios::binary);
  if (!input.file) {
    throw Error(path + ": cannot be read: " + std::strerror(errno));
  }
  const auto bytes = std::filesystem::file_size(path, error);
  if (!error) {
    input.bytes = bytes;
  }
}

void open(Input &input, const Options &options) {
  const bool standard = options.input == "-";
  const std::string name = nameOfInput(options);
  if (options.rawSize && isY4mName(options.input)) {
    throw Error(name + ": a .y4m file says its own size and type; --size and --type are for raw frames");
  }
  if (!standard) {
    openFile(input, options.input);
  }
  std::istream &stream = standard ? std::cin : input.file;
  if (options.rawSize) {
    input.source = std::make_unique<RawReader>(stream, name, *options.rawLayout, *options.rawSize, input.bytes);
  } else {
    input.source = std::make_unique<Y4mReader>(stream, name);
  }
}

/// YUV that the library hands on as it is.
bool isLastingYuv(int type) {
  return colorType(type).family != Family::Rgb16 && whyNot({type, type, false, ROTATION_NONE}).empty();
}

/// What people expect who did not say: what the name of the file says, or what its format holds, or something to look
/// at.
int defaultOutType(const Options &options, int inType) {
  if (options.format == Format::Y4m) {
    return inType == COLOR_YVU420_PLANAR ? COLOR_YVU420_PLANAR : COLOR_YUV420_PLANAR;
  }
  if (options.format == Format::Raw) {
    const RawName name = rawName(options.output);
    if (name.kind == RawName::OneType) {
      return name.type;
    }
    if (name.kind == RawName::AnyYuv) {
      return isLastingYuv(inType) ? inType : COLOR_YUV420_PLANAR;
    }
  }
  return inType == COLOR_RGB16_ALT ? COLOR_RGB16_ALT : COLOR_RGB565;
}

uint64_t expectedFrames(const Input &input, const FrameRange &range) {
  const auto first = static_cast<uint64_t>(range.first);
  if (range.last > 0) {
    return static_cast<uint64_t>(range.last) - first + 1;
  }
  const uint64_t present = input.bytes.value_or(0) / input.source->bytesPerFrame();
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

/// Converts frame after frame until the range or the input ends.
class Delivery {
public:
  Delivery(FrameSource &source, Converter &converter, Output &output, const FrameRange &range)
      : source_(source), converter_(converter), output_(output), range_(range) {}

  void run(Progress &progress) {
    while ((range_.last == 0 || read_ < range_.last) && source_.next(in_)) {
      ++read_;
      if (read_ >= range_.first) {
        converter_.convert(in_, out_);
        output_.write(out_, read_);
        progress.show(static_cast<uint64_t>(++written_));
      }
    }
  }
  [[nodiscard]] int read() const { return read_; }
  [[nodiscard]] int written() const { return written_; }

private:
  FrameSource &source_;
  Converter &converter_;
  Output &output_;
  FrameRange range_;
  Frame in_;
  Frame out_;
  int read_ = 0;
  int written_ = 0;
};

} // namespace

void run(const Options &options) {
  Input input;
  open(input, options);
  Request request = options.request;
  const StreamInfo &info = input.source->info();
  request.outType = options.outType.value_or(defaultOutType(options, info.type));
  requireHolds(options.format, request.outType);
  Converter converter(info, request);
  for (const std::string &note : converter.notes()) {
    std::cerr << "zqconvert: note: " + note + "\n";
  }
  Output output(options.output, options.format, converter.output());
  Progress progress(expectedFrames(input, options.frames));

  const FrameRange &range = options.frames;
  Delivery delivery(*input.source, converter, output, range);
  try {
    delivery.run(progress);
  } catch (const Truncated &) {
    if (delivery.written() > 0) {
      output.commit();
    }
    throw;
  }
  if (delivery.written() == 0 || delivery.read() < range.last) {
    throw Error(endsEarly(nameOfInput(options), delivery.read(), range));
  }
  output.commit();
  if (options.stats) {
    report(converter, info, delivery.written());
  }
}

} // namespace zqconvert
