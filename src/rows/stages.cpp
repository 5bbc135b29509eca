#include "rows/stages.h"

namespace zqp {

#define ZQP_LEVEL(N)                                                                                                   \
  namespace N {                                                                                                        \
  extern const FetchStages kFetchStages;                                                                               \
  extern const PlaceStages kPlaceStages;                                                                               \
  extern const ScaleStages kScaleStages;                                                                               \
  extern const ColourStages kColourStages;                                                                             \
  }
#define ZQP_STAGES(N)                                                                                                  \
  { &N::kFetchStages, &N::kPlaceStages, &N::kScaleStages, &N::kColourStages }

ZQP_LEVEL(N_EMU128)
#if ZQCC_VECTOR && defined(__x86_64__)
ZQP_LEVEL(N_SSE4)
ZQP_LEVEL(N_AVX2)
ZQP_LEVEL(N_AVX3)
#elif ZQCC_VECTOR
ZQP_LEVEL(N_NEON)
#endif

namespace {

constexpr Stages kPortable = ZQP_STAGES(N_EMU128);
#if ZQCC_VECTOR && defined(__x86_64__)
constexpr Stages kSse4 = ZQP_STAGES(N_SSE4);
constexpr Stages kAvx2 = ZQP_STAGES(N_AVX2);
constexpr Stages kAvx512 = ZQP_STAGES(N_AVX3);
constexpr zqcc::PerLevel<const Stages *> kStages = {{&kPortable, &kSse4, &kAvx2, &kAvx512, nullptr}};
#elif ZQCC_VECTOR
constexpr Stages kNeon = ZQP_STAGES(N_NEON);
constexpr zqcc::PerLevel<const Stages *> kStages = {{&kPortable, nullptr, nullptr, nullptr, &kNeon}};
#else
constexpr zqcc::PerLevel<const Stages *> kStages = {{&kPortable, nullptr, nullptr, nullptr, nullptr}};
#endif

} // namespace

const Stages &stagesOf(zqcc::LevelSet usable) {
  return *kStages.in(usable);
}

} // namespace zqp
