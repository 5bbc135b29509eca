// The resampling tables as the same-format reference reads them: one entry an output position.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace reference {

/// A position between source samples at and at + 1; the weights are out of 1024.
struct Tap {
  int32_t at = 0;
  int32_t next = 0; ///< Weight of sample at + 1.
  int32_t self = 0; ///< Weight of sample at.
};

using FiveTaps = std::array<Tap, 5>;

enum class Axis { Horizontal, Vertical };

std::vector<int32_t> nearestPositions(int source, int count);
std::vector<Tap> bilinearPositions(int source, int count);
/// The positions of the 16-pixel groups in one sequence.
std::vector<Tap> blockPositions(int source, int count);
/// Five taps a position; the two axes list the same distances in different orders.
std::vector<FiveTaps> filteredPositions(int source, int count, uint32_t quality, Axis axis);

} // namespace reference
