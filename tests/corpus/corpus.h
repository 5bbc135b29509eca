// What the corpus consists of: named combinations and the hash of all that each of them wrote and returned.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corpus {

struct Entry {
  std::string name;
  uint64_t hash;
};

/// Every accepted description of the handle interface, as "in out resize rotation quality", each over several sizes,
/// strides, addresses and matrices; one entry an input type holds the codes of all descriptions that are refused.
std::vector<Entry> handleEntries();

/// The nine one-shot functions, by name and the arguments that choose the route.
std::vector<Entry> oneShotEntries();

} // namespace corpus
