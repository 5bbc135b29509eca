#include "fuzz/rooms.h"

#include "support/picture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace fuzz {
namespace {

constexpr int kRooms = 9;
constexpr int kInputRooms = 3;
constexpr int64_t kPage = 4096;
constexpr int64_t kGap = int64_t{1} << 32;
/// A prime number of pages, so that a distance that is a power of two never leads to the same noise.
constexpr int64_t kNoiseBytes = 4099 * kPage;

void require(bool holds, const char *what) {
  if (!holds) {
    std::perror(what);
    std::abort();
  }
}

/// A file in memory with the noise.
int makeNoise() {
  const int file = memfd_create("noise", 0);
  require(file >= 0 && ftruncate(file, kNoiseBytes) == 0, "memfd_create");
  void *noise = mmap(nullptr, kNoiseBytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  require(noise != MAP_FAILED, "mmap");
  support::fill(static_cast<uint8_t *>(noise), kNoiseBytes, support::Fill::Noise, 7);
  munmap(noise, kNoiseBytes);
  return file;
}

class AddressSpace {
public:
  AddressSpace() {
    constexpr int64_t kWhole = kRooms * (kRoomBytes + kGap) + kGap;
    void *whole = mmap(nullptr, kWhole, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    require(whole != MAP_FAILED, "mmap");
    first_ = static_cast<uint8_t *>(whole) + kGap;
    const int file = makeNoise();
    for (int room = 0; room < kInputRooms; ++room) {
      for (int64_t at = 0; at < kRoomBytes; at += kNoiseBytes) {
        const int64_t bytes = std::min(kNoiseBytes, kRoomBytes - at);
        map(begin(room) + at, bytes, PROT_READ, MAP_PRIVATE, file);
      }
    }
    close(file);
    for (int room = kInputRooms; room < kRooms; ++room) {
      map(begin(room), kRoomBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1);
      // A line in 4 KiB is to cost 4 KiB and not 2 MiB. Kernels without huge pages do not know the advice.
      madvise(begin(room), kRoomBytes, MADV_NOHUGEPAGE);
    }
  }
  AddressSpace(const AddressSpace &) = delete;
  AddressSpace &operator=(const AddressSpace &) = delete;

  [[nodiscard]] uint8_t *begin(int room) const { return first_ + room * (kRoomBytes + kGap); }

private:
  static void map(uint8_t *at, int64_t bytes, int rights, int flags, int file) {
    void *there = mmap(at, static_cast<std::size_t>(bytes), rights, flags | MAP_FIXED | MAP_NORESERVE, file, 0);
    require(there == at, "mmap");
  }

  uint8_t *first_;
};

const AddressSpace &addressSpace() {
  static const AddressSpace space; // stays for the whole run
  return space;
}

/// Calls test(offset, bytes) for the parts of a plane of `end` bytes where lines are: each with what stands before and
/// behind it, at the beginning of its stride and at its end. Stops at the first that fails.
template <class Test>
bool forEachPart(int64_t from, int64_t end, const Lines &lines, Test test) {
  constexpr int64_t kAround = 64;
  const int64_t near = lines.bytes + kAround;
  const auto holds = [&](int64_t begin, int64_t bytes) {
    const int64_t first = std::clamp<int64_t>(begin, 0, end);
    const int64_t last = std::clamp<int64_t>(begin + bytes, 0, end);
    return first >= last || test(first, static_cast<std::size_t>(last - first));
  };
  if (lines.stride <= 2 * near) {
    return holds(from - kAround, lines.count * lines.stride + near);
  }
  for (int64_t j = 0; j < lines.count; ++j) {
    const int64_t line = from + j * lines.stride;
    if (!holds(line, near) || !holds(line + lines.stride - near, near)) {
      return false;
    }
  }
  return true;
}

} // namespace

PlaneMemory::PlaneMemory(Room room, int plane, int64_t bytes) : bytes_(bytes) {
  if (isBlock()) {
    at_ = new uint8_t[size()];
    return;
  }
  require(bytes <= kRoomBytes, "a plane does not fit its room");
  uint8_t *begin = addressSpace().begin(static_cast<int>(room) + plane);
  const bool atEnd = bytes / 16 % 2 == 0;
  at_ = atEnd ? begin + (kRoomBytes - bytes) : begin;
}

PlaneMemory::PlaneMemory(PlaneMemory &&other) noexcept
    : at_(std::exchange(other.at_, nullptr)), bytes_(std::exchange(other.bytes_, 0)) {}

PlaneMemory &PlaneMemory::operator=(PlaneMemory &&other) noexcept {
  std::swap(at_, other.at_);
  std::swap(bytes_, other.bytes_);
  return *this;
}

PlaneMemory::~PlaneMemory() {
  if (isBlock()) {
    delete[] at_;
    return;
  }
  // Whole pages; the room holds nothing else.
  const auto address = reinterpret_cast<std::uintptr_t>(at_);
  const std::uintptr_t slack = address % kPage;
  madvise(at_ - slack, size() + slack, MADV_DONTNEED);
}

void PlaneMemory::fill(uint8_t value) {
  if (isBlock()) {
    std::memset(at_, value, size());
  }
}

void PlaneMemory::fillWithNoise(uint32_t seed) {
  if (isBlock()) {
    support::fill(at_, size(), support::Fill::Noise, seed);
  }
}

bool PlaneMemory::equals(const PlaneMemory &other, int64_t from, const Lines &lines) const {
  if (isBlock()) {
    return std::memcmp(at_, other.at_, size()) == 0;
  }
  return forEachPart(from, bytes_, lines,
                     [&](int64_t at, std::size_t count) { return std::memcmp(at_ + at, other.at_ + at, count) == 0; });
}

bool PlaneMemory::holdsOnly(uint8_t value, int64_t from, const Lines &lines) const {
  const auto all = [this](int64_t at, std::size_t count, uint8_t wanted) {
    const uint8_t *first = at_ + at;
    return count == 0 || (*first == wanted && std::memcmp(first, first + 1, count - 1) == 0);
  };
  if (isBlock()) {
    return all(0, size(), value);
  }
  return forEachPart(from, bytes_, lines, [&](int64_t at, std::size_t count) { return all(at, count, 0); });
}

int64_t pagesOf(const Lines &lines) {
  if (lines.count <= 0 || lines.bytes <= 0) {
    return 0;
  }
  const auto pages = [](int64_t bytes) { return bytes / kPage + 2; };
  // Too many lines are too many pages, whatever their product.
  if (lines.stride < kPage) {
    return pages(lines.count * std::max(lines.stride, int64_t{1}) + lines.bytes);
  }
  return lines.count * pages(lines.bytes);
}

} // namespace fuzz
