// The one kind of failure that the program reports: a line for the user.
#pragma once

#include <stdexcept>

namespace zqconvert {

/// what() is a complete sentence fragment for the user; main() puts the program's name in front.
class Error : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

/// The user or the system asked the program to stop; carries the signal's number.
class Interrupted : public std::runtime_error {
public:
  explicit Interrupted(int signalNumber) : std::runtime_error("interrupted"), signal(signalNumber) {}
  int signal;
};

} // namespace zqconvert
