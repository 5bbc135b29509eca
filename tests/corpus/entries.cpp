// The corpus of zqColorConversion.
#include "corpus.h"
#include "hash_file.h"

#include <utility>

namespace corpus {

const char *const kNamesAre = "in out resize rotation quality, or a function and its arguments";

std::vector<Entry> allEntries() {
  std::vector<Entry> entries = handleEntries();
  for (Entry &entry : oneShotEntries()) {
    entries.push_back(std::move(entry));
  }
  return entries;
}

} // namespace corpus
