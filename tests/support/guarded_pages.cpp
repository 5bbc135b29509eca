#include "support/guarded_pages.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

namespace support {
namespace {

constexpr std::size_t kWatched = 4096;

/// Poison from position i on, kWatched bytes of it. Depends on the distance from the page's start, so that a block
/// moved by a few bytes is no longer whole; repeats after 256 bytes.
const uint8_t *poisonFrom(std::size_t i) {
  static const auto kPoison = [] {
    std::array<uint8_t, kWatched + 256> bytes{};
    for (std::size_t k = 0; k < bytes.size(); ++k) {
      bytes[k] = static_cast<uint8_t>(0xA5U ^ (k * 29U));
    }
    return bytes;
  }();
  return kPoison.data() + i % 256;
}

[[noreturn]] void giveUp(const char *what) {
  std::perror(what);
  std::abort();
}

void *mapOrDie(void *at, std::size_t bytes, int protection, int flags, int file) {
  void *memory = mmap(at, bytes, protection, flags, file, 0);
  if (memory == MAP_FAILED) {
    giveUp("mmap");
  }
  return memory;
}

} // namespace

GuardedPages::GuardedPages(std::size_t capacity, Access access) : guard_(static_cast<std::size_t>(getpagesize()) * 16) {
  const auto page = static_cast<std::size_t>(getpagesize());
  capacity_ = (capacity + page - 1) / page * page;
  const int file = memfd_create("guarded", 0);
  if (file < 0 || ftruncate(file, static_cast<off_t>(capacity_)) != 0) {
    giveUp("memfd_create");
  }
  reserved_ = static_cast<uint8_t *>(
      mapOrDie(nullptr, capacity_ + 2 * guard_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1));
  const int protection = access == Access::ReadOnly ? PROT_READ : PROT_READ | PROT_WRITE;
  seen_ = static_cast<uint8_t *>(mapOrDie(reserved_ + guard_, capacity_, protection, MAP_SHARED | MAP_FIXED, file));
  written_ = static_cast<uint8_t *>(mapOrDie(nullptr, capacity_, PROT_READ | PROT_WRITE, MAP_SHARED, file));
  close(file);
}

GuardedPages::~GuardedPages() {
  munmap(reserved_, capacity_ + 2 * guard_);
  munmap(written_, capacity_);
}

void GuardedPages::place(std::size_t bytes, Against against, std::size_t distance) {
  if (bytes + distance > capacity_) {
    giveUp("the buffer is larger than the guarded pages");
  }
  size_ = bytes;
  offset_ = against == Against::End ? capacity_ - bytes - distance : distance;
  const Window watched = window();
  const std::size_t front = offset_ - watched.before;
  const std::size_t back = offset_ + size_;
  std::memcpy(written_ + front, poisonFrom(front), watched.before);
  std::memcpy(written_ + back, poisonFrom(back), watched.behind);
}

GuardedPages::Window GuardedPages::window() const {
  return {std::min(kWatched, offset_), std::min(kWatched, capacity_ - offset_ - size_)};
}

std::optional<std::ptrdiff_t> GuardedPages::damage() const {
  const Window watched = window();
  const std::size_t front = offset_ - watched.before;
  const std::size_t back = offset_ + size_;
  if (std::memcmp(written_ + front, poisonFrom(front), watched.before) == 0 &&
      std::memcmp(written_ + back, poisonFrom(back), watched.behind) == 0) {
    return std::nullopt;
  }
  for (std::size_t i = 1; i <= watched.before; ++i) {
    if (written_[offset_ - i] != *poisonFrom(offset_ - i)) {
      return -static_cast<std::ptrdiff_t>(i);
    }
  }
  std::size_t i = back;
  while (written_[i] == *poisonFrom(i)) {
    ++i;
  }
  return static_cast<std::ptrdiff_t>(i - offset_);
}

bool GuardedPages::covers(std::uintptr_t address) const {
  const auto start = reinterpret_cast<std::uintptr_t>(reserved_);
  return address >= start && address < start + capacity_ + 2 * guard_;
}

// --- Faults ----------------------------------------------------------------------------------------------------------

namespace {

// One call at a time is guarded, in one thread.
sigjmp_buf escape;
volatile sig_atomic_t guarded = 0;
Fault lastFault;

Fault::Kind kindOf([[maybe_unused]] const ucontext_t &context) {
#if defined(__x86_64__) || defined(__i386__)
  constexpr unsigned kWriteBit = 2; // of the page-fault error code
  const auto code = static_cast<unsigned long>(context.uc_mcontext.gregs[REG_ERR]);
  return (code & kWriteBit) != 0 ? Fault::Kind::Write : Fault::Kind::Read;
#else
  return Fault::Kind::Unknown;
#endif
}

void onFault(int signal, siginfo_t *info, void *context) {
  if (guarded == 0) {
    std::signal(signal, SIG_DFL);
    return; // the access is made again and ends the program
  }
  lastFault.address = reinterpret_cast<std::uintptr_t>(info->si_addr);
  lastFault.kind = kindOf(*static_cast<const ucontext_t *>(context));
  guarded = 0;
  siglongjmp(escape, 1);
}

/// Guards for the time of one call, so that faults elsewhere get the usual report.
class Handlers {
public:
  Handlers() {
    struct sigaction action {};
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigaction(SIGSEGV, &action, &segv_);
    sigaction(SIGBUS, &action, &bus_);
  }
  Handlers(const Handlers &) = delete;
  Handlers &operator=(const Handlers &) = delete;
  ~Handlers() {
    sigaction(SIGSEGV, &segv_, nullptr);
    sigaction(SIGBUS, &bus_, nullptr);
  }

private:
  struct sigaction segv_ {};
  struct sigaction bus_ {};
};

} // namespace

std::optional<Fault> catchFault(const std::function<void()> &call) {
  const Handlers handlers;
  if (sigsetjmp(escape, 1) != 0) {
    return lastFault;
  }
  guarded = 1;
  call();
  guarded = 0;
  return std::nullopt;
}

} // namespace support
