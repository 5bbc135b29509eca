#include "input.h"

#include "error.h"
#include "picture_readers.h"
#include "raw_reader.h"
#include "y4m_reader.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

namespace zqconvert {

Input::Input(const Options &options) : name_(options.input == "-" ? "standard input" : options.input) {
  if (options.rawSize && isY4mName(options.input)) {
    const std::string type = options.library == Library::Classic ? "--type" : "--from";
    throw Error(name_ + ": a .y4m file says its own size and type; --size and " + type + " are for raw frames");
  }
  const bool standard = options.input == "-";
  if (!standard) {
    openFile(options.input);
  }
  source_ = makeSource(standard ? std::cin : file_, options);
}

void Input::openFile(const std::string &path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    throw Error(path + ": is a directory");
  }
  file_.open(path, std::ios::binary);
  if (!file_) {
    throw Error(path + ": cannot be read: " + std::strerror(errno));
  }
  const auto bytes = std::filesystem::file_size(path, error);
  if (!error) {
    bytes_ = bytes;
  }
}

/// The first byte tells the formats apart, of pipes as well.
std::unique_ptr<FrameSource> Input::makeSource(std::istream &stream, const Options &options) const {
  if (options.rawSize) {
    return std::make_unique<RawReader>(stream, name_, *options.rawLayout, *options.rawSize, bytes_);
  }
  if (options.library == Library::Classic) {
    return std::make_unique<Y4mReader>(stream, name_);
  }
  constexpr int kPngBegins = 0x89;
  switch (stream.peek()) {
  case kPngBegins:
    return std::make_unique<PngReader>(stream, name_);
  case 'B':
    return std::make_unique<BmpReader>(stream, name_);
  case 'Y':
    return std::make_unique<Y4mReader>(stream, name_, Library::Picture);
  default:
    throw Error(name_ + ": neither a YUV4MPEG2 stream nor a PNG or BMP file (raw frames need --size and --from)");
  }
}

uint64_t Input::expectedFrames(const FrameRange &range) const {
  const auto first = static_cast<uint64_t>(range.first);
  if (range.last > 0) {
    return static_cast<uint64_t>(range.last) - first + 1;
  }
  const uint64_t present = bytes_.value_or(0) / source_->bytesPerFrame();
  return present >= first ? present - first + 1 : 0;
}

} // namespace zqconvert
