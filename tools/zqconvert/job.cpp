#include "job.h"

#include "error.h"
#include "input.h"
#include "output.h"
#include "picture.h"
#include "progress.h"
#include "routes.h"

#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

namespace zqconvert {

namespace {

/// YUV that the library hands on as it is.
bool isLastingYuv(int type) {
  return colorType(type).family != Family::Rgb16 && whyNot({type, type, false, ROTATION_NONE}).empty();
}

/// What people expect of the thirteen functions who did not say: what the name of the file says, or what its format
/// holds, or something to look at.
int defaultClassicType(const Options &options, int inType) {
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

std::unique_ptr<Engine> makeEngine(const Options &options, const StreamInfo &info) {
  if (options.library == Library::Picture) {
    return makePictureEngine(options, info);
  }
  Request request = options.request;
  request.outType = options.outType.value_or(defaultClassicType(options, info.type));
  requireHolds(options.format, request.outType);
  return std::make_unique<Converter>(info, request);
}

std::string endsEarly(const std::string &name, int read, const FrameRange &range) {
  if (read == 0) {
    return name + ": holds no frame";
  }
  return name + ": has " + std::to_string(read) + (read == 1 ? " frame" : " frames") + ", so --frames cannot reach " +
         std::to_string(range.last > 0 ? range.last : range.first);
}

void report(const Engine &engine, const StreamInfo &in, int frames) {
  const StreamInfo &out = engine.output();
  const double pixels = 1.0 * frames * out.width * out.height;
  std::ostringstream text;
  text << "zqconvert: " << frames << (frames == 1 ? " frame, " : " frames, ") << shortName(in.type) << " "
       << toText({in.width, in.height}) << " to " << shortName(out.type) << " " << toText({out.width, out.height})
       << std::fixed << std::setprecision(2) << ": " << engine.seconds() * 1000.0 << " ms in the library, "
       << pixels / std::max(engine.seconds(), 1e-9) / 1e6 << " million output pixels per second\n";
  std::cerr << text.str();
}

/// Converts frame after frame until the range or the input ends.
class Delivery {
public:
  Delivery(FrameSource &source, Engine &engine, Output &output, const FrameRange &range)
      : source_(source), engine_(engine), output_(output), range_(range) {}

  void run(Progress &progress) {
    while ((range_.last == 0 || read_ < range_.last) && source_.next(in_)) {
      ++read_;
      if (read_ >= range_.first) {
        engine_.convert(in_, out_);
        output_.write(out_, read_);
        progress.show(static_cast<uint64_t>(++written_));
      }
    }
  }
  [[nodiscard]] int read() const { return read_; }
  [[nodiscard]] int written() const { return written_; }

private:
  FrameSource &source_;
  Engine &engine_;
  Output &output_;
  FrameRange range_;
  Frame in_;
  Frame out_;
  int read_ = 0;
  int written_ = 0;
};

} // namespace

void run(const Options &options) {
  Input input(options);
  const StreamInfo &info = input.source().info();
  const std::unique_ptr<Engine> engine = makeEngine(options, info);
  for (const std::string &note : engine->notes()) {
    std::cerr << "zqconvert: note: " + note + "\n";
  }
  Output output(options.output, options.format, engine->output());
  Progress progress(input.expectedFrames(options.frames));

  const FrameRange &range = options.frames;
  Delivery delivery(input.source(), *engine, output, range);
  try {
    delivery.run(progress);
  } catch (const Truncated &) {
    if (delivery.written() > 0) {
      output.commit();
    }
    throw;
  }
  if (delivery.written() == 0 || delivery.read() < range.last) {
    throw Error(endsEarly(input.name(), delivery.read(), range));
  }
  output.commit();
  if (options.stats) {
    report(*engine, info, delivery.written());
  }
}

} // namespace zqconvert
