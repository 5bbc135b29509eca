// Several samples at once, as one word from or to any address.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace zqcc {

static_assert(std::endian::native == std::endian::little, "the first sample of a word must stand in its low bits");

template <class Word>
Word loadBytes(const uint8_t *p) {
  Word word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

template <class Word>
void storeBytes(uint8_t *p, Word word) {
  std::memcpy(p, &word, sizeof word);
}

} // namespace zqcc
