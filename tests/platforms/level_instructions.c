/* Executes instructions that came with a level of vector code: where the processor lacks them, the program ends with an
 * illegal instruction. Shows that an emulated processor refuses what it does not have. */
#include <stdio.h>
#include <string.h>

static void sse4(void) {
  unsigned long count = 3;
  __asm__ volatile("popcnt %0, %0" : "+r"(count));
  __asm__ volatile("pshufb %%xmm0, %%xmm0" ::: "xmm0");
  __asm__ volatile("pmovzxbw %%xmm0, %%xmm0" ::: "xmm0");
  __asm__ volatile("pcmpgtq %%xmm0, %%xmm0" ::: "xmm0");
}

static void avx2(void) {
  __asm__ volatile("vpaddw %%ymm0, %%ymm0, %%ymm0" ::: "xmm0");
}

static void avx512(void) {
  __asm__ volatile("vpaddw %%zmm0, %%zmm0, %%zmm0" ::: "xmm0");
}

int main(int count, char **words) {
  const char *level = count == 2 ? words[1] : "";
  if (strcmp(level, "sse4") == 0) {
    sse4();
  } else if (strcmp(level, "avx2") == 0) {
    avx2();
  } else if (strcmp(level, "avx512") == 0) {
    avx512();
  } else {
    fprintf(stderr, "usage: level_instructions sse4|avx2|avx512\n");
    return 2;
  }
  return 0;
}
