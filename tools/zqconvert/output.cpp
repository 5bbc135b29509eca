#include "output.h"

#include "error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <random>
#include <utility>

namespace zqconvert {

namespace fs = std::filesystem;

/// Makes an empty file of a name that no one else has, beside the target so that renaming cannot cross file systems.
void PendingFile::makeTemporary() {
  std::random_device random;
  for (int attempt = 0; attempt < 16; ++attempt) {
    // The name is short whatever the target is called, and hidden while it is incomplete. It is announced before the
    // file exists, so that no signal can come in between.
    temporary_.emplace((target_.parent_path() / (".zqconvert-" + std::to_string(random()) + ".part")).string());
    // "x": fails rather than opening a file that is there already.
    if (std::FILE *file = std::fopen(temporary_->path().c_str(), "wbx"); file != nullptr) {
      std::fclose(file);
      return;
    }
    const int reason = errno;
    temporary_.reset();
    if (reason != EEXIST) {
      throw Error(name_ + ": cannot be written: " + std::strerror(reason));
    }
  }
  throw Error(name_ + ": cannot be written: no free temporary name");
}

PendingFile::PendingFile(const std::string &path) : name_(path), target_(path) {
  std::error_code ignored;
  // A link keeps pointing where it pointed; what it points at is replaced.
  if (const fs::path real = fs::canonical(target_, ignored); !ignored) {
    target_ = real;
  }
  const fs::file_status status = fs::status(target_, ignored);
  if (fs::is_directory(status)) {
    throw Error(name_ + ": is a directory");
  }
  if (!fs::exists(status) || fs::is_regular_file(status)) {
    makeTemporary();
  }
  const fs::path written = temporary_ ? fs::path(temporary_->path()) : target_;
  stream_.open(written, std::ios::binary);
  if (!stream_) {
    const std::string reason = std::strerror(errno);
    if (temporary_) {
      fs::remove(written, ignored);
    }
    throw Error(name_ + ": cannot be written: " + reason);
  }
  if (temporary_ && fs::exists(status)) {
    // Now and not at the end: a private file's successor is never open to others. The stream is open already, so that
    // even a file that must not be written passes its permissions on.
    fs::permissions(written, status.permissions() & fs::perms::all, ignored);
  }
}

PendingFile::~PendingFile() {
  if (temporary_) {
    stream_.close();
    std::error_code ignored;
    fs::remove(temporary_->path(), ignored);
  }
}

void PendingFile::close() {
  stream_.close();
  if (!stream_) {
    throw Error(name_ + ": cannot be written completely (is the disk full?)");
  }
}

void PendingFile::commit() {
  if (!temporary_) {
    return;
  }
  std::error_code error;
  fs::rename(temporary_->path(), target_, error);
  if (error) {
    throw Error(name_ + ": cannot be put in place: " + error.message());
  }
  temporary_.reset();
}

NamePattern::NamePattern(const std::string &name) {
  std::string *part = &before_;
  for (std::size_t at = 0; at < name.size(); ++at) {
    const std::size_t end = name[at] == '%' ? name.find_first_not_of("0123456789", at + 1) : std::string::npos;
    const bool doubled = end == at + 1 && name[end] == '%';
    if (end == std::string::npos || name[end] != 'd') {
      *part += name[at];
      at += doubled ? 1 : 0;
      continue;
    }
    if (numbered_) {
      throw Error(name + ": holds more than one frame number");
    }
    const std::string width = name.substr(at + 1, end - at - 1);
    const std::optional<int> digits = width.empty() ? 0 : parseCount(width, 20);
    if (!digits) {
      throw Error(name + ": the frame number takes at most 20 digits");
    }
    numbered_ = true;
    digits_ = static_cast<std::size_t>(*digits);
    part = &after_;
    at = end;
  }
}

std::string NamePattern::name(int number) const {
  if (!numbered_) {
    return before_;
  }
  std::string digits = std::to_string(number);
  if (digits.size() < digits_) {
    digits.insert(0, digits_ - digits.size(), '0');
  }
  return before_ + digits + after_;
}

Output::Output(std::string path, Format format, StreamInfo info)
    : path_(std::move(path)), pattern_(path_), format_(format), info_(std::move(info)) {
  requireHolds(format_, info_.type, Library::Picture);
}

void Output::writeTo(std::ostream &stream, const Frame &frame, bool first) {
  switch (format_) {
  case Format::Raw:
    writeRaw(stream, frame);
    break;
  case Format::Bmp:
    writeBmp(stream, frame);
    break;
  case Format::Png:
    writePng(stream, frame);
    break;
  case Format::Ppm:
    writePpm(stream, frame);
    break;
  case Format::Y4m:
    if (first) {
      writeY4mHeader(stream, info_);
    }
    writeY4mFrame(stream, frame);
    break;
  }
  if (!stream) {
    throw Error(path_ + ": cannot be written completely (is the disk full?)");
  }
}

void Output::write(const Frame &frame, int number) {
  ++frames_;
  if (frames_ > 1 && isPictureFormat(format_) && !pattern_.numbered()) {
    throw Error(path_ + ": holds one picture, but the input has more: take a pattern such as out-%04d.png, or one " +
                "frame with --frames 1");
  }
  if (path_ == "-") {
    writeTo(std::cout, frame, frames_ == 1);
    return;
  }
  if (frames_ == 1 || pattern_.numbered()) {
    files_.push_back(std::make_unique<PendingFile>(pattern_.name(number)));
  }
  writeTo(files_.back()->stream(), frame, frames_ == 1 || pattern_.numbered());
  if (pattern_.numbered()) {
    files_.back()->close();
  }
}

void Output::commit() {
  if (path_ == "-") {
    std::cout.flush();
    if (!std::cout) {
      throw Error("standard output cannot be written");
    }
    return;
  }
  if (!pattern_.numbered() && !files_.empty()) {
    files_.back()->close();
  }
  const Placing placing;
  for (const auto &file : files_) {
    file->commit();
  }
}

} // namespace zqconvert
