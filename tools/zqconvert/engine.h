// What converts frames: the thirteen functions or zqPicture, alike to the rest of the program.
#pragma once

#include "frame.h"

#include <string>
#include <vector>

namespace zqconvert {

class Engine {
public:
  Engine() = default;
  Engine(const Engine &) = delete;
  Engine &operator=(const Engine &) = delete;
  virtual ~Engine() = default;

  /// What convert() gives.
  [[nodiscard]] virtual const StreamInfo &output() const = 0;
  /// What the user should hear about a request that is fulfilled all the same, a line each; none for most.
  [[nodiscard]] virtual const std::vector<std::string> &notes() const = 0;
  /// Converts `in` into `out`, whose buffers are made on the first call.
  virtual void convert(const Frame &in, Frame &out) = 0;
  /// Seconds spent inside the library's frame calls so far.
  [[nodiscard]] virtual double seconds() const = 0;
};

} // namespace zqconvert
