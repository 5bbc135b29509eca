// How kernels are compiled for every level: to be included before anything of Highway, of which nothing but headers is
// used. A kernel is one source; foreach_target.h includes it once a level, with the code of each in a namespace of its
// own (HWY_NAMESPACE) and compiled for the processors that have it. All of a level stands in an anonymous namespace
// there, and it calls no inline function that is shared between levels: the linker may keep the copy of the widest
// level for all of them.
#pragma once

#define HWY_NO_LIBCXX
// Instructions that no kernel uses would have to be proved by CPUID.
#define HWY_DISABLE_PCLMUL_AES
#define HWY_DISABLE_BMI2_FMA
#define HWY_DISABLE_F16C
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_AVX3_DL | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)

#include "base/levels.h"

#if defined(__x86_64__)
#define HWY_BASELINE_TARGETS HWY_SSE4
/// The row of a PerLevel for a function that every level has.
#define ZQCC_EVERY_LEVEL(function)                                                                                     \
  {                                                                                                                    \
    { nullptr, N_SSE4::function, N_AVX2::function, N_AVX3::function, nullptr, nullptr }                                \
  }
#elif defined(__aarch64__)
#define TOOLCHAIN_MISS_SYS_AUXV_H // NEON is the baseline: no pragma asks for cryptography, which would stop inlining
#define ZQCC_EVERY_LEVEL(function)                                                                                     \
  {                                                                                                                    \
    { nullptr, nullptr, nullptr, nullptr, nullptr, N_NEON::function }                                                  \
  }
#endif
