// The one kind of failure that the program reports: a line for the user.
#pragma once

#include <stdexcept>

namespace zqconvert {

/// what() is a complete sentence fragment for the user; main() puts the program's name in front.
class Error : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

/// The input ends inside a frame; those before it are whole.
class Truncated : public Error {
public:
  using Error::Error;
};

} // namespace zqconvert
