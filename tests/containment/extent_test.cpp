// How far a conversion may write, counted from each output plane's pointer: the formulas that zqColorConversion.h gives
// to callers who place a picture inside a larger buffer, against the first and the last byte that are really written.
#include "containment/cells.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using containment::Mode;
using containment::Sizes;

/// Bytes [first, end) from a plane's pointer.
struct Extent {
  int64_t first = 0;
  int64_t end = 0;
};

bool isPlanar420(int type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR;
}
/// The planar types whose planes are turned before they are resized.
bool isTurnedBeforehand(int type) {
  return type == COLOR_YUV444_PLANAR || type == COLOR_YUV440_PLANAR || type == COLOR_YUV411_PLANAR ||
         type == COLOR_YUV_QUARTER_HEIGHT;
}
bool isPlanarOrSemiPlanar(int type) {
  return support::planeCount(type) > 1;
}

/// Planar and semi-planar input to RGB24 or planar 4:2:0 leaves quarter turns out, unless its planes are turned first.
bool isQuarterTurned(const ConvertParams &p) {
  if (p.rotation != ROTATION_90_LEFT && p.rotation != ROTATION_90_RIGHT) {
    return false;
  }
  if (p.inType == p.outType || support::isRgb16(p.outType)) {
    return true;
  }
  return p.outType == COLOR_RGB24 && support::isPacked422(p.inType) ? true
                                                                    : p.isResize == 1 && isTurnedBeforehand(p.inType);
}

// --- The table of the header, row by row: w, h, s are outWidth, outHeight, outStride.

/// line(n): bytes of n pixels in a line of the first plane.
int64_t line(const ConvertParams &p, int64_t n) {
  if (support::isPacked422(p.outType)) {
    const int64_t groups = 4 * ((n + 1) / 2);
    return p.outStride >= groups ? groups : 2 * n;
  }
  return p.outType == COLOR_RGB24 ? 3 * n : (support::isRgb16(p.outType) ? 2 * n : n);
}

/// Right turns and half turns at the same size leave the columns behind the last whole 16 to a strip of its own.
bool hasRightStrip(const ConvertParams &p) {
  return support::isRgb16(p.outType) && isPlanarOrSemiPlanar(p.inType) && p.isResize == 0 && p.outWidth >= 16 &&
         p.outHeight >= 16 && p.outWidth % 16 != 0;
}

bool isHalfTurnFromStrideEnd(const ConvertParams &p) {
  if (p.rotation != ROTATION_180) {
    return false;
  }
  if (p.inType == p.outType) {
    return isPlanar420(p.outType) && p.isResize == 1;
  }
  if (!support::isRgb16(p.outType)) {
    return false;
  }
  return isPlanarOrSemiPlanar(p.inType) ? p.isResize == 0 || !isTurnedBeforehand(p.inType)
                                        : support::isPacked422(p.inType) && p.isResize == 0;
}

bool isTightTurn(const ConvertParams &p) {
  return p.inType == p.outType && isPlanar420(p.outType) && p.isResize == 0 && p.rotation >= ROTATION_90_LEFT &&
         p.rotation <= ROTATION_180;
}

Extent firstPlane(const ConvertParams &p) {
  const int64_t w = p.outWidth;
  const int64_t h = p.outHeight;
  const int64_t s = p.outStride;
  if (isTightTurn(p)) {
    return {0, int64_t{p.inWidth} * p.inHeight};
  }
  if (isHalfTurnFromStrideEnd(p)) {
    return {hasRightStrip(p) ? 0 : s - line(p, w), h * s};
  }
  if (p.rotation == ROTATION_90_RIGHT && hasRightStrip(p)) {
    return {0, w * s};
  }
  return isQuarterTurned(p) ? Extent{0, (w - 1) * s + line(p, h)} : Extent{0, (h - 1) * s + line(p, w)};
}

/// Each chroma plane of planar 4:2:0: the first plane's rows with halved numbers.
Extent chromaPlane(const ConvertParams &p) {
  ConvertParams half = p;
  half.inWidth /= 2;
  half.inHeight /= 2;
  half.outWidth /= 2;
  half.outHeight /= 2;
  half.outStride >>= 1;
  return half.outHeight > 0 ? firstPlane(half) : Extent{};
}

