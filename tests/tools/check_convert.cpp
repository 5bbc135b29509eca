// Conversions through the tool's own layer: geometry, cutting out, matrices and frame after frame.
#include "convert.h"
#include "error.h"
#include "workspace.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace zqconvert;

namespace {

StreamInfo infoOf(const Frame &frame) {
  return {frame.type, frame.width, frame.height, "25:1", "420jpeg"};
}

Frame convert(const Frame &in, const Request &request) {
  Converter converter(infoOf(in), request);
  Frame out;
  converter.convert(in, out);
  return out;
}

/// Grey 4:2:0, dark but for a bright rectangle at the top left of the upright picture.
Frame brightCorner(int width, int height, int brightWidth, int brightHeight) {
  Frame frame = makeFrame(COLOR_YUV420_PLANAR, width, height);
  std::fill(frame.planes[0].begin(), frame.planes[0].end(), uint8_t{16});
  for (int y = 0; y < brightHeight; ++y) {
    std::fill_n(frame.planes[0].data() + workspace::at(y, width), brightWidth, uint8_t{235});
  }
  std::fill(frame.planes[1].begin(), frame.planes[1].end(), uint8_t{128});
  std::fill(frame.planes[2].begin(), frame.planes[2].end(), uint8_t{128});
  return frame;
}

/// The smallest rectangle that holds every bright pixel of an RGB565 picture, and whether it is all bright.
struct Bright {
  int x, y, width, height;
  bool full;
  bool operator==(const Bright &) const = default;
};

Bright findBright(const Frame &frame) {
  int left = frame.width, top = frame.height, right = -1, bottom = -1, count = 0;
  for (int y = 0; y < frame.height; ++y) {
    for (int x = 0; x < frame.width; ++x) {
      const std::size_t at = workspace::at(y, frame.stride, 2 * x);
      const unsigned word = frame.planes[0].at(at) | (unsigned{frame.planes[0].at(at + 1)} << 8);
      if (((word >> 5) & 63) >= 32) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
        ++count;
      }
    }
  }
  const int width = right - left + 1;
  const int height = bottom - top + 1;
  return {left, top, width, height, count == width * height};
}

void PrintTo(const Bright &bright, std::ostream *out) {
  *out << bright.width << "x" << bright.height << " at " << bright.x << "," << bright.y
       << (bright.full ? " full" : " with holes");
}

TEST(Converter, TurnsAndFlips) {
  const Frame in = brightCorner(64, 32, 16, 8);
  struct Case {
    uint32_t rotation;
    int width, height;
    Bright want;
  };
  for (const Case &c :
       {Case{ROTATION_NONE, 64, 32, {0, 0, 16, 8, true}}, Case{ROTATION_90_LEFT, 32, 64, {0, 48, 8, 16, true}},
        Case{ROTATION_90_RIGHT, 32, 64, {24, 0, 8, 16, true}}, Case{ROTATION_180, 64, 32, {48, 24, 16, 8, true}},
        Case{ROTATION_FLIP_V, 64, 32, {0, 24, 16, 8, true}}}) {
    Request request;
    request.rotation = c.rotation;
    const Frame out = convert(in, request);
    EXPECT_EQ(out.width, c.width) << c.rotation;
    EXPECT_EQ(out.height, c.height) << c.rotation;
    EXPECT_EQ(findBright(out), c.want) << c.rotation;
  }
}

TEST(Converter, ScalesBeforeItTurns) {
  Request request;
  request.scale = Size{32, 16};
  EXPECT_EQ(findBright(convert(brightCorner(64, 32, 16, 8), request)), (Bright{0, 0, 8, 4, true}));
  request.rotation = ROTATION_90_RIGHT;
  const Frame out = convert(brightCorner(64, 32, 16, 8), request);
  EXPECT_EQ(out.width, 16);
  EXPECT_EQ(out.height, 32);
  EXPECT_EQ(findBright(out), (Bright{12, 0, 4, 8, true}));
}

