// Files that stand under a temporary name, and how they disappear when the program is killed.
#pragma once

#include <atomic>
#include <string>

namespace zqconvert {

/// While the object lives, removeTemporaries() removes the file of this name. The object itself never touches the file.
class TemporaryName {
public:
  explicit TemporaryName(std::string path);
  TemporaryName(const TemporaryName &) = delete;
  TemporaryName &operator=(const TemporaryName &) = delete;
  ~TemporaryName();

  [[nodiscard]] const std::string &path() const { return path_; }

private:
  friend void removeTemporaries() noexcept;

  std::string path_;
  TemporaryName *previous_ = nullptr;
  std::atomic<TemporaryName *> next_; ///< Atomic as is the list's head: a signal handler follows them.
};

/// While the object lives, files are on the way to their places: a signal shall wait until either all of them stand
/// there or none does.
class Placing {
public:
  Placing() noexcept;
  Placing(const Placing &) = delete;
  Placing &operator=(const Placing &) = delete;
  ~Placing();
};
bool isPlacing() noexcept;

/// Removes every file that has a TemporaryName. Safe in a signal handler of the thread that makes the names.
void removeTemporaries() noexcept;

} // namespace zqconvert
