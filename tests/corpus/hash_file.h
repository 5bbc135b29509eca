// The corpus and the file that its hashes are kept in.
#pragma once

#include "corpus.h"

namespace corpus {

/// The whole corpus.
std::vector<Entry> allEntries();

/// "hash name".
std::string lineOf(const Entry &entry);

/// Compares with the hashes in a file and names what differs. 0 if nothing does, 2 if the file has none.
int check(const std::vector<Entry> &entries, const char *fileName);

/// Replaces the hashes in a file; 0 if it was written.
int write(const std::vector<Entry> &entries, const char *fileName);

} // namespace corpus