/// The chroma pairs of semi-planar pictures.
Extent chromaPairs(const ConvertParams &p) {
  const int64_t w = p.outWidth;
  const int64_t h = p.outHeight;
  const int64_t s = p.outStride;
  if (isQuarterTurned(p)) {
    return {0, (w / 2 - 1) * s + 2 * (h / 2)};
  }
  return h >= 2 ? Extent{0, (h / 2 - 1) * s + std::min(2 * ((w + 1) / 2), s)} : Extent{};
}

Extent extentOf(const ConvertParams &p, int plane) {
  if (p.inType == COLOR_RGB24 && !support::isRgb16(p.outType)) {
    return {};
  }
  if (p.inType == COLOR_RGB24 && p.outType == COLOR_RGB16_ALT) {
    return {};
  }
  if (plane == 0) {
    return firstPlane(p);
  }
  return support::isSemiPlanar(p.outType) ? chromaPairs(p) : chromaPlane(p);
}

/// Whether the first and the last byte of the extent are written whatever the sizes. Of a plane that is not, no byte
/// outside the extent is written all the same.
bool reachesBothEnds(const ConvertParams &p) {
  if (p.outType == COLOR_RGB24 && p.isResize == 1 && isPlanarOrSemiPlanar(p.inType)) {
    return p.outWidth <= p.inWidth && p.outHeight <= p.inHeight; // repeated lines are written in part
  }
  if (p.rotation == ROTATION_180 && hasRightStrip(p)) {
    return p.outHeight % 16 == 0; // the first line is the bottom strip's otherwise, which lies at the stride's end
  }
  if (support::isRgb16(p.inType) && p.antiAlias != 0 && p.isResize == 1) {
    return p.outStride % 2 == 0; // the filters step by whole pixels
  }
  return true;
}

// --- What is really written.

/// One plane with room on both sides, filled with noise or its complement.
class Ground {
public:
  static constexpr std::size_t kMargin = 1024;

  Ground() : noise_(kMargin), inverted_(kMargin) {}

  void fill(std::size_t room, bool inverted) {
    if (noise_.size() < room + 2 * kMargin) {
      noise_.resize(room + 2 * kMargin);
      support::fill(noise_.data(), noise_.size(), support::Fill::Noise, 99);
      inverted_.resize(noise_.size());
      std::transform(noise_.begin(), noise_.end(), inverted_.begin(), [](uint8_t byte) { return ~byte & 0xFF; });
    }
    before_ = inverted ? &inverted_ : &noise_;
    bytes_ = *before_;
  }
  uint8_t *plane() { return bytes_.data() + kMargin; }

  /// Extent of the bytes that changed, joined with that of an earlier run on the other ground: what is written can look
  /// like one of the two grounds, not like both.
  void addChanges(std::optional<Extent> &written) const {
    const auto first = std::mismatch(bytes_.begin(), bytes_.end(), before_->begin()).first;
    if (first == bytes_.end()) {
      return;
    }
    const auto last = std::mismatch(bytes_.rbegin(), bytes_.rend(), before_->rbegin()).first;
    const Extent changed{(first - bytes_.begin()) - static_cast<int64_t>(kMargin),
                         (last.base() - bytes_.begin()) - static_cast<int64_t>(kMargin)};
    written = written ? Extent{std::min(written->first, changed.first), std::max(written->end, changed.end)} : changed;
  }

private:
  std::vector<uint8_t> noise_;
  std::vector<uint8_t> inverted_;
  const std::vector<uint8_t> *before_ = nullptr;
  std::vector<uint8_t> bytes_;
};

