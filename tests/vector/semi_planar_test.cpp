// Semi-planar pictures at every level: the bytes are those of chroma that is split into planes first, line after line
// with half the stride, and converted as planar 4:2:0 by portable code.
#include "frame/context.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

using support::Block;
using support::Canvas;

struct Case {
  int inWidth;
  int inHeight;
  int inStride;
  int outWidth;
  int outHeight;
  int inType;
  int outType;
  uint32_t rotation;
  uint32_t isResize;
};

std::string nameOf(const Case &c) {
  std::ostringstream text;
  text << "type " << c.inType << " to " << c.outType << ", " << c.inWidth << "x" << c.inHeight << " by " << c.inStride
       << " to " << c.outWidth << "x" << c.outHeight << ", rotation " << c.rotation << ", isResize " << c.isResize;
  return text.str();
}

/// Bytes of lines that begin `stride` bytes apart.
std::size_t bytesOf(int lines, int stride, int lineBytes) {
  return static_cast<std::size_t>((lines - 1) * stride + lineBytes);
}

Block noise(std::size_t bytes, uint32_t seed, unsigned misalign) {
  Block block(bytes, misalign);
  support::fill(block.data(), bytes, support::Fill::Noise, seed);
  return block;
}

/// A semi-planar picture that ends with its last samples, and its chroma split.
class Input {
public:
  explicit Input(const Case &c)
      : luma_(noise(bytesOf(c.inHeight, c.inStride, c.inWidth), 3, 1)),
        pairs_(noise(bytesOf(c.inHeight / 2, c.inStride, c.inWidth / 2 * 2), 4, 3)) {
    const int pitch = c.inStride / 2;
    for (Block &plane : split_) {
      plane = Block(bytesOf(c.inHeight / 2, pitch, c.inWidth / 2));
    }
    const std::size_t u = c.inType == COLOR_YUV420_PACK ? 0 : 1;
    for (int line = 0; line < c.inHeight / 2; ++line) {
      for (int i = 0; i < c.inWidth / 2; ++i) {
        split_.at(u).data()[line * pitch + i] = pairs_.data()[line * c.inStride + 2 * i];
        split_.at(1 - u).data()[line * pitch + i] = pairs_.data()[line * c.inStride + 2 * i + 1];
      }
    }
  }

  [[nodiscard]] ConvertParams describe(const Case &c) const {
    ConvertParams p = support::blankParams();
    p.inType = c.inType;
    p.outType = c.outType;
    p.inWidth = c.inWidth;
    p.inHeight = c.inHeight;
    p.inStride = c.inStride;
    p.outWidth = c.outWidth;
    p.outHeight = c.outHeight;
    p.rotation = c.rotation;
    p.isResize = c.isResize;
    p.inBuf[0] = luma_.data();
    p.inBuf[1] = pairs_.data();
    return p;
  }
  [[nodiscard]] ConvertParams describeSplit(const Case &c) const {
    ConvertParams p = describe(c);
    // With V in front where the type would be kept else, which is another conversion.
    const bool vFirst = c.outType == COLOR_YUV420_PLANAR;
    p.inType = vFirst ? COLOR_YVU420_PLANAR : COLOR_YUV420_PLANAR;
    p.inBuf[vFirst ? 2 : 1] = split_[0].data();
    p.inBuf[vFirst ? 1 : 2] = split_[1].data();
    return p;
  }

private:
  Block luma_;
  Block pairs_;
  std::array<Block, 2> split_; ///< U, V
};

Canvas canvasFor(const Case &c) {
  if (c.outType == COLOR_YUV420_PLANAR) {
    return Canvas::forPicture(c.outType, c.outWidth, c.outHeight, c.outWidth + 5, 1);
  }
  const bool isTurned =
      c.outType == COLOR_RGB565 && (c.rotation == ROTATION_90_LEFT || c.rotation == ROTATION_90_RIGHT);
  const int columns = isTurned ? c.outHeight : c.outWidth;
  const int stride = (c.outType == COLOR_RGB24 ? 3 : 2) * columns + 5;
  return Canvas({{stride, isTurned ? c.outWidth : c.outHeight, stride}}, 1);
}

enum class Chroma { Refused, Split, ReadAsItLies };

