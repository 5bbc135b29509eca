#include "frame/memory_ledger.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

// The linker makes these names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void *__real_malloc(std::size_t size);
void __real_free(void *block);
void *__wrap_malloc(std::size_t size);
void __wrap_free(void *block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace memory {
namespace {

constexpr std::size_t kLargest = std::size_t{1} << 26; // no test's honest request comes near it
constexpr std::size_t kPretended = 4096;
int failures = 0;
int checks = 0;

} // namespace

Ledger ledger;

int Ledger::liveCount() const {
  int count = 0;
  for (const void *block : live) {
    count += block != nullptr ? 1 : 0;
  }
  return count;
}

void begin(int failAt) {
  ledger = Ledger{};
  ledger.failAt = failAt;
  ledger.watching = true;
}

bool failureReached() {
  return ledger.failAt != 0 && ledger.asked >= ledger.failAt;
}

void finish(const char *scenario, int n) {
  ledger.watching = false;
  check(ledger.liveCount() == 0, "every block is released", scenario, n);
  check(!ledger.unknownFree, "only live blocks are released", scenario, n);
}

void check(bool holds, const char *what, const char *scenario, int n) {
  ++checks;
  if (!holds) {
    ++failures;
    std::fprintf(stderr, "FAILED: %s (%s, allocation %d fails)\n", what, scenario, n);
  }
}

int report(int least) {
  if (failures != 0) {
    std::fprintf(stderr, "%d of %d checks failed\n", failures, checks);
    return 1;
  }
  std::printf("allocations: %d checks passed\n", checks);
  return checks > least ? 0 : 1;
}

} // namespace memory

using memory::ledger;

void *__wrap_malloc(std::size_t size) {
  if (!ledger.watching) {
    return __real_malloc(size);
  }
  const int number = ++ledger.asked;
  if (static_cast<std::size_t>(number) <= ledger.sizes.size()) {
    ledger.sizes[static_cast<std::size_t>(number) - 1] = size;
  }
  const bool large = size > memory::kLargest;
  if (number == ledger.failAt || (large && !ledger.pretends)) {
    return nullptr;
  }
  const std::size_t given = large ? memory::kPretended : size;
  void *block = __real_malloc(given);
  if (block != nullptr) {
    std::memset(block, 0xEE, given); // nobody may count on zeros
  }
  for (void *&slot : ledger.live) {
    if (slot == nullptr) {
      slot = block;
      return block;
    }
  }
  std::fprintf(stderr, "FAILED: more than %zu blocks alive\n", ledger.live.size());
  std::exit(1);
}

void __wrap_free(void *block) {
  if (ledger.watching && block != nullptr) {
    bool known = false;
    for (void *&slot : ledger.live) {
      if (slot == block) {
        slot = nullptr;
        known = true;
        break;
      }
    }
    ledger.unknownFree = ledger.unknownFree || !known;
  }
  __real_free(block);
}
