// What the tests of the stages that find samples at other places share: rows, random ones, columns and weights.
#pragma once

#include "rows/scale.h"
#include "rows/stages.h"
#include "vector/detect.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace scale_rows {

/// All levels that the processor has, lowest first.
inline std::vector<const zqp::ScaleStages *> everyLevel() {
  std::vector<const zqp::ScaleStages *> stages;
  for (uint32_t level = 0; level < zqcc::LEVEL_COUNT; ++level) {
    const auto set = zqcc::setOf(static_cast<zqcc::Level>(level));
    if ((zqcc::detectedLevels() & set) != 0) {
      stages.push_back(zqp::stagesOf(set).scale);
    }
  }
  return stages;
}

/// A row that ends where its heap block ends, so that a sanitizer sees what is read or written behind it; in front of
/// it stand so many elements that alignments differ. Writers are checked by guards on either side.
template <class T>
class Row {
public:
  explicit Row(int32_t count, int32_t shift = 0)
      : elements_(static_cast<size_t>(count)), shift_(static_cast<size_t>(shift)), memory_(new T[elements_ + shift_]) {
    std::fill_n(memory_.get(), elements_ + shift_, kGuard);
  }
  Row(const std::vector<T> &values, int32_t shift) : Row(static_cast<int32_t>(values.size()), shift) {
    std::copy(values.begin(), values.end(), data());
  }
  T *data() { return memory_.get() + shift_; }
  std::vector<T> values(int32_t count) { return {data(), data() + count}; }
  bool isWhole(int32_t written) const {
    const auto untouched = [](T value) { return value == kGuard; };
    return std::all_of(memory_.get(), memory_.get() + shift_, untouched) &&
           std::all_of(memory_.get() + shift_ + written, memory_.get() + shift_ + elements_, untouched);
  }

private:
  static constexpr T kGuard = static_cast<T>(0x5A5B5A5B);
  size_t elements_;
  size_t shift_;
  std::unique_ptr<T[]> memory_;
};

constexpr int32_t kGuards = 70; ///< elements behind an output that must stay as they are

class Random {
public:
  explicit Random(uint32_t seed) : engine_(seed) {}
  int32_t upTo(int32_t most) { return static_cast<int32_t>(engine_() % (static_cast<uint32_t>(most) + 1)); }
  std::vector<uint8_t> bytes(int32_t count) {
    std::vector<uint8_t> all(static_cast<size_t>(count));
    for (uint8_t &byte : all) {
      const int32_t kind = upTo(7);
      byte = static_cast<uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : upTo(255));
    }
    return all;
  }
  std::vector<int16_t> words(int32_t count) {
    std::vector<int16_t> all(static_cast<size_t>(count));
    for (int16_t &word : all) {
      const int32_t kind = upTo(7);
      word = static_cast<int16_t>(kind == 0 ? 0 : kind == 1 ? 32640 : upTo(32640));
    }
    return all;
  }

private:
  std::mt19937 engine_;
};

inline int64_t floorDivide(int64_t number, int64_t by) {
  return number >= 0 ? number / by : -((-number + by - 1) / by);
}

inline size_t at(int64_t index) {
  return static_cast<size_t>(index);
}

inline int64_t mix(int64_t a, int64_t b, int64_t weight) {
  return a + floorDivide((b - a) * weight + 16384, 32768);
}

/// 64 byte aligned memory for a layout, as long as is asked for.
class LayoutMemory {
public:
  explicit LayoutMemory(size_t bytes)
      : memory_(static_cast<uint8_t *>(std::aligned_alloc(64, (bytes + 63) / 64 * 64)), std::free) {
    std::fill_n(memory_.get(), bytes, uint8_t{0xEE});
  }
  uint8_t *get() { return memory_.get(); }

private:
  std::unique_ptr<uint8_t, decltype(&std::free)> memory_;
};

/// Bilinear columns of `samples` samples seen as `outputs`; `doubled` says that positions lie on samples.
inline std::vector<zqp::Lerp> bilinear(int64_t samples, int64_t outputs, bool left) {
  std::vector<zqp::Lerp> columns;
  for (int64_t i = 0; i < outputs; ++i) {
    // 2 outputs t = (2 i + 1) samples - outputs, or 2 i samples
    const int64_t t = left ? 2 * i * samples : (2 * i + 1) * samples - outputs;
    const int64_t whole = floorDivide(t, 2 * outputs);
    const int64_t next = (t - whole * 2 * outputs) * 32768 / (2 * outputs);
    if (whole < 0 || whole >= samples - 1) {
      columns.push_back({static_cast<int32_t>(whole < 0 ? 0 : samples - 1), 0});
    } else {
      columns.push_back({static_cast<int32_t>(whole), static_cast<int32_t>(next)});
    }
  }
  return columns;
}

/// Beginnings and lengths of parts of `outputs` outputs.
inline std::vector<std::pair<int32_t, int32_t>> partsOf(int32_t outputs, Random &random) {
  std::vector<std::pair<int32_t, int32_t>> parts = {{0, outputs}};
  for (int k = 0; k < 3; ++k) {
    const int32_t first = random.upTo((outputs - 1) / 64) * 64;
    parts.emplace_back(first, 1 + random.upTo(outputs - first - 1));
  }
  return parts;
}

/// Weights that sum up to 1 << bits.
inline std::vector<int32_t> weightsOf(int32_t count, int32_t bits, Random &random) {
  std::vector<int32_t> cuts = {0, 1 << bits};
  const int32_t kind = random.upTo(3);
  for (int32_t i = 1; i < count; ++i) {
    const int64_t even = (int64_t{i} << bits) / count;
    cuts.push_back(kind == 0   ? static_cast<int32_t>(even)
                   : kind == 1 ? random.upTo(1 << bits)
                   : kind == 2 ? random.upTo(100)
                               : static_cast<int32_t>(even) / 128 * 128 + (i % 2 == 0 ? 64 : 63));
  }
  std::sort(cuts.begin(), cuts.end());
  std::vector<int32_t> weights;
  for (size_t i = 1; i < cuts.size(); ++i) {
    weights.push_back(cuts[i] - cuts[i - 1]);
  }
  return weights;
}

} // namespace scale_rows
