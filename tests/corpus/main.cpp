// Hashes of everything that a library writes for a fixed corpus of small conversions. They must be the same on every
// platform, with every compiler and at every optimisation level; a changed hash is a change of behaviour.
//
//   zqcc_corpus              prints "hash name" for every combination
//   zqcc_corpus --check FILE compares with the hashes in FILE and names what differs
//   zqcc_corpus --write FILE replaces the hashes in FILE
#include "hash_file.h"

#include <cstdio>
#include <cstring>

int main(int argc, char **argv) {
  const bool checks = argc == 3 && std::strcmp(argv[1], "--check") == 0;
  const bool writes = argc == 3 && std::strcmp(argv[1], "--write") == 0;
  if (argc != 1 && !checks && !writes) {
    std::fprintf(stderr, "usage: zqcc_corpus [--check FILE | --write FILE]\n");
    return 2;
  }
  const std::vector<corpus::Entry> entries = corpus::allEntries();
  if (checks) {
    return corpus::check(entries, argv[2]);
  }
  if (writes) {
    return corpus::write(entries, argv[2]);
  }
  for (const corpus::Entry &entry : entries) {
    std::printf("%s\n", corpus::lineOf(entry).c_str());
  }
  return 0;
}
