// Lines for stages: bytes between guards, at any alignment.
#pragma once

#include "rows/stages.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace rowtest {

inline constexpr uint8_t kGuard = 0xA5;
inline constexpr size_t kGuardBytes = 80;

/// An output that begins `shift` bytes behind a multiple of 64, all guards at first.
class Output {
public:
  Output(size_t bytes, size_t shift)
      : bytes_(bytes), all_(bytes + 2 * kGuardBytes + 128, kGuard),
        first_(kGuardBytes + (64 - reinterpret_cast<uintptr_t>(all_.data() + kGuardBytes) % 64) + shift % 64) {}

  [[nodiscard]] uint8_t *data() { return all_.data() + first_; }
  [[nodiscard]] std::vector<uint8_t> bytes() const {
    const auto first = all_.begin() + static_cast<ptrdiff_t>(first_);
    return {first, first + static_cast<ptrdiff_t>(bytes_)};
  }
  [[nodiscard]] bool guardsStand() const {
    for (size_t i = 0; i < all_.size(); ++i) {
      if ((i < first_ || i >= first_ + bytes_) && all_[i] != kGuard) {
        return false;
      }
    }
    return true;
  }

private:
  size_t bytes_;
  std::vector<uint8_t> all_;
  size_t first_;
};

/// An input that ends where its memory does, so that the address sanitizer sees what is read behind it, and that begins
/// there if it is not moved.
class Input {
public:
  Input(size_t bytes, size_t shift, uint32_t seed) : all_(bytes + shift), shift_(shift) {
    uint32_t state = seed * 2654435761U + 12345U;
    for (uint8_t &byte : all_) {
      state = state * 1664525U + 1013904223U;
      byte = static_cast<uint8_t>(state >> 24);
    }
  }
  [[nodiscard]] uint8_t *data() { return all_.data() + shift_; }
  [[nodiscard]] const uint8_t *data() const { return all_.data() + shift_; }
  uint8_t operator[](size_t i) const { return all_[shift_ + i]; }

private:
  std::vector<uint8_t> all_;
  size_t shift_;
};

/// The levels of this machine.
inline std::vector<zqcc::LevelSet> levels() {
  std::vector<zqcc::LevelSet> sets{zqcc::setOf(zqcc::LEVEL_PORTABLE)};
  for (uint32_t level = 1; level < zqcc::LEVEL_COUNT; ++level) {
    const zqcc::LevelSet set = zqcc::setOf(static_cast<zqcc::Level>(level));
    if ((zqcc::detectedLevels() & set) != 0) {
      sets.push_back(set);
    }
  }
  return sets;
}

/// Every count up to a few vectors of macropixels, and some beyond.
inline std::vector<int32_t> counts() {
  std::vector<int32_t> all;
  for (int32_t count = 1; count <= 300; ++count) {
    all.push_back(count);
  }
  for (const int32_t count : {511, 640, 641, 1023, 1280, 1921, 4099}) {
    all.push_back(count);
  }
  return all;
}

inline std::string saying(zqcc::LevelSet level, int32_t count) {
  return "level set " + std::to_string(level) + ", count " + std::to_string(count);
}

inline constexpr zqp::PackedOrder kOrders[] = {{0, 2, 1, 3}, {1, 3, 0, 2}, {0, 2, 3, 1}, {1, 3, 2, 0},
                                               {2, 0, 1, 3}, {3, 1, 0, 2}, {2, 0, 3, 1}, {3, 1, 2, 0}};

} // namespace rowtest
