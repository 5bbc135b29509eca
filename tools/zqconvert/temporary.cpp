#include "temporary.h"

#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zqconvert {

namespace {

std::atomic<TemporaryName *> newest{nullptr};
std::atomic<bool> placing{false};

void removeFile(const char *path) {
#ifdef _WIN32
  _unlink(path);
#else
  unlink(path);
#endif
}

} // namespace

TemporaryName::TemporaryName(std::string path) : path_(std::move(path)), next_(newest.load()) {
  if (next_ != nullptr) {
    next_.load()->previous_ = this;
  }
  newest = this; // last: a signal finds the list whole at any moment
}

TemporaryName::~TemporaryName() {
  (previous_ != nullptr ? previous_->next_ : newest) = next_.load();
  if (next_ != nullptr) {
    next_.load()->previous_ = previous_;
  }
}

Placing::Placing() noexcept {
  placing = true;
}

Placing::~Placing() {
  placing = false;
}

bool isPlacing() noexcept {
  return placing;
}

void removeTemporaries() noexcept {
  for (const TemporaryName *name = newest; name != nullptr; name = name->next_) {
    removeFile(name->path_.c_str());
  }
}

} // namespace zqconvert