TEST(Converter, CutsOutWhatWasAskedFor) {
  Request request;
  request.crop = Rectangle{8, 4, 24, 20};
  EXPECT_EQ(findBright(convert(brightCorner(64, 32, 16, 8), request)), (Bright{0, 0, 8, 4, true}));
}

/// Samples of plane `index` for one step of a crop: bytes a sample unit, and pixels across and down that it covers.
struct Unit {
  int bytes, across, down;
};

Unit unitOf(int type, int index) {
  if (index == 0) {
    const bool packed = (type >= 6 && type <= 9) || (type >= 14 && type <= 17);
    return packed ? Unit{4, 2, 1} : Unit{type == 32 ? 3 : (type == 30 || type == 31) ? 2 : 1, 1, 1};
  }
  switch (type) {
  case 1:
  case 13:
    return {1, 2, 1};
  case 2:
    return {1, 1, 2};
  case 3:
  case 12:
    return {1, 2, 2};
  case 4:
    return {1, 4, 1};
  case 11:
  case 35:
    return {2, 2, 2};
  case 37:
    return {1, 1, 4};
  default:
    return {1, 1, 1};
  }
}

// A part of a picture is converted just as if it had been a picture of its own.
TEST(Converter, PartsEqualPicturesOfTheirOwn) {
  const Rectangle part{8, 4, 36, 28};
  for (const ColorTypeInfo &type : colorTypes()) {
    const Frame whole = workspace::noiseFrame(type.code, 60, 40, 5);
    Frame alone = makeFrame(type.code, part.width, part.height);
    for (int i = 0; i < planeCount(type.code); ++i) {
      const Unit unit = unitOf(type.code, i);
      const int lineBytes = part.width / unit.across * unit.bytes;
      const int wholeLine = 60 / unit.across * unit.bytes;
      const auto index = static_cast<std::size_t>(i);
      for (int y = 0; y < part.height / unit.down; ++y) {
        const std::size_t from = workspace::at(part.y / unit.down + y, wholeLine, part.x / unit.across * unit.bytes);
        std::copy_n(whole.planes[index].data() + from, lineBytes,
                    alone.planes[index].data() + workspace::at(y, lineBytes));
      }
    }
    Request request;
    request.outType = type.code == 31 ? 31 : 30;
    const Frame want = convert(alone, request);
    request.crop = part;
    const Frame got = convert(whole, request);
    EXPECT_TRUE(got.planes[0] == want.planes[0]) << type.constant;
    EXPECT_FALSE(want.planes[0] == makeFrame(request.outType, part.width, part.height).planes[0]) << type.constant;
  }
}

TEST(Converter, PartsMustLieOnChromaSamples) {
  struct Case {
    int type, x, y;
    bool taken;
  };
  for (const Case &c :
       {Case{3, 2, 2, true}, Case{3, 1, 2, false}, Case{3, 2, 1, false}, Case{11, 1, 0, false}, Case{11, 0, 1, false},
        Case{1, 2, 1, true}, Case{1, 1, 1, false}, Case{2, 1, 2, true}, Case{2, 1, 1, false}, Case{4, 4, 1, true},
        Case{4, 2, 1, false}, Case{37, 1, 4, true}, Case{37, 1, 2, false}, Case{6, 2, 1, true}, Case{6, 1, 0, false},
        Case{0, 1, 1, true}, Case{34, 1, 1, true}, Case{32, 1, 1, true}, Case{30, 1, 1, true}}) {
    Request request;
    request.crop = Rectangle{c.x, c.y, 8, 8};
    const StreamInfo info{c.type, 32, 32, "25:1", "420jpeg"};
    if (c.taken) {
      EXPECT_NO_THROW(Converter(info, request)) << c.type << " at " << c.x << "," << c.y;
    } else {
      EXPECT_THROW(Converter(info, request), Error) << c.type << " at " << c.x << "," << c.y;
    }
  }
}

