#include "noise.h"

namespace corpus {

void Hash::add(const uint8_t *bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    value_ = (value_ ^ bytes[i]) * UINT64_C(0x100000001B3);
  }
}

void Hash::add(uint32_t word) {
  for (int shift = 0; shift < 32; shift += 8) {
    const auto byte = static_cast<uint8_t>(word >> shift);
    add(&byte, 1);
  }
}

void generate(uint8_t *bytes, std::size_t count, uint32_t seed) {
  static constexpr uint8_t kEnds[8] = {0, 255, 16, 235, 240, 128, 1, 254};
  uint32_t state = seed * 2654435761u + 1;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525u + 1013904223u;
    const uint32_t draw = state >> 8;
    const bool atEnd = (draw & 7) == 0 || ((seed & 1) != 0 && (i >> 5 & 1) != 0);
    bytes[i] = atEnd ? kEnds[draw >> 3 & 7] : static_cast<uint8_t>(draw >> 16);
  }
}

uint8_t *alignedStart(std::vector<uint8_t> &store, unsigned misalign) {
  const auto address = reinterpret_cast<std::uintptr_t>(store.data());
  return store.data() + (kAlignment - address % kAlignment) % kAlignment + misalign;
}

} // namespace corpus
