// Which conversions the program offers. The library accepts more descriptions than it acts on: a turn, a flip or a
// resize that a route knows nothing of is silently left out. A user who asks for it must hear so instead.
#pragma once

#include <cstdint>
#include <string>

namespace zqconvert {

struct Route {
  int inType = 0;
  int outType = 0;
  bool scaled = false;
  uint32_t rotation = 0; ///< RotationType
  uint32_t quality = 0;
  bool reduced = true; ///< Both sides of the upright result are smaller than the input's.
};

/// Empty if the library does all that the route says; otherwise the reason, in words.
std::string whyNot(const Route &route);

/// For routes that whyNot() passes: empty if another quality gives another picture, or if quality 0 is asked for;
/// otherwise why the quality changes nothing.
std::string whyQualityIsIdle(const Route &route);

} // namespace zqconvert
