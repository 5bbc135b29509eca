// Prints the levels of vector code that the library finds here, on one line.
#include "vector/detect.h"

#include <cstdio>

int main() {
  constexpr const char *kNames[zqcc::LEVEL_COUNT] = {"portable", "sse4", "avx2", "avx512", "avx512vbmi", "neon"};
  const char *separator = "";
  for (uint32_t level = 0; level < zqcc::LEVEL_COUNT; ++level) {
    if ((zqcc::detectedLevels() & zqcc::LevelSet{1} << level) != 0) {
      std::printf("%s%s", separator, kNames[level]);
      separator = " ";
    }
  }
  std::printf("\n");
  return 0;
}
