// Rows between guards, and the levels that they are made at.
#pragma once

#include "rows/stages.h"
#include "vector/detect.h"

#include <cstdint>
#include <vector>

namespace zqp::lines {

inline constexpr uint8_t kGuard = 0xA5;
inline constexpr size_t kGuards = 70;

inline std::vector<zqcc::Level> levels() {
  std::vector<zqcc::Level> all;
  for (uint32_t level = 0; level < zqcc::LEVEL_COUNT; ++level) {
    const auto each = static_cast<zqcc::Level>(level);
    if (each == zqcc::LEVEL_PORTABLE || (zqcc::detectedLevels() & zqcc::setOf(each)) != 0) {
      all.push_back(each);
    }
  }
  return all;
}
inline const ColourStages &stagesAt(zqcc::Level level) {
  return *stagesOf(zqcc::setOf(level)).colour;
}

/// Memory that ends with the row and begins at any address, so that a sanitizer sees what is read past either end.
template <class Sample>
class Row {
public:
  Row(size_t count, size_t skew) : memory(skew * sizeof(Sample) + count * sizeof(Sample)), first(skew) {}
  Sample *begin() { return reinterpret_cast<Sample *>(memory.data()) + first; }
  Sample &operator[](size_t i) { return begin()[i]; }

private:
  std::vector<uint8_t> memory;
  size_t first;
};

} // namespace zqp::lines
