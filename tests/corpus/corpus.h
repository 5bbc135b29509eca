// What the corpus of zqColorConversion consists of.
#pragma once

#include "hash_file.h"

#include <vector>

namespace corpus {

/// Every accepted description of the handle interface, as "in out resize rotation quality", each over several sizes,
/// strides, addresses and matrices; one entry an input type holds the codes of all descriptions that are refused.
std::vector<Entry> handleEntries();

/// The nine one-shot functions, by name and the arguments that choose the route.
std::vector<Entry> oneShotEntries();

} // namespace corpus
