// The corpus, converted at a level of vector code by the static build of the library: the hashes are the same at every
// level.
//
//   zqcc_corpus_levels --level NAME --check FILE
#include "corpus/hash_file.h"
#include "support/levels.h"

#include <cstdio>
#include <cstring>

int main(int count, char **words) {
  if (count != 5 || std::strcmp(words[1], "--level") != 0 || std::strcmp(words[3], "--check") != 0) {
    std::fprintf(stderr, "usage: zqcc_corpus_levels --level NAME --check FILE\n");
    return 2;
  }
  if (const int status = support::holdAtLevel(words[2])) {
    return status;
  }
  return corpus::check(corpus::allEntries(), words[4]);
}
