// Memory that is handed out piece by piece: scratch of a call, and the tables of a converter.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqp {

/// Without memory it only counts how much would be needed, so that one function says what there is and how much it is.
class Arena {
public:
  static constexpr std::size_t kAlignment = 64;

  explicit Arena(uint8_t *memory) : memory_(memory) {}

  template <class Element>
  Element *take(std::size_t count) {
    const std::size_t at = used_;
    used_ += (count * sizeof(Element) + kAlignment - 1) / kAlignment * kAlignment;
    return memory_ == nullptr ? nullptr : reinterpret_cast<Element *>(memory_ + at);
  }

  [[nodiscard]] bool hasMemory() const { return memory_ != nullptr; }
  [[nodiscard]] std::size_t used() const { return used_; }

private:
  uint8_t *memory_;
  std::size_t used_ = 0;
};

} // namespace zqp
