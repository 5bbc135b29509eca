// What the fuzzers read their decisions from, and what the seed program writes them to: the same calls in the same
// order on both sides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace fuzz {

/// Bytes in the order they stand; zeros once they are used up.
class Script {
public:
  Script(const uint8_t *bytes, std::size_t count) : bytes_(bytes), left_(count) {}
  [[nodiscard]] bool done() const { return left_ == 0; }

  uint8_t byte() {
    if (left_ == 0) {
      return 0;
    }
    --left_;
    return *bytes_++;
  }
  uint32_t word() {
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
      value |= static_cast<uint32_t>(byte()) << 8 * i;
    }
    return value;
  }
  int32_t number() { return static_cast<int32_t>(word()); }
  int below(int count) { return byte() % count; }
  double real() {
    const uint64_t bits = word() | static_cast<uint64_t>(word()) << 32;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  /// Mostly a small size; now and then any number at all.
  int32_t size() {
    const uint8_t first = byte();
    if (first < 200) {
      return first % 72;
    }
    return first < 240 ? first % 16 * 256 + byte() : number();
  }

private:
  const uint8_t *bytes_;
  std::size_t left_;
};

/// Writes what Script reads.
class ScriptWriter {
public:
  void byte(uint8_t value) { bytes_.push_back(value); }
  void word(uint32_t value) {
    for (int i = 0; i < 4; ++i) {
      byte(static_cast<uint8_t>(value >> 8 * i));
    }
  }
  void real(double value) {
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    word(static_cast<uint32_t>(bits));
    word(static_cast<uint32_t>(bits >> 32));
  }
  /// 0..71
  void size(int value) { byte(static_cast<uint8_t>(value)); }
  [[nodiscard]] const std::vector<uint8_t> &bytes() const { return bytes_; }

private:
  std::vector<uint8_t> bytes_;
};

/// The library's types and one code that is none, so that a byte chooses.
inline constexpr int kTypes[] = {0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37, 5};
inline constexpr int kTypeCount = 23;

} // namespace fuzz
