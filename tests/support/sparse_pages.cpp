#include "support/sparse_pages.h"

#include <cerrno>
#include <cstddef>
#include <cstring>

#include <sys/mman.h>

namespace support {
namespace {

constexpr uint64_t kPage = 65536; // the largest there is
constexpr uint64_t kGuard = 16 * kPage;

} // namespace

SparsePages::SparsePages(uint64_t bytes) {
#ifdef ZQCC_CROSS_COMPILED
  (void)bytes;
  reason_ = "emulators keep a record of every page of a mapping";
#else
  if (sizeof(void *) < 8) {
    reason_ = "addresses have 32 bits";
    return;
  }
  const uint64_t whole = (bytes + kPage - 1) / kPage * kPage;
  reserved_ = whole + 2 * kGuard;
  constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void *memory = mmap(nullptr, static_cast<std::size_t>(reserved_), PROT_NONE, kFlags, -1, 0);
  if (memory == MAP_FAILED) {
    reason_ = std::string("no room for sparse pages: ") + std::strerror(errno);
    return;
  }
  first_ = static_cast<uint8_t *>(memory) + kGuard;
  if (mprotect(first_, static_cast<std::size_t>(whole), PROT_READ | PROT_WRITE) != 0) {
    reason_ = std::string("sparse pages cannot be had: ") + std::strerror(errno);
    munmap(memory, static_cast<std::size_t>(reserved_));
    first_ = nullptr;
    return;
  }
  // A huge page would be filled for every line that is touched. Kernels without huge pages refuse, and need not know.
  (void)madvise(first_, static_cast<std::size_t>(whole), MADV_NOHUGEPAGE);
#endif
}

SparsePages::~SparsePages() {
  if (first_ != nullptr) {
    munmap(first_ - kGuard, static_cast<std::size_t>(reserved_));
  }
}

} // namespace support
