#include "error.h"
#include "picture_readers.h"

#include <istream>
#include <utility>

namespace zqconvert {

PictureReader::PictureReader(std::istream &stream, std::string name) : stream_(stream), name_(std::move(name)) {}

bool PictureReader::next(Frame &frame) {
  if (done_) {
    return false;
  }
  done_ = true;
  frame = {info_.type, info_.width, info_.height, roomyStride(info_.type, info_.width), {}, {}, true};
  readPixels(frame);
  return true;
}

void PictureReader::readBytes(uint8_t *bytes, std::size_t count) {
  stream_.read(reinterpret_cast<char *>(bytes), static_cast<std::streamsize>(count));
  if (static_cast<std::size_t>(stream_.gcount()) != count) {
    throw Truncated(name_ + ": ends in the middle of the picture");
  }
}

void PictureReader::refuse(const std::string &reason) const {
  throw Error(name_ + ": " + reason);
}

void PictureReader::setShape(int type, Size size) {
  requirePlausible(size, name_);
  info_.type = type;
  info_.width = size.width;
  info_.height = size.height;
}

} // namespace zqconvert
