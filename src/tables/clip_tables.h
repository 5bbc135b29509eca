// Saturation by table: an 8-bit-scale value outside its range costs one load, the same as one inside it.
#pragma once

#include <array>
#include <cstdint>

namespace zqcc {

/// A byte table reached through a base inside it, so that indices from First to Last, negative ones included, are
/// valid.
template <int First, int Last>
class ClipTable {
public:
  static constexpr int kFirst = First;
  static constexpr int kLast = Last;

  template <class Rule>
  explicit constexpr ClipTable(Rule rule) {
    for (int i = First; i <= Last; ++i) {
      bytes_[static_cast<std::size_t>(i - First)] = static_cast<uint8_t>(rule(i));
    }
  }

  /// `index` lies in First..Last.
  constexpr uint32_t operator[](int32_t index) const { return bytes_[static_cast<std::size_t>(index - First)]; }

  /// Any index: past either end the end value stands.
  [[nodiscard]] constexpr uint32_t at(int32_t index) const {
    return (*this)[index < First ? First : (index > Last ? Last : index)];
  }

private:
  std::array<uint8_t, static_cast<std::size_t>(Last - First + 1)> bytes_{};
};

constexpr int clampTo(int value, int low, int high) {
  return value < low ? low : (value > high ? high : value);
}

/// The three tables cover the same signed range of an 8-bit-scale value, -384..639, shifted by 0, 2 and 3.
struct ClipTables {
  using Eight = ClipTable<-384, 639>;
  using Six = ClipTable<-96, 159>;
  using Five = ClipTable<-48, 79>;

  /// Video range: a component that goes through this table never leaves 16..235.
  Eight eight{[](int i) { return clampTo(i, 16, 235); }};
  Six six{[](int i) { return clampTo(i, 0, 63); }};
  /// Not a plain clamp: 29 stands twice, so that full intensity needs an 8-bit value of 256 after dithering.
  Five five{[](int i) { return clampTo(i >= 30 ? i - 1 : i, 0, 31); }};
};

inline constexpr ClipTables kClip{};

} // namespace zqcc
