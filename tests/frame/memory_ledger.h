// Watches and fails the library's allocations. Programs that use it are linked with -Wl,--wrap=malloc,--wrap=free
// against the static library: the wrappers stand between the library and the platform's (or a sanitizer's) allocator.
#pragma once

#include <array>
#include <cstddef>

namespace memory {

struct Ledger {
  bool watching = false;
  int failAt = 0; // 0: never
  int asked = 0;
  bool pretends = false; // large requests get a small block, for those who look at sizes only
  bool unknownFree = false;
  std::array<void *, 64> live{};
  std::array<std::size_t, 64> sizes{}; // of each request in turn

  [[nodiscard]] int liveCount() const;
};

extern Ledger ledger;

/// Starts a new ledger that fails the n-th allocation, or none for 0.
void begin(int failAt);
bool failureReached();
/// Closes the ledger: every block has been released, and nothing else.
void finish(const char *scenario, int n);

void check(bool holds, const char *what, const char *scenario, int n);
/// The program's exit status: no check has failed, and more than `least` were made.
int report(int least);

} // namespace memory
