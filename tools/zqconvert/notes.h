// What a user should know of a conversion that is done as asked and yet does not give what one might expect.
#pragma once

#include "frame.h"
#include "routes.h"

#include <string>
#include <vector>

namespace zqconvert {

struct Circumstances {
  Size part;        ///< Of the input that is converted.
  Size upright;     ///< Of the result before it is turned.
  bool otherMatrix; ///< Asked for, and not the one that conversions have built in.
  Range range;      ///< What the input says of itself.
};

/// For routes that whyNot() passes. One line each.
std::vector<std::string> notesOn(const Route &route, const Circumstances &circumstances);

} // namespace zqconvert