TEST(Converter, PartsOutsideThePictureAreRefused) {
  const StreamInfo info{COLOR_YUV420_PLANAR, 32, 32, "25:1", "420jpeg"};
  for (const Rectangle part : {Rectangle{0, 0, 33, 8}, Rectangle{0, 0, 8, 33}, Rectangle{32, 0, 2, 2},
                               Rectangle{2, 0, 31, 2}, Rectangle{0, 0, 0, 8}, Rectangle{0, 0, 8, 0},
                               Rectangle{0, 0, 1, 8}, Rectangle{2147483646, 0, 4, 4}, Rectangle{-2, 0, 4, 4}}) {
    Request request;
    request.crop = part;
    EXPECT_THROW(Converter(info, request), Error) << part.x << " " << part.width << "x" << part.height;
  }
}

// The library exchanges the chroma planes of a V-first picture in the record it is given.
TEST(Converter, FramesOfOneStreamAreTreatedAlike) {
  for (const int type : {COLOR_YVU420_PLANAR, COLOR_YVU422_PLANAR, COLOR_YUV420_PACK2}) {
    const Frame in = workspace::noiseFrame(type, 32, 32, 8);
    Converter converter(infoOf(in), Request());
    Frame first;
    Frame second;
    converter.convert(in, first);
    converter.convert(in, second);
    EXPECT_TRUE(first.planes[0] == second.planes[0]) << type;
  }
}

// Twins that hold the same picture in another order of bytes.
TEST(Converter, VFirstPlanesMeanTheSamePicture) {
  const Frame uFirst = workspace::noiseFrame(COLOR_YUV420_PLANAR, 32, 32, 8);
  Frame vFirst = uFirst;
  vFirst.type = COLOR_YVU420_PLANAR;
  std::swap(vFirst.planes[1], vFirst.planes[2]);
  EXPECT_TRUE(convert(uFirst, Request()).planes[0] == convert(vFirst, Request()).planes[0]);
  Frame pairs = makeFrame(COLOR_YUV420_PACK, 32, 32);
  pairs.planes[0] = uFirst.planes[0];
  for (std::size_t i = 0; i < uFirst.planes[1].size(); ++i) {
    pairs.planes[1][2 * i] = uFirst.planes[1][i];
    pairs.planes[1][2 * i + 1] = uFirst.planes[2][i];
  }
  EXPECT_TRUE(convert(uFirst, Request()).planes[0] == convert(pairs, Request()).planes[0]);
}

constexpr uint8_t kU = 50;
constexpr uint8_t kV = 200;

/// Every U sample is kU and every V sample kV, in the order that the type has them.
Frame evenlyColoured(int type) {
  Frame frame = workspace::noiseFrame(type, 16, 8, 4);
  const bool vFirst = type == COLOR_YVU420_PLANAR || type == COLOR_YVU422_PLANAR || type == COLOR_YUV420_PACK2;
  const uint8_t first = vFirst ? kV : kU;
  const uint8_t second = vFirst ? kU : kV;
  if (planeCount(type) == 3) {
    std::ranges::fill(frame.planes[1], first);
    std::ranges::fill(frame.planes[2], second);
    return frame;
  }
  for (std::size_t i = 0; i < frame.planes[1].size(); ++i) {
    frame.planes[1][i] = i % 2 == 0 ? first : second;
  }
  return frame;
}

bool isAll(const std::vector<uint8_t> &plane, uint8_t value) {
  return !plane.empty() && std::ranges::all_of(plane, [value](uint8_t sample) { return sample == value; });
}

// The second plane of yv12 holds V, of i420 U, whatever the picture came from.
TEST(Converter, PlanarOutputHasItsPlanesInItsOrder) {
  for (const int from :
       {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR, COLOR_YUV422_PLANAR, COLOR_YVU422_PLANAR, COLOR_YUV444_PLANAR,
        COLOR_YUV440_PLANAR, COLOR_YUV411_PLANAR, COLOR_YUV_QUARTER_HEIGHT, COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    for (const int to : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR}) {
      Request request;
      request.outType = to;
      const Frame in = evenlyColoured(from);
      const Frame out = convert(in, request);
      const bool vFirst = to == COLOR_YVU420_PLANAR;
      EXPECT_TRUE(out.planes[0] == in.planes[0]) << from << " to " << to;
      EXPECT_TRUE(isAll(out.planes[1], vFirst ? kV : kU)) << from << " to " << to;
      EXPECT_TRUE(isAll(out.planes[2], vFirst ? kU : kV)) << from << " to " << to;
    }
  }
}

