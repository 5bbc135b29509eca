#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace workspace {

namespace fs = std::filesystem;

Folder::Folder() {
  // mkdtemp puts letters of its own in the place of the six at the end.
  std::string name = (fs::temp_directory_path() / ("zqconvert-test-" + std::string(6, 'X'))).string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary directory");
  }
  root_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

std::string Folder::file(const std::string &name, const std::string &bytes) const {
  std::ofstream(path(name), std::ios::binary) << bytes;
  return path(name);
}

std::vector<std::string> Folder::names() const {
  std::vector<std::string> names;
  for (const fs::directory_entry &entry : fs::directory_iterator(root_)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string readFile(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("no file " + path);
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string bytes(std::size_t count, unsigned seed) {
  std::string text(count, '\0');
  uint32_t state = seed * 2654435761U + 12345U;
  for (char &c : text) {
    state = state * 1664525U + 1013904223U;
    c = static_cast<char>(state >> 24);
  }
  return text;
}

std::string y4m420(int width, int height, int frames, unsigned seed) {
  std::string stream =
      "YUV4MPEG2 W" + std::to_string(width) + " H" + std::to_string(height) + " F30:1 Ip A1:1 C420jpeg\n";
  for (int i = 0; i < frames; ++i) {
    stream += "FRAME\n" + bytes(static_cast<std::size_t>(width * height * 3 / 2), seed + static_cast<unsigned>(i));
  }
  return stream;
}

zqconvert::Frame noiseFrame(int type, int width, int height, unsigned seed) {
  zqconvert::Frame frame = zqconvert::makeFrame(type, width, height);
  for (std::vector<uint8_t> &plane : frame.planes) {
    const std::string noise = bytes(plane.size(), seed++);
    std::copy(noise.begin(), noise.end(), plane.begin());
  }
  return frame;
}

std::string quoted(const std::string &word) {
  std::string text = "'";
  for (const char c : word) {
    text += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return text + "'";
}

Outcome run(const std::vector<std::string> &arguments, const std::string &input) {
  const Folder folder;
  std::string command = quoted(ZQCONVERT_PROGRAM);
  for (const std::string &argument : arguments) {
    command += " " + quoted(argument);
  }
  command += " < " + quoted(input) + " 2> " + quoted(folder.path("err"));
  std::FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    throw std::runtime_error("cannot run the program");
  }
  Outcome outcome;
  std::array<char, 4096> buffer{};
  for (std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe); got > 0;
       got = fread(buffer.data(), 1, buffer.size(), pipe)) {
    outcome.out.append(buffer.data(), got);
  }
  const int status = pclose(pipe);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  outcome.err = readFile(folder.path("err"));
  return outcome;
}

Outcome classic(std::vector<std::string> arguments, const std::string &input) {
  arguments.insert(arguments.begin(), "--classic");
  return run(arguments, input);
}

void expectRefusal(const Outcome &outcome, const std::string &words) {
  EXPECT_EQ(outcome.status, 2) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, testing::StartsWith("zqconvert: "));
  EXPECT_THAT(outcome.err, testing::HasSubstr(words));
  EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
}

namespace {

/// In the child: becomes the program. Nothing here may return to the test.
[[noreturn]] void become(std::vector<char *> &words, const Process::Setup &setup, int input, const std::string &err) {
  for (const int number : {SIGINT, SIGTERM, SIGXFSZ}) {
    std::signal(number, SIG_DFL); // shells switch some off for what runs in the background, such as these tests
  }
  std::signal(SIGHUP, setup.ignoreHangUp ? SIG_IGN : SIG_DFL);
  if (setup.fileLimit > 0) {
    const rlimit limit{setup.fileLimit, setup.fileLimit};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  const int log = open(err.c_str(), O_WRONLY | O_CREAT, 0600);
  dup2(input, STDIN_FILENO);
  dup2(setup.output >= 0 ? setup.output : open("/dev/null", O_WRONLY), STDOUT_FILENO);
  dup2(log, STDERR_FILENO);
  execv(words[0], words.data());
  _exit(127);
}

} // namespace

Process::Process(const std::vector<std::string> &arguments, const Setup &setup) {
  std::vector<std::string> texts{ZQCONVERT_PROGRAM};
  texts.insert(texts.end(), arguments.begin(), arguments.end());
  std::vector<char *> words;
  std::ranges::transform(texts, std::back_inserter(words), [](std::string &text) { return text.data(); });
  words.push_back(nullptr);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  const std::string err = folder_.path("err");
  pid_ = fork();
  if (pid_ == 0) {
    become(words, setup, ends[0], err);
  }
  close(ends[0]);
  input_ = ends[1];
}

Process::~Process() {
  closeInput();
  if (pid_ > 0) {
    ::kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
}

void Process::feed(const std::string &bytes) const {
  if (write(input_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the program does not take its input");
  }
}

void Process::closeInput() {
  if (input_ >= 0) {
    close(input_);
    input_ = -1;
  }
}

void Process::kill(int signalNumber) const {
  ::kill(pid_, signalNumber);
}

bool Process::sleeps() const {
  std::ifstream stat("/proc/" + std::to_string(pid_) + "/stat");
  const std::string line{std::istreambuf_iterator<char>(stat), {}};
  return line.find("(zqconvert) S ") != std::string::npos;
}

Outcome Process::wait() {
  Outcome outcome;
  int status = 0;
  if (!within10Seconds([&] { return waitpid(pid_, &status, WNOHANG) == pid_; })) {
    return outcome;
  }
  pid_ = -1;
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  outcome.err = readFile(folder_.path("err"));
  return outcome;
}

bool within10Seconds(const std::function<bool()> &isSo) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end) {
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

} // namespace workspace
