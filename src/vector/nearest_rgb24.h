// Output lines of 24-bit pixels whose samples are the nearest ones of a source line: luma and chroma are picked by the
// plan of the columns, a chroma sample for every pixel.
#pragma once

#include "base/job.h"

#if ZQCC_VECTOR
#include "vector/resize_plan.h"
#include "vector/scale_rows.h"
#endif

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// One source line, or two that share their chroma, and where their pixels go. Of one line the second pointers are not
/// looked at.
struct NearestLines {
  const uint8_t *luma[2];
  const uint8_t *u;
  const uint8_t *v;
  uint8_t *to[2];
  int32_t lines;
};

#if ZQCC_VECTOR

class NearestRgb24 {
public:
  /// False if the frame's pixels cannot be made this way. `lastChroma` is the last chroma column of a line that may be
  /// read.
  bool prepare(const Job &job, int32_t lastChroma);

  void make(const NearestLines &lines) const;

private:
  const ResizePlan *plan_ = nullptr;
  PickRow pick_ = nullptr;
  ColourRows pair_ = nullptr;
  ColourRows single_ = nullptr;
  int32_t width_ = 0;
  ColourConstants constants_{};
};

#else

class NearestRgb24 {
public:
  static constexpr bool prepare(const Job & /*job*/, int32_t /*lastChroma*/) { return false; }
  static void make(const NearestLines & /*lines*/) {}
};

#endif

} // namespace zqcc
