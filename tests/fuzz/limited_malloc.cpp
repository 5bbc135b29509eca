// The memory of a small machine: the linker puts this in malloc's place (--wrap=malloc). Set-ups that need more must
// say so, and a product that has lost its upper half asks for too little.
#include "fuzz/records.h"

#include <cstddef>

// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names
extern "C" void *__real_malloc(std::size_t bytes);

extern "C" void *__wrap_malloc(std::size_t bytes) {
  return bytes > static_cast<std::size_t>(fuzz::kLargestMalloc) ? nullptr : __real_malloc(bytes);
}
// NOLINTEND(bugprone-reserved-identifier)
