#include "tables/clip_tables.h"

#include <array>
#include <cstddef>

namespace zqcc {
namespace {

/// The bytes of a table from index First to Last.
template <int First, int Last, class Rule>
constexpr auto makeTable(Rule rule) {
  std::array<uint8_t, static_cast<std::size_t>(Last - First + 1)> bytes{};
  for (int i = First; i <= Last; ++i) {
    bytes[static_cast<std::size_t>(i - First)] = static_cast<uint8_t>(rule(i));
  }
  return bytes;
}

constexpr auto kEight = makeTable<-384, 639>([](int i) { return clampTo(i, 16, 235); });
constexpr auto kSix = makeTable<-96, 159>([](int i) { return clampTo(i, 0, 63); });
constexpr auto kFive = makeTable<-48, 79>([](int i) { return clampTo(i >= 30 ? i - 1 : i, 0, 31); });
constexpr auto kSixHalved = makeTable<-96, 159>([](int i) { return clampTo(i, 0, 63) >> 1; });

} // namespace

constexpr const uint8_t *const CLIP_BASES[CLIP_TABLE_COUNT] = {
    kEight.data() + 384,
    kSix.data() + 96,
    kFive.data() + 48,
    kSixHalved.data() + 96,
};

} // namespace zqcc