class Extents : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(zqCCInit(&handle_), CC_OK); }
  void TearDown() override { EXPECT_EQ(zqCCUninit(handle_), CC_OK); }

  const support::Picture &input(const ConvertParams &p) {
    const support::LastPair lastPair = support::lastInputPair(p);
    const std::array<int, 4> key{p.inType, p.inWidth, p.inHeight, static_cast<int>(lastPair)};
    const auto found = inputs_.find(key);
    if (found != inputs_.end()) {
      return found->second;
    }
    const int stride = support::tightStride(p.inType, p.inWidth) + 6;
    const support::Picture picture(p.inType, p.inWidth, p.inHeight, stride, support::Fill::Noise, 3, 0, lastPair);
    return inputs_.emplace(key, picture).first->second;
  }

  /// Empty, or what differs. `padding` bytes make the stride longer than a line.
  std::string check(const Mode &mode, const Sizes &sizes, int padding) {
    ConvertParams p = containment::recordOf(mode, sizes);
    p.outStride = support::tightStride(p.outType, isQuarterTurned(p) ? p.outHeight : p.outWidth) + padding;
    std::array<std::optional<Extent>, 3> written;
    for (const bool inverted : {false, true}) {
      ConvertParams frame = p;
      input(p).describe(frame);
      const int longest = std::max({p.inWidth, p.inHeight, p.outWidth, p.outHeight, p.outStride});
      const int most = std::max({p.inWidth, p.inHeight, p.outWidth, p.outHeight});
      for (std::size_t i = 0; i < 3; ++i) {
        grounds_[i].fill(static_cast<std::size_t>(longest) * static_cast<std::size_t>(most), inverted);
        frame.outBuf[i] = grounds_[i].plane();
      }
      if (zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &frame) != CC_OK || zqCCProcess(handle_, &frame) != CC_OK) {
        return "";
      }
      for (std::size_t i = 0; i < 3; ++i) {
        grounds_[i].addChanges(written[i]);
      }
    }
    ++converted_;
    return compare(p, written);
  }

  static std::string compare(const ConvertParams &p, const std::array<std::optional<Extent>, 3> &written) {
    std::ostringstream report;
    for (int i = 0; i < 3; ++i) {
      const Extent expected = i < support::planeCount(p.outType) ? extentOf(p, i) : Extent{};
      const Extent found = written[static_cast<std::size_t>(i)].value_or(Extent{});
      const bool nothing = !written[static_cast<std::size_t>(i)];
      const bool exact = found.first == expected.first && found.end == expected.end;
      const bool inside = nothing || (found.first >= expected.first && found.end <= expected.end);
      if (reachesBothEnds(p) ? !exact : !inside) {
        report << "plane " << i << ": [" << found.first << ", " << found.end << ") instead of [" << expected.first
               << ", " << expected.end << ")\n";
      }
    }
    return report.str();
  }

  void walk(const Mode &mode, const std::vector<Sizes> &sizes) {
    static constexpr std::array<int, 5> kPaddings{0, 34, 7, 2, 64};
    for (const Sizes &s : sizes) {
      const bool lone = support::isPacked422(mode.outType) && number_ % 7 == 0 && s.outWidth % 2 != 0;
      const int padding = lone ? -2 : kPaddings[number_ % kPaddings.size()];
      ++number_;
      ASSERT_EQ(check(mode, s, padding), "")
          << "type " << mode.inType << " to " << mode.outType << ", isResize " << mode.isResize << ", rotation "
          << mode.rotation << ", quality " << mode.quality << ", " << s.width << "x" << s.height << " to " << s.outWidth
          << "x" << s.outHeight << ", line padding " << padding;
    }
  }

  ConvertContext *handle_ = nullptr;
  std::map<std::array<int, 4>, support::Picture> inputs_;
  std::array<Ground, 3> grounds_;
  unsigned number_ = 0;
  int converted_ = 0;
};

TEST_F(Extents, SameSize) {
  const std::vector<Sizes> sizes{{16, 16, 16, 16}, {40, 20, 40, 20}, {20, 40, 20, 40}, {35, 48, 35, 48},
                                 {48, 35, 48, 35}, {15, 33, 15, 33}, {32, 15, 32, 15}, {7, 5, 7, 5},
                                 {4, 4, 4, 4},     {33, 1, 33, 1},   {21, 32, 21, 32}, {40, 36, 24, 20}};
  for (const Mode &mode : containment::allModes()) {
    if (mode.isResize == 0 && mode.quality == 0) {
      walk(mode, sizes);
      if (HasFatalFailure()) {
        return;
      }
    }
  }
  EXPECT_GT(converted_, 9000);
}

TEST_F(Extents, Resized) {
  const std::vector<Sizes> sizes{{22, 18, 17, 25}, {34, 22, 17, 11}, {24, 20, 18, 15}, {20, 18, 30, 27},
                                 {18, 17, 36, 34}, {66, 37, 5, 4},   {19, 18, 19, 18}, {40, 34, 33, 16}};
  for (const Mode &mode : containment::allModes()) {
    if (mode.isResize == 1 && mode.quality != 2) { // qualities 1 and 2 are one routine
      walk(mode, sizes);
      if (HasFatalFailure()) {
        return;
      }
    }
  }
  EXPECT_GT(converted_, 19000);
}

} // namespace