class SemiPlanar : public testing::TestWithParam<zqcc::Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
    ASSERT_EQ(zqCCInit(&handle_), CC_OK);
  }
  void TearDown() override {
    if (handle_ != nullptr) {
      EXPECT_EQ(zqCCUninit(handle_), CC_OK);
    }
  }

  uint32_t convert(ConvertParams p, zqcc::Level level, Canvas &canvas) {
    const support::LevelsForced forced(level);
    canvas.describe(p);
    EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &p), CC_OK);
    if (handle_->uvBuf[0] != nullptr) {
      *handle_->uvBuf[0] = kUnsplit;
      *handle_->uvBuf[1] = kUnsplit;
    }
    return zqCCProcess(handle_, &p);
  }

  /// Compares with the split planes, and tells what became of the chroma.
  Chroma check(const Case &c) {
    const Input input(c);
    Canvas made = canvasFor(c);
    ConvertParams p = input.describe(c);
    if (convert(p, GetParam(), made) != CC_OK) {
      return Chroma::Refused;
    }
    const bool isSplit = *handle_->uvBuf[0] != kUnsplit || *handle_->uvBuf[1] != kUnsplit;
    Canvas expected = canvasFor(c);
    EXPECT_EQ(convert(input.describeSplit(c), zqcc::LEVEL_PORTABLE, expected), CC_OK) << nameOf(c);
    EXPECT_NE(expected.touched(), "") << nameOf(c);
    EXPECT_EQ(made.difference(expected), "") << nameOf(c);
    return isSplit ? Chroma::Split : Chroma::ReadAsItLies;
  }

  [[nodiscard]] static Chroma wanted() {
    return GetParam() == zqcc::LEVEL_PORTABLE ? Chroma::Split : Chroma::ReadAsItLies;
  }

private:
  /// What no chroma sample of the first pair is, so that splitting shows.
  static constexpr uint8_t kUnsplit = 0x5E;
  ConvertContext *handle_ = nullptr;
};

/// Calls visit(case) for a size with both orders of the pairs, every kind of output and every turn.
template <class Visit>
void forEachMode(Case c, Visit visit) {
  for (const int inType : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    for (const int outType : {COLOR_RGB565, COLOR_RGB24, COLOR_YUV420_PLANAR}) {
      for (uint32_t rotation = ROTATION_NONE; rotation <= ROTATION_FLIP_V; ++rotation) {
        c.inType = inType;
        c.outType = outType;
        c.rotation = rotation;
        visit(c);
      }
    }
  }
}

constexpr std::array<std::array<int, 2>, 15> kSizes{{{2, 2},
                                                     {3, 3},
                                                     {15, 31},
                                                     {16, 16},
                                                     {17, 18},
                                                     {18, 17},
                                                     {33, 16},
                                                     {64, 34},
                                                     {65, 33},
                                                     {95, 20},
                                                     {130, 18},
                                                     {143, 48},
                                                     {1030, 18},
                                                     {1040, 16},
                                                     {2091, 18}}};

TEST_P(SemiPlanar, IsReadAsItLies) {
  for (const auto &size : kSizes) {
    for (const int padding : {0, 1, 2, 13}) {
      const Case sized{size[0], size[1], size[0] + padding, size[0], size[1], 0, 0, 0, 0};
      forEachMode(sized, [&](const Case &c) { EXPECT_EQ(check(c), wanted()) << nameOf(c); });
    }
  }
}

TEST_P(SemiPlanar, KeepsTheSplitPlanesOfShortStrides) {
  int converted = 0;
  for (const auto &size : kSizes) {
    for (const int stride : {size[0] - 2, size[0] - 12, size[0] / 2, 1, 0}) {
      if (stride < 0) {
        continue;
      }
      const Case sized{size[0], size[1], stride, size[0], size[1], 0, 0, 0, 0};
      forEachMode(sized, [&](const Case &c) {
        const Chroma chroma = check(c);
        const bool linesOverlap = c.inWidth / 2 > stride / 2;
        converted += chroma != Chroma::Refused ? 1 : 0;
        EXPECT_TRUE(chroma == Chroma::Refused || chroma == (linesOverlap ? Chroma::Split : wanted())) << nameOf(c);
      });
    }
  }
  EXPECT_GT(converted, 500);
}

TEST_P(SemiPlanar, GivesPartsOfPictures) {
  for (const auto &size : kSizes) {
    for (const int more : {1, 2, 7, 64}) {
      const Case cut{size[0] + more, size[1] + more, size[0] + more, size[0], size[1], 0, 0, 0, 0};
      forEachMode(cut, [&](const Case &c) { EXPECT_EQ(check(c), wanted()) << nameOf(c); });
    }
  }
}

TEST_P(SemiPlanar, FlipsAPartWhereNothingScales) {
  for (const auto &size : kSizes) {
    for (const int more : {0, 1, 2, 7, 64}) {
      for (const int inType : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
        const int width = size[0] + more;
        const Case flipped{width, size[1] + more, width, size[0], size[1], inType, COLOR_RGB565, ROTATION_FLIP_V, 1};
        EXPECT_EQ(check(flipped), wanted()) << nameOf(flipped);
      }
    }
  }
}

TEST_P(SemiPlanar, IsSplitWhereTheSizeChanges) {
  for (const int outType : {COLOR_RGB565, COLOR_RGB24}) {
    const Case scaled{64, 48, 64, 40, 30, COLOR_YUV420_PACK, outType, ROTATION_NONE, 1};
    EXPECT_EQ(check(scaled), Chroma::Split) << nameOf(scaled);
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, SemiPlanar,
                         testing::Values(zqcc::LEVEL_PORTABLE, zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512,
                                         zqcc::LEVEL_NEON));

} // namespace
