// A directory of its own for every test, hand-made streams, and the built program.
#pragma once

#include "frame.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace workspace {

/// A fresh directory that disappears with the object.
class Folder {
public:
  Folder();
  Folder(const Folder &) = delete;
  Folder &operator=(const Folder &) = delete;
  ~Folder();
  [[nodiscard]] std::string path(const std::string &name) const { return (root_ / name).string(); }
  /// Writes a file and returns its path.
  [[nodiscard]] std::string file(const std::string &name, const std::string &bytes) const;
  /// Names of everything inside, hidden files included, sorted.
  [[nodiscard]] std::vector<std::string> names() const;

private:
  std::filesystem::path root_;
};

/// Bytes from a plane's start to byte `x` of a line.
constexpr std::size_t at(int line, int stride, int x = 0) {
  return static_cast<std::size_t>(line) * static_cast<std::size_t>(stride) + static_cast<std::size_t>(x);
}

std::string readFile(const std::string &path);

/// `count` bytes that differ from their neighbours and from those of other seeds.
std::string bytes(std::size_t count, unsigned seed);

/// A YUV4MPEG2 stream of 8-bit 4:2:0 frames with even sides.
std::string y4m420(int width, int height, int frames, unsigned seed = 1);

/// A frame of the given type whose planes are filled from `seed`.
zqconvert::Frame noiseFrame(int type, int width, int height, unsigned seed);

/// One word for a shell, whatever stands in it.
std::string quoted(const std::string &word);

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

/// Runs the program through the shell. `input` names the file that becomes standard input.
Outcome run(const std::vector<std::string> &arguments, const std::string &input = "/dev/null");
/// The same with --classic in front.
Outcome classic(std::vector<std::string> arguments, const std::string &input = "/dev/null");

/// Status 2, one line on standard error in the program's name, nothing on standard output.
void expectRefusal(const Outcome &outcome, const std::string &words);

/// The program as a child whose standard input the test holds. Ended by the destructor if it still runs.
class Process {
public:
  struct Setup {
    bool ignoreHangUp = false;
    unsigned long fileLimit = 0; ///< Bytes that a file may have; 0: no limit.
    int output = -1;             ///< What becomes standard output; -1: nothing that keeps it.
  };
  explicit Process(const std::vector<std::string> &arguments, const Setup &setup);
  Process(const Process &) = delete;
  Process &operator=(const Process &) = delete;
  ~Process();

  /// Not more than a pipe holds, for the program need not be reading.
  void feed(const std::string &bytes) const;
  void closeInput();
  void kill(int signalNumber) const;
  /// Whether it runs and sleeps, which it does while it waits for a pipe.
  [[nodiscard]] bool sleeps() const;
  /// Its status (as the shell counts: 128 and the number when a signal ended it) and standard error; gives up, with
  /// status -1, after ten seconds.
  Outcome wait();

private:
  Folder folder_;
  int pid_ = -1;
  int input_ = -1;
};

/// Asks again and again until it is so.
bool within10Seconds(const std::function<bool()> &isSo);

} // namespace workspace
