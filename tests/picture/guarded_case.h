// Conversions whose planes end, or begin, at pages that nobody may touch.
#pragma once

#include "picture/bench.h"
#include "support/guarded_pages.h"

#include <memory>
#include <string>

namespace picture {

/// The pages of three planes each, used for one case after the other. Inputs are read-only.
struct GuardedRoom {
  GuardedRoom();
  std::unique_ptr<support::GuardedPages> in[3];
  std::unique_ptr<support::GuardedPages> out[3];
};

/// A conversion of noise, with strides and directions of lines that `random` draws, in planes of exactly the bytes that
/// the pictures have. What comes out is compared with what the portable level makes in ordinary memory.
class GuardedCase {
public:
  GuardedCase(GuardedRoom &room, const ZqpConversion &conversion, Random &random);

  /// Empty if every level made the same, as a whole or in bands, touched nothing outside and left its input alone.
  std::string run();

private:
  [[nodiscard]] std::string runAtLevel(support::Against against);
  void place(support::Against against);
  [[nodiscard]] int32_t convert(const ZqpPicture &in, const ZqpPicture &out) const;
  [[nodiscard]] std::string damage() const;

  GuardedRoom &room_;
  ZqpConversion conversion_;
  Converter converter_;
  reference::OwnPicture in_;
  reference::OwnPicture blank_;
  reference::OwnPicture expected_;
  std::size_t distance_; ///< from the page, for other alignments
  int bandLines_;        ///< 0: the picture as a whole
};

} // namespace picture
