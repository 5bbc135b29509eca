// What the pictures of a corpus show, and the hash of what is made of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corpus {

/// FNV-1a with 64 bits.
class Hash {
public:
  void add(const uint8_t *bytes, std::size_t count);
  void add(uint32_t word);
  [[nodiscard]] uint64_t value() const { return value_; }

private:
  uint64_t value_ = UINT64_C(0xCBF29CE484222325);
};

/// Noise; every eighth byte, and long runs with an odd seed, sit at an end of the range, where saturation shows.
void generate(uint8_t *bytes, std::size_t count, uint32_t seed);

/// Buffers begin `misalign` bytes behind a multiple of this.
inline constexpr std::size_t kAlignment = 64;
uint8_t *alignedStart(std::vector<uint8_t> &store, unsigned misalign);

} // namespace corpus
