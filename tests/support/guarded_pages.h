// Memory that ends where a plane ends: buffers against unmapped pages, and calls that survive running into one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace support {

/// Which end of the bytes lies against an unmapped page; the other end has only poison next to it.
enum class Against { End, Start };

/// Mapped pages between two unmapped ones, reused for one buffer after the other.
///
/// The pages are mapped twice: `write()` fills a buffer, and the address that conversions are given may be read-only,
/// so that a store into an input plane faults as well.
class GuardedPages {
public:
  enum class Access { ReadOnly, ReadWrite };
  GuardedPages(std::size_t capacity, Access access);
  GuardedPages(const GuardedPages &) = delete;
  GuardedPages &operator=(const GuardedPages &) = delete;
  ~GuardedPages();

  /// Lays out a buffer of `bytes` bytes, `distance` bytes away from the unmapped page that it lies against, and poisons
  /// its surroundings, which damage() watches.
  void place(std::size_t bytes, Against against, std::size_t distance = 0);
  /// The buffer as the code under test sees it.
  [[nodiscard]] uint8_t *data() const { return seen_ + offset_; }
  /// The same bytes, always writable.
  [[nodiscard]] uint8_t *write() const { return written_ + offset_; }
  [[nodiscard]] std::size_t size() const { return size_; }
  [[nodiscard]] std::size_t capacity() const { return capacity_; }

  /// Distance from the buffer's first byte to the nearest poisoned byte that has changed; nothing if none has.
  [[nodiscard]] std::optional<std::ptrdiff_t> damage() const;
  /// Whether an address lies in these pages or in the unmapped ones around them.
  [[nodiscard]] bool covers(std::uintptr_t address) const;

private:
  struct Window {
    std::size_t before = 0; ///< poisoned bytes in front of the buffer
    std::size_t behind = 0;
  };
  [[nodiscard]] Window window() const;

  std::size_t capacity_ = 0;
  std::size_t guard_ = 0;
  uint8_t *reserved_ = nullptr; ///< start of the unmapped page in front
  uint8_t *seen_ = nullptr;
  uint8_t *written_ = nullptr;
  std::size_t offset_ = 0;
  std::size_t size_ = 0;
};

/// An access to memory that is not there or not to be written.
struct Fault {
  enum class Kind { Read, Write, Unknown };
  std::uintptr_t address = 0;
  Kind kind = Kind::Unknown;
};

/// Runs `call`; a fault ends it in mid-flight and is returned. What the call had allocated is lost.
std::optional<Fault> catchFault(const std::function<void()> &call);

} // namespace support
