#include "reference/direct_case.h"

#include "reference/direct.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <sstream>

namespace reference {

using support::Canvas;
using support::Picture;

namespace {
int32_t fixedPoint(double value) {
  const double scaled = value * 2048.0;
  if (std::isnan(scaled)) {
    return 0;
  }
  if (scaled >= 2147483647.0) {
    return std::numeric_limits<int32_t>::max();
  }
  return scaled <= -2147483648.0 ? std::numeric_limits<int32_t>::min() : static_cast<int32_t>(scaled);
}

ConvertParams recordFor(const Picture &picture, int outType, int rotation) {
  ConvertParams params = support::blankParams();
  picture.describe(params);
  params.outType = outType;
  params.outWidth = picture.width;
  params.outHeight = picture.height;
  params.rotation = static_cast<uint32_t>(rotation);
  return params;
}

Canvas canvasFor(const ConvertParams &params, int outExtra, unsigned misalign) {
  const Size size = writtenSize(params);
  const int stride = support::tightStride(params.outType, size.width) + outExtra;
  return Canvas::forPicture(params.outType, size.width, size.height, stride, misalign);
}
} // namespace

Colour MatrixChoice::colour() const {
  Colour colour;
  if (kind == Kind::Custom) {
    for (std::size_t i = 0; i < custom.size(); ++i) {
      colour.matrix.at(i) = fixedPoint(custom.at(i));
    }
    colour.redBlueDither = colour.matrix;
  } else if (kind == Kind::Entry) {
    static constexpr std::array<std::array<int32_t, 4>, 4> kEntries{
        {{1471152, 748683, 1859125, 360710}, {1646369, 489055, 1945737, 196083}, {0, 0, 0, 0}, {2, -1, 1, -3}}};
    colour.matrix = kEntries.at(entry);
  }
  return colour;
}

uint32_t MatrixChoice::select(ConvertContext *handle) const {
  switch (kind) {
  case Kind::Entry:
    // An index travels as a pointer.
    return zqCCSetParameter(
        handle, PARAM_COLOR_MATRIX,
        reinterpret_cast<void *>(static_cast<std::uintptr_t>(entry))); // NOLINT(performance-no-int-to-ptr)
  case Kind::Custom: {
    std::array<double, 4> values = custom;
    return zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, values.data());
  }
  default:
    return CC_OK;
  }
}

uint32_t convertWith(ConvertParams &params, const MatrixChoice &matrix) {
  ConvertContext *handle = nullptr;
  uint32_t code = zqCCInit(&handle);
  if (code != CC_OK) {
    return code;
  }
  code = matrix.select(handle);
  if (code == CC_OK) {
    code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params);
  }
  if (code == CC_ERR_NO_MEMORY) {
    return code;
  }
  if (code == CC_OK) {
    code = zqCCProcess(handle, &params);
  }
  zqCCUninit(handle);
  return code;
}

DitherRestorer::~DitherRestorer() {
  ConvertContext *handle = nullptr;
  if (zqCCInit(&handle) == CC_OK) {
    MatrixChoice::customOf({2 / 2048.0, -1 / 2048.0, 1 / 2048.0, -3 / 2048.0}).select(handle);
    MatrixChoice::entryOf(MATRIX_BT601).select(handle);
    zqCCUninit(handle);
  }
}

std::string DirectCase::describe() const {
  std::ostringstream text;
  text << "type " << inType << " to " << outType << ", " << width << "x" << height << ", rotation " << rotation
       << ", stride +" << inExtra << " to +" << outExtra << ", misaligned " << misalign << ", fill "
       << static_cast<int>(fill) << ", seed " << seed << ", matrix " << static_cast<int>(matrix.kind) << "/"
       << matrix.entry << ", isResize " << isResize << " (" << outWidth << "x" << outHeight << ")";
  return text.str();
}

bool holdsSamples(int type, int width, int height) {
  const int planes = support::planeCount(type);
  for (int i = 0; i < planes; ++i) {
    const support::PlaneShape shape = support::planeShape(type, width, height, support::tightStride(type, width), i);
    if (shape.lineBytes <= 0 || shape.lines <= 0) {
      return false;
    }
  }
  return true;
}

Size writtenSize(const ConvertParams &params) {
  const bool quarter = params.rotation == ROTATION_90_LEFT || params.rotation == ROTATION_90_RIGHT;
  const bool packed = support::isPacked422(params.inType);
  // Planar input goes upright to RGB24, and nothing but the pre-turned types turns on its way to planar 4:2:0.
  const bool preTurned =
      params.isResize == 1 && (params.inType == 0 || params.inType == 2 || params.inType == 4 || params.inType == 37);
  bool turns = quarter;
  if (params.outType == COLOR_RGB24) {
    turns = quarter && packed;
  } else if (!support::isRgb16(params.outType)) {
    turns = quarter && preTurned;
  }
  return turns ? Size{params.outHeight, params.outWidth} : Size{params.outWidth, params.outHeight};
}

uint16_t Converted::word(int column, int line) {
  const uint8_t *at = &canvas.plane(0)[line * stride + 2 * column];
  return static_cast<uint16_t>(at[0] | at[1] << 8);
}

std::array<int, 3> Converted::bgr(int column, int line) {
  const uint8_t *at = &canvas.plane(0)[line * stride + 3 * column];
  return {at[0], at[1], at[2]};
}

