#include "workspace.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/wait.h>

namespace workspace {

namespace fs = std::filesystem;

Folder::Folder() {
  std::string name = (fs::temp_directory_path() / "zqconvert-test-XXXXXX").string();
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

namespace {

std::string quoted(const std::string &word) {
  std::string text = "'";
  for (const char c : word) {
    text += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return text + "'";
}

} // namespace

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

} // namespace workspace
