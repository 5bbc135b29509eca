// The tests' main program: GoogleTest's, and --level NAME, which holds the library at a level of vector code.
#include "support/levels.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <string_view>

int main(int count, char **words) {
  testing::InitGoogleMock(&count, words);
  for (int i = 1; i < count; ++i) {
    if (std::string_view(words[i]) != "--level" || i + 1 == count) {
      std::fprintf(stderr, "usage: %s [--gtest_...] [--level NAME]\n", words[0]);
      return 2;
    }
    if (const int status = support::holdAtLevel(words[++i])) {
      return status;
    }
  }
  return RUN_ALL_TESTS();
}
