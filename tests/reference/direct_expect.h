// Assertions on same-size conversions.
#pragma once

#include "reference/direct_case.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace reference {

inline testing::AssertionResult verdict(const DirectCase &c, const Comparison &result) {
  if (result.code != CC_OK) {
    return testing::AssertionFailure() << c.describe() << ": code 0x" << std::hex << result.code;
  }
  if (!result.difference.empty()) {
    return testing::AssertionFailure() << c.describe() << ": " << result.difference;
  }
  return testing::AssertionSuccess();
}

/// Success when the library answers CC_OK and has written exactly the model's bytes.
inline testing::AssertionResult matches(const DirectCase &c) {
  return verdict(c, compareDirect(c));
}
inline testing::AssertionResult matches(const DirectCase &c, const support::Picture &picture) {
  return verdict(c, compareDirect(c, picture));
}

/// Success when the library refuses the record with CC_ERR_ARGUMENT, leaves the canvas alone and keeps the record.
inline testing::AssertionResult refuses(ConvertParams params, const support::Canvas &canvas) {
  const ConvertParams before = params;
  const uint32_t code = support::convertOnce(params);
  if (code != CC_ERR_ARGUMENT) {
    return testing::AssertionFailure() << "type " << params.inType << " to " << params.outType << ", " << params.inWidth
                                       << "x" << params.inHeight << ", rotation " << params.rotation << ": code 0x"
                                       << std::hex << code;
  }
  if (!canvas.touched().empty()) {
    return testing::AssertionFailure() << "bytes written: " << canvas.touched();
  }
  if (params.inBuf[1] != before.inBuf[1] || params.inBuf[2] != before.inBuf[2]) {
    return testing::AssertionFailure() << "the record's planes have changed";
  }
  return testing::AssertionSuccess();
}

/// Sizes, strides, alignments and contents of one type pair, thinned: each (width, height) of the list comes once, the
/// other properties turn over from case to case, so that neighbours differ in all of them.
class Grid {
public:
  Grid(int inType, int outType, std::vector<int> rotations) : rotations_(std::move(rotations)) {
    case_.inType = inType;
    case_.outType = outType;
  }
  Grid &with(const MatrixChoice &matrix) {
    case_.matrix = matrix;
    return *this;
  }
  [[nodiscard]] testing::AssertionResult run(const std::vector<Size> &sizes, uint32_t start = 0) {
    static constexpr int kInExtra[] = {0, 16, 1, 7, 2, 33};
    static constexpr int kOutExtra[] = {0, 0, 2, 1, 64, 0, 3, 34};
    uint32_t n = start * 5;
    for (const Size &size : sizes) {
      if (!holdsSamples(case_.inType, size.width, size.height)) {
        continue;
      }
      for (const int rotation : rotations_) {
        DirectCase c = case_;
        c.width = size.width;
        c.height = size.height;
        c.rotation = rotation;
        c.inExtra = kInExtra[n % 6];
        c.outExtra = kOutExtra[(n / 3) % 8];
        c.misalign = (n * 7) % 4;
        c.fill = static_cast<support::Fill>((n / 5) % 3);
        c.seed = n + 1;
        ++n;
        if (const testing::AssertionResult result = matches(c); !result) {
          return result;
        }
      }
    }
    return n > start * 5 ? testing::AssertionSuccess() : testing::AssertionFailure() << "no case was run";
  }

private:
  DirectCase case_;
  std::vector<int> rotations_;
};

/// Sizes that matter to 16x16 blocks, against each other; every `thin`-th pair.
inline std::vector<Size> blockSizes(int thin, int first = 0) {
  static constexpr int kSides[] = {1, 2, 3, 4, 5, 7, 8, 15, 16, 17, 18, 19, 31, 32, 33, 34, 47, 48, 49, 63, 64, 65, 70};
  std::vector<Size> sizes;
  int index = first;
  for (const int width : kSides) {
    for (const int height : kSides) {
      if (index++ % thin == 0) {
        sizes.push_back({width, height});
      }
    }
  }
  return sizes;
}

/// Pairs of 2..50 by 2..50, `perWidth` heights for each width.
inline std::vector<Size> smallSizes(int perWidth) {
  std::vector<Size> sizes;
  for (int width = 2; width <= 50; ++width) {
    for (int k = 0; k < perWidth; ++k) {
      sizes.push_back({width, 2 + (width * 11 + k * 49 / perWidth) % 49});
    }
  }
  return sizes;
}

inline const std::vector<int> &allRotations() {
  static const std::vector<int> kAll{0, 1, 2, 3, 4, 5, 6, 7};
  return kAll;
}

} // namespace reference
