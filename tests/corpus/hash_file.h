// A corpus and the file that its hashes are kept in. Each library has a corpus of its own, as an entries.cpp that is
// linked with the rest: what is checked and how is the same.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corpus {

/// A named combination and the hash of all that it wrote and returned.
struct Entry {
  std::string name;
  uint64_t hash;
};

/// The whole corpus.
std::vector<Entry> allEntries();

/// What the names in it consist of.
extern const char *const kNamesAre;

/// "hash name".
std::string lineOf(const Entry &entry);

/// Compares with the hashes in a file and names what differs. 0 if nothing does, 2 if the file has none.
int check(const std::vector<Entry> &entries, const char *fileName);

/// Replaces the hashes in a file; 0 if it was written.
int write(const std::vector<Entry> &entries, const char *fileName);

} // namespace corpus
