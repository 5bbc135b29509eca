#include "kernels/five_point.h"

namespace zqcc {
namespace {

/// Line weights carry a factor of 16: the low byte of a sample is then the top byte of S modulo 2^32.
struct LowByte {
  static constexpr int kScale = 16;
  static uint32_t of(uint32_t sum) { return sum >> 24; }
};

struct WholeSample {
  static constexpr int kScale = 1;
  static uint32_t of(uint32_t sum) { return static_cast<uint32_t>(static_cast<int32_t>(sum) >> (2 * kWeightBits)); }
};

/// Sums wrap: what of them counts is exact modulo 2^32.
template <class Sample, bool isFirst>
void sumTap(const TapLines &line, const TapPlace *columns, int32_t count, int32_t *sums) {
  const uint8_t *top = line.top;
  const uint8_t *topNext = line.topNext;
  const uint8_t *bottom = line.bottom;
  const uint8_t *bottomNext = line.bottomNext;
  const auto self = static_cast<uint32_t>(line.weights.self * Sample::kScale);
  const auto next = static_cast<uint32_t>(line.weights.next * Sample::kScale);
  const auto one = [&](int32_t k) {
    const uint32_t at = columns[k].at;
    const uint32_t left = top[at] * self + bottom[at] * next;
    const uint32_t right = topNext[at] * self + bottomNext[at] * next;
    const uint32_t sum = (left << kWeightBits) + (right - left) * static_cast<uint32_t>(columns[k].next);
    sums[k] = (isFirst ? 0 : sums[k]) + static_cast<int32_t>(Sample::of(sum));
  };
  for (const int32_t *const end = sums + count; sums != end; sums += kColumnsAtOnce, columns += kColumnsAtOnce) {
    one(0);
    one(1);
    one(2);
    one(3);
  }
}

} // namespace

const SampleKind LOW_BYTES{sumTap<LowByte, true>, sumTap<LowByte, false>};
const SampleKind WHOLE_SAMPLES{sumTap<WholeSample, true>, sumTap<WholeSample, false>};

} // namespace zqcc
