// Where converted frames go. A file appears under its name only when the whole job has succeeded.
#pragma once

#include "frame.h"
#include "temporary.h"
#include "writers.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zqconvert {

/// A file written under a temporary name in the directory where it will stand. It is renamed by commit() and removed by
/// the destructor otherwise. A file that is replaced passes its permissions on. Devices and pipes, which cannot be
/// replaced, are written directly.
class PendingFile {
public:
  explicit PendingFile(const std::string &path);
  PendingFile(const PendingFile &) = delete;
  PendingFile &operator=(const PendingFile &) = delete;
  ~PendingFile();

  std::ostream &stream() { return stream_; }
  /// Flushes; throws Error if not every byte reached the file. No more writing after it.
  void close();
  void commit();

private:
  void makeTemporary();

  std::string name_;
  std::filesystem::path target_;
  std::optional<TemporaryName> temporary_; ///< Empty when the target itself is being written.
  std::ofstream stream_;
};

/// "out-%04d.png" and the like: a name with one %d or %0Nd. "%%" is a percent sign, and so is one before anything else.
class NamePattern {
public:
  /// Throws Error if the name holds two numbers.
  explicit NamePattern(const std::string &name);
  [[nodiscard]] bool numbered() const { return numbered_; }
  [[nodiscard]] std::string name(int number) const;

private:
  std::string before_;
  std::string after_;
  std::size_t digits_ = 0;
  bool numbered_ = false;
};

class Output {
public:
  /// `path` is a name, a pattern, or "-" for standard output. `info` describes the frames that will come.
  Output(std::string path, Format format, StreamInfo info);
  /// Writes the frame that has the given number (from 1) in the input.
  void write(const Frame &frame, int number);
  /// Puts all files in their places.
  void commit();

private:
  void writeTo(std::ostream &stream, const Frame &frame, bool first);

  std::string path_;
  NamePattern pattern_;
  Format format_;
  StreamInfo info_;
  int frames_ = 0;
  std::vector<std::unique_ptr<PendingFile>> files_;
};

} // namespace zqconvert
