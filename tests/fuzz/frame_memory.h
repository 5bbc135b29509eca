// Memory of exactly the bytes that a frame's planes take: heap blocks, so that the address sanitizer sees the first
// byte beyond them, or, of large planes, address space that ends there.
#pragma once

#include "fuzz/rooms.h"
#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Ends the run with a message: the library did what it must not do.
[[noreturn]] void fail(const char *what, const ConvertParams &frame);

/// Names the frame that the next call converts, should the sanitizer have to report it.
void announce(const ConvertParams &frame);

/// Bytes of each plane, from the first to the last sample; computed so that no description overflows.
struct FrameBytes {
  std::array<int64_t, 3> in{};
  std::array<int64_t, 3> out{};
  std::array<Lines, 3> inLines{};
  std::array<Lines, 3> outLines{};
};

/// Sizes, strides and types must not be negative. `cropped` bytes of the input's lines lie in front of the frame's.
FrameBytes bytesOf(const ConvertParams &frame, int64_t cropped = 0);

/// Whether a frame of these planes is converted quickly and with little memory: few pixels, and lines that do not lie
/// on too many pages.
bool canBeTried(const ConvertParams &frame, const FrameBytes &bytes);

/// Whether every line of the output has a place of its own; else lines overlap and the order of stores decides.
bool linesAreApart(const ConvertParams &frame);

class FrameMemory {
public:
  /// `seed` fills the input planes.
  FrameMemory(const FrameBytes &bytes, uint32_t seed);
  /// Gives the record the planes, or with `expected` a second set of output planes, equal at first.
  void attach(ConvertParams &frame, bool expected = false);
  /// Whether both sets of output planes hold the same bytes.
  [[nodiscard]] bool agrees() const;
  /// Whether the output planes are as they were made.
  [[nodiscard]] bool untouched() const;

private:
  FrameBytes bytes_;
  std::array<PlaneMemory, 3> in_;
  std::array<PlaneMemory, 3> out_;
  std::array<PlaneMemory, 3> expected_;
};

} // namespace fuzz
