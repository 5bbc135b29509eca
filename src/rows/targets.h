// How the stages of rows are compiled: to be included before anything of Highway, of which nothing but headers is used.
// A stage is one source for all levels. foreach_target.h includes it once for each level that the processor may have;
// the portable level, Highway's emulation of vectors of 16 bytes, is an object of its own (ZQP_PORTABLE), so that the
// compiler can be kept from what it does wrong there. All of a level stands in an anonymous namespace inside Highway's,
// apart from the table of its stages, and calls no inline function that is shared between levels: the linker may keep
// the copy of the widest level for all of them.
#pragma once

#define HWY_DISABLE_PCLMUL_AES
#define HWY_DISABLE_BMI2_FMA
#define HWY_DISABLE_F16C

#if ZQP_PORTABLE
#define HWY_COMPILE_ONLY_EMU128
#define HWY_BROKEN_EMU128    0 // what is broken is GCC's vectoriser, which the build turns off there
#define HWY_DISABLED_TARGETS HWY_SCALAR
#else
#define HWY_NO_LIBCXX
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_AVX3_DL | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)
#if defined(__x86_64__)
#define HWY_BASELINE_TARGETS HWY_SSE4
#elif defined(__aarch64__)
#define TOOLCHAIN_MISS_SYS_AUXV_H // NEON is the baseline: no pragma asks for cryptography, which would stop inlining
#endif
#endif
