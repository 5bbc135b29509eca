// Memory for pictures with lines a gigabyte apart: only pages that are touched exist.
#pragma once

#include <cstdint>
#include <string>

namespace support {

/// Addresses that hold zeros until they are written, between unmapped ones. Reading costs no memory, writing a page
/// each. Where the platform does not have that many addresses, tests say so and leave:
///
///     if (!pages.areThere()) GTEST_SKIP() << pages.reason();
class SparsePages {
public:
  explicit SparsePages(uint64_t bytes);
  SparsePages(const SparsePages &) = delete;
  SparsePages &operator=(const SparsePages &) = delete;
  ~SparsePages();

  [[nodiscard]] bool areThere() const { return first_ != nullptr; }
  /// Why they are not.
  [[nodiscard]] const std::string &reason() const { return reason_; }
  /// The first byte; whole pages are mapped, and the unmapped ones begin behind the last of them.
  [[nodiscard]] uint8_t *data() const { return first_; }

private:
  uint64_t reserved_ = 0;
  uint8_t *first_ = nullptr;
  std::string reason_;
};

} // namespace support
