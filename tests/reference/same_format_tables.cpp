#include "reference/same_format_tables.h"

#include "reference/tables.h"

namespace reference {

namespace {

Tap tripleOf(const Words &words, std::size_t at) {
  return {words.at(at), words.at(at + 1), words.at(at + 2)};
}

} // namespace

std::vector<int32_t> nearestPositions(int source, int count) {
  return nearest(source, count);
}

std::vector<Tap> bilinearPositions(int source, int count) {
  const Words words = bilinear(source, count);
  std::vector<Tap> taps;
  for (std::size_t at = 0; at < words.size(); at += 3) {
    taps.push_back(tripleOf(words, at));
  }
  return taps;
}

std::vector<Tap> blockPositions(int source, int count) {
  const Words words = grouped(source, count);
  std::vector<Tap> taps;
  std::size_t at = 0;
  while (at < words.size()) {
    const auto members = static_cast<std::size_t>(words.at(at++));
    for (std::size_t i = 0; i < members; ++i, at += 3) {
      taps.push_back(tripleOf(words, at));
    }
  }
  return taps;
}

std::vector<FiveTaps> filteredPositions(int source, int count, uint32_t quality, Axis axis) {
  const Words words = filtered(source, count, static_cast<int>(quality), axis == Axis::Horizontal);
  std::vector<FiveTaps> entries;
  for (std::size_t at = 0; at < words.size(); at += 15) {
    FiveTaps taps{};
    for (std::size_t k = 0; k < taps.size(); ++k) {
      taps[k] = tripleOf(words, at + 3 * k);
    }
    entries.push_back(taps);
  }
  return entries;
}

} // namespace reference