TEST(Converter, SameTypeKeepsTheOrderOfPlanesTurnedAndScaledToo) {
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR}) {
    const Frame in = evenlyColoured(type);
    for (const uint32_t rotation : {ROTATION_NONE, ROTATION_90_LEFT, ROTATION_180}) {
      for (const bool scaled : {false, true}) {
        Request request;
        request.outType = type;
        request.rotation = rotation;
        request.scale = scaled ? std::optional(Size{8, 4}) : std::nullopt;
        const Frame out = convert(in, request);
        EXPECT_TRUE(isAll(out.planes[1], in.planes[1][0])) << type << " rotation " << rotation << " " << scaled;
        EXPECT_TRUE(isAll(out.planes[2], in.planes[2][0])) << type << " rotation " << rotation << " " << scaled;
      }
    }
  }
}

TEST(Converter, MatricesAreSelected) {
  const Frame in = workspace::noiseFrame(COLOR_YUV422_YUYV, 32, 32, 8);
  Request request;
  const Frame bt601 = convert(in, request);
  request.matrix = {MATRIX_BT709, {}};
  const Frame bt709 = convert(in, request);
  EXPECT_FALSE(bt601.planes[0] == bt709.planes[0]);
  request.matrix = {MATRIX_GREY, {}};
  const Frame grey = convert(in, request);
  EXPECT_FALSE(grey.planes[0] == bt601.planes[0]);
  // 512 times the factors of BT.601 land on its very coefficients.
  request.matrix = {MATRIX_CUSTOM, {512 * 1.403, 512 * 0.714, 512 * 1.773, 512 * 0.344}};
  EXPECT_TRUE(convert(in, request).planes[0] == bt601.planes[0]);
  // And the next stream without a wish is back at BT.601.
  EXPECT_TRUE(convert(in, Request()).planes[0] == bt601.planes[0]);
}

TEST(Converter, ImpossibleStreamsAreRefused) {
  EXPECT_THROW(Converter({COLOR_YUV420_PLANAR, 1, 8, "", ""}, Request()), Error);
  EXPECT_THROW(Converter({COLOR_YUV420_PLANAR, 0, 8, "", ""}, Request()), Error);
  EXPECT_THROW(Converter({COLOR_YUV420_PLANAR, 70000, 8, "", ""}, Request()), Error);
  Request same;
  same.outType = COLOR_YUV420_PLANAR;
  same.scale = Size{1, 8};
  EXPECT_THROW(Converter({COLOR_YUV420_PLANAR, 16, 16, "", ""}, same), Error);
}

TEST(Converter, LibraryCodesHaveWords) {
  std::vector<std::string> seen;
  for (const uint32_t code : {CC_OK, CC_ERR_ARGUMENT, CC_ERR_NO_MEMORY, CC_ERR_PARAM_ID, CC_ERR_IN_TYPE,
                              CC_ERR_OUT_TYPE, CC_ERR_UNINIT, CC_ERR_SAME_TYPE, uint32_t{12345}}) {
    const std::string words = describeResult(code);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), words), 0) << words;
    seen.push_back(words);
  }
  // More than 1024 times the input: the library says no, and the message says what was asked.
  Request request;
  request.scale = Size{8200, 8};
  Converter converter({COLOR_YUV420_PLANAR, 8, 8, "", ""}, request);
  Frame out;
  try {
    converter.convert(workspace::noiseFrame(COLOR_YUV420_PLANAR, 8, 8, 1), out);
    FAIL();
  } catch (const Error &error) {
    EXPECT_NE(std::string(error.what()).find("i420 8x8 to rgb565 8200x8"), std::string::npos) << error.what();
    EXPECT_NE(std::string(error.what()).find("0x80000002"), std::string::npos) << error.what();
  }
}

} // namespace