Converted convertPicture(const Picture &picture, int outType, int rotation, int outExtra, const MatrixChoice &matrix) {
  ConvertParams params = recordFor(picture, outType, rotation);
  Converted result{CC_OK, canvasFor(params, outExtra, 0), 0};
  result.canvas.describe(params);
  result.stride = params.outStride;
  result.code = convertWith(params, matrix);
  return result;
}

Comparison compareDirect(const DirectCase &c) {
  const int stride = support::tightStride(c.inType, c.width) + c.inExtra;
  return compareDirect(c, Picture(c.inType, c.width, c.height, stride, c.fill, c.seed, c.misalign));
}

Comparison compareDirect(const DirectCase &c, const Picture &picture) {
  ConvertParams params = recordFor(picture, c.outType, c.rotation);
  params.isResize = c.isResize;
  params.outWidth = c.outWidth > 0 ? c.outWidth : params.outWidth;
  params.outHeight = c.outHeight > 0 ? c.outHeight : params.outHeight;
  Canvas expected = canvasFor(params, c.outExtra, c.misalign);
  Canvas got = canvasFor(params, c.outExtra, c.misalign);
  expected.describe(params);
  convertDirect(params, c.matrix.colour());
  got.describe(params);
  Comparison result;
  result.code = convertWith(params, c.matrix);
  result.difference = got.difference(expected);
  return result;
}

Picture flatPicture(int type, int width, int height, int y, int u, int v) {
  Picture picture(type, width, height, support::tightStride(type, width), support::Fill::Flat, 0);
  const auto value = [](int sample) { return static_cast<uint8_t>(sample); };
  const auto set = [&](int plane, int sample) {
    support::fill(picture.plane(plane), support::planeShape(type, width, height, picture.stride, plane).bytes(),
                  support::Fill::Flat, static_cast<uint32_t>(sample));
  };
  if (support::isPacked422(type) || type == COLOR_RGB24) {
    const bool lumaFirst = type == 6 || type == 7 || type == 14 || type == 15;
    const bool uFirst = type == 6 || type == 8 || type == 14 || type == 16;
    const int first = uFirst ? u : v;
    const int second = uFirst ? v : u;
    const std::array<int, 4> group = lumaFirst ? std::array{y, first, y, second} : std::array{first, y, second, y};
    const std::array<int, 3> bgr{v, u, y};
    const std::size_t bytes = support::planeShape(type, width, height, picture.stride, 0).bytes();
    for (std::size_t i = 0; i < bytes; ++i) {
      picture.plane(0)[i] = value(type == COLOR_RGB24 ? bgr.at(i % 3) : group.at(i % 4));
    }
    return picture;
  }
  set(0, y);
  if (support::isSemiPlanar(type)) {
    const bool uFirst = type == COLOR_YUV420_PACK;
    for (int line = 0; line < height / 2; ++line) {
      for (int i = 0; i < width / 2 * 2; ++i) {
        picture.plane(1)[line * picture.stride + i] = value((i % 2 == 0) == uFirst ? u : v);
      }
    }
    return picture;
  }
  const bool exchanged = type == COLOR_YVU420_PLANAR || type == COLOR_YVU422_PLANAR;
  set(1, exchanged ? v : u);
  set(2, exchanged ? u : v);
  return picture;
}

namespace {
struct Chroma2 {
  int u, v;
};

int sweepColours(Sweep sweep) {
  return sweep == Sweep::Pairs ? 256 : 17 * 17;
}

Chroma2 sweepChroma(Sweep sweep, int index) {
  if (sweep == Sweep::Pairs) {
    return {index & 255, index & 255};
  }
  return {std::min(index % 17 * 16, 255), std::min(index / 17 % 17 * 16, 255)};
}
} // namespace

Picture sweepPicture(Sweep sweep, int type, int width, int cell) {
  // Every 2x2 cell holds one luma value, or four of them under one chroma sample.
  const int lumasPerCell = cell == 1 ? 4 : 1;
  const int cells = sweepColours(sweep) * 256 / lumasPerCell;
  const int cellsPerLine = width / 2;
  const int height = 2 * ((cells + cellsPerLine - 1) / cellsPerLine);
  Picture picture(type, width, height, support::tightStride(type, width), support::Fill::Flat, 0);
  const bool packed = support::isPacked422(type);
  const bool chromaFirst = type == 8 || type == 9 || type == 16 || type == 17;
  const bool vFirst = type == 7 || type == 9 || type == 15 || type == 17;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int block = y / 2 * cellsPerLine + x / 2;
      const int perColour = 256 / lumasPerCell;
      const int luma = block % perColour * lumasPerCell + (cell == 1 ? (y & 1) * 2 + (x & 1) : 0);
      const auto [u, v] = sweepChroma(sweep, block / perColour);
      if (packed) {
        uint8_t *bytes = &picture.plane(0)[y * picture.stride + x * 2];
        const bool second = (x & 1) != 0;
        bytes[chromaFirst ? 1 : 0] = static_cast<uint8_t>(luma);
        bytes[chromaFirst ? 0 : 1] = static_cast<uint8_t>(second != vFirst ? v : u);
        continue;
      }
      picture.plane(0)[y * picture.stride + x] = static_cast<uint8_t>(luma);
      const support::PlaneShape chroma = support::planeShape(type, width, height, picture.stride, 1);
      const int column = chroma.lineBytes == width ? x : x / 2;
      const int line = chroma.lines == height ? y : y / 2;
      picture.plane(1)[line * chroma.stride + column] = static_cast<uint8_t>(u);
      picture.plane(2)[line * chroma.stride + column] = static_cast<uint8_t>(v);
    }
  }
  return picture;
}

} // namespace reference
