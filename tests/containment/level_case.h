// One conversion at a level of vector code and at the portable one, in memory that ends where the planes end: the bytes
// must be the same, of the pictures and of everything around them.
#pragma once

#include "base/levels.h"
#include "containment/cells.h"
#include "reference/direct_case.h"
#include "support/guarded_pages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace containment {

/// Where planes lie: against the unmapped page behind them or in front of them, or so that the first bytes of the
/// planes lie as many bytes behind a multiple of 64 as the case says, with unmapped pages behind them.
enum class Placement { End, Start, Aligned };

struct LevelCase {
  Mode mode;
  Sizes sizes{};
  int inStride = 0; ///< may be shorter than a line
  int outStride = 0;
  Placement placement = Placement::End;
  std::size_t inAlignment = 0;
  std::size_t outAlignment = 0;
  uint32_t seed = 1;
  reference::MatrixChoice matrix{};

  [[nodiscard]] std::string describe() const;
};

class LevelBench {
public:
  explicit LevelBench(std::size_t bytesPerPlane);

  struct Outcome {
    uint32_t code = CC_OK;
    std::string report; ///< empty when both levels did the same and kept inside their memory
  };
  Outcome compare(const LevelCase &c, zqcc::Level level);

private:
  using Bytes = std::vector<uint8_t>;
  struct Result {
    uint32_t code = CC_OK;
    std::string report;
    std::array<Bytes, 3> planes;
  };
  void placeInputs(const LevelCase &c, ConvertParams &params);
  void placeOutputs(const LevelCase &c, ConvertParams &params);
  Result convertAt(zqcc::Level level, const LevelCase &c, ConvertParams params);

  std::array<std::unique_ptr<support::GuardedPages>, 3> in_;
  std::array<std::unique_ptr<support::GuardedPages>, 3> out_;
};

} // namespace containment
