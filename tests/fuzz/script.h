// What the fuzzers read their decisions from, and what the seed program writes them to: the same calls in the same
// order on both sides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <vector>

namespace fuzz {

/// Sizes and strides whose products with each other or with small factors stand at the ends of 16, 31 and 32 bits, and
/// those at which tables and ratios end.
inline constexpr int64_t kLimits[] = {1 << 15,    40000,   46341,      1 << 16,    1 << 17,   1 << 18, 1 << 20,
                                      1 << 21,    1 << 22, 1 << 23,    1 << 24,    1 << 28,   1 << 29, 715827883,
                                      1073741816, 1 << 30, 1431655766, 0x7FFFFFF0, 0x7FFFFFFF};
inline constexpr int kDistances[] = {0, 1, -1, 2, -2, 8, -8, 16, -16};

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
  int below(std::size_t count) { return static_cast<int>(byte() % count); }
  double real() {
    const uint64_t bits = word() | static_cast<uint64_t>(word()) << 32;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  /// Mostly a small size; now and then one beside a limit, or any number at all.
  int32_t size() {
    const uint8_t first = byte();
    if (first < 200) {
      return first % 72;
    }
    if (first < 240) {
      return first % 16 * 256 + byte();
    }
    return first < 245 ? nearLimit() : number();
  }
  /// A number at which something overflows or is refused, or one close to it.
  int32_t nearLimit() {
    const int64_t limit = kLimits[below(std::size(kLimits))];
    return near(limit);
  }
  /// The limit or a number close to it, as far as 32 bits go.
  int32_t near(int64_t limit) {
    const int64_t value = limit + kDistances[below(std::size(kDistances))];
    return static_cast<int32_t>(value < INT32_MAX ? value : INT32_MAX);
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
  void size(int32_t value) {
    if (value >= 0 && value < 72) {
      byte(static_cast<uint8_t>(value));
    } else {
      any(value);
    }
  }
  /// A number where a size, a stride or a place is read.
  void any(int32_t value) {
    byte(0xFF);
    word(static_cast<uint32_t>(value));
  }
  [[nodiscard]] const std::vector<uint8_t> &bytes() const { return bytes_; }

private:
  std::vector<uint8_t> bytes_;
};

/// The library's types and one code that is none, so that a byte chooses.
inline constexpr int kTypes[] = {0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37, 5};
inline constexpr int kTypeCount = 23;

} // namespace fuzz
