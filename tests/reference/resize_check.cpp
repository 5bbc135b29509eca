#include "reference/resize_check.h"

#include "reference/resize.h"

#include <cstring>
#include <sstream>

namespace reference {
namespace {

std::string describe(const ResizeCase &c) {
  std::ostringstream text;
  text << "type " << c.inType << " to " << c.outType << ", " << c.width << "x" << c.height << " to " << c.outWidth
       << "x" << c.outHeight << ", rotation " << c.rotation << ", quality " << c.quality << ", fill "
       << static_cast<int>(c.fill) << ", seed " << c.seed << ", padding " << c.inPadding << "/" << c.outPadding
       << ", misaligned by " << c.misalign << ": ";
  return text.str();
}

} // namespace

bool writesTurned(const ResizeCase &c) {
  const bool upright = c.outType == 32 && (c.inType == 1 || c.inType == 3 || (c.inType >= 11 && c.inType <= 13) ||
                                           c.inType == 34 || c.inType == 35);
  return (c.rotation == 3 || c.rotation == 4) && !upright;
}

support::Picture pictureFor(const ResizeCase &c) {
  const int stride = support::tightStride(c.inType, c.width) + c.inPadding;
  return {c.inType, c.width, c.height, stride, c.fill, c.seed, c.misalign};
}

support::Picture greyPicture(const ResizeCase &c, uint8_t luma) {
  support::Picture picture = pictureFor(c);
  for (int i = 0; i < support::planeCount(c.inType); ++i) {
    const support::PlaneShape shape = support::planeShape(c.inType, c.width, c.height, picture.stride, i);
    std::memset(picture.plane(i), i == 0 ? luma : 128, shape.bytes());
  }
  return picture;
}

support::Canvas canvasFor(const ResizeCase &c) {
  const int width = writesTurned(c) ? c.outHeight : c.outWidth;
  const int lines = writesTurned(c) ? c.outWidth : c.outHeight;
  const int stride = support::tightStride(c.outType, width) + c.outPadding;
  return support::Canvas::forPicture(c.outType, width, lines, stride, c.misalign);
}

ConvertParams recordFor(const ResizeCase &c) {
  ConvertParams params = support::blankParams();
  params.inType = c.inType;
  params.inWidth = c.width;
  params.inHeight = c.height;
  params.outType = c.outType;
  params.outWidth = c.outWidth;
  params.outHeight = c.outHeight;
  params.isResize = 1;
  params.rotation = c.rotation;
  params.antiAlias = c.quality;
  return params;
}

Colour colourFor(const Matrix &matrix) {
  Colour colour;
  if (matrix.index == MATRIX_BT709) {
    colour.matrix = {1646369, 489055, 1945737, 196083};
  } else if (matrix.index == MATRIX_GREY) {
    colour.matrix = {};
  } else if (matrix.index == MATRIX_CUSTOM) {
    for (std::size_t i = 0; i < 4; ++i) {
      colour.matrix[i] = static_cast<int32_t>(matrix.custom[i] * 2048.0);
    }
  }
  return colour;
}

uint32_t convertWith(ConvertParams &params, const Matrix &matrix) {
  ConvertContext *handle = nullptr;
  uint32_t code = zqCCInit(&handle);
  if (code != CC_OK) {
    return code;
  }
  std::array<double, 4> custom = matrix.custom;
  if (matrix.index == MATRIX_CUSTOM) {
    code = zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, custom.data());
  } else {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface takes the index in the pointer's place
    code = zqCCSetParameter(handle, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(matrix.index));
  }
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

void restoreDither() {
  ConvertContext *handle = nullptr;
  if (zqCCInit(&handle) == CC_OK) {
    std::array<double, 4> words{2 / 2048.0, -1 / 2048.0, 1 / 2048.0, -3 / 2048.0};
    zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, words.data());
    zqCCUninit(handle);
  }
}

std::string compareResized(const ResizeCase &c, const Matrix &matrix) {
  return compareResized(c, pictureFor(c), matrix);
}

std::string compareResized(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix) {
  support::Canvas got = canvasFor(c);
  support::Canvas want = canvasFor(c);
  ConvertParams params = recordFor(c);
  picture.describe(params);
  want.describe(params);
  convertResized(params, colourFor(matrix));
  got.describe(params);
  const uint32_t code = convertWith(params, matrix);
  if (code != CC_OK) {
    std::ostringstream text;
    text << describe(c) << "result code 0x" << std::hex << code;
    return text.str();
  }
  const std::string difference = got.difference(want);
  return difference.empty() ? "" : describe(c) + difference;
}

std::string refuses(const ResizeCase &c, int missing) {
  const support::Picture picture = pictureFor(c);
  support::Canvas canvas = canvasFor(c);
  ConvertParams params = recordFor(c);
  picture.describe(params);
  canvas.describe(params);
  if (missing >= 0 && missing < 3) {
    params.inBuf[missing] = nullptr;
  } else if (missing == 3) {
    params.outBuf[0] = nullptr;
  }
  const uint32_t code = support::convertOnce(params);
  std::ostringstream text;
  if (code != CC_ERR_ARGUMENT) {
    text << describe(c) << "plane " << missing << " null, result code 0x" << std::hex << code << "; ";
  }
  const std::string touched = canvas.touched();
  if (!touched.empty()) {
    text << describe(c) << "output touched: " << touched;
  }
  return text.str();
}

namespace {

std::vector<uint8_t> convertOnto(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix,
                                 uint8_t ground) {
  const int width = writesTurned(c) ? c.outHeight : c.outWidth;
  const int lines = writesTurned(c) ? c.outWidth : c.outHeight;
  const int lineBytes = width * (c.outType == 32 ? 3 : 2);
  std::vector<uint8_t> bytes(static_cast<std::size_t>(lineBytes) * static_cast<std::size_t>(lines), ground);
  ConvertParams params = recordFor(c);
  picture.describe(params);
  params.inType = c.inType;
  params.outStride = lineBytes;
  params.outBuf[0] = bytes.data();
  if (convertWith(params, matrix) != CC_OK) {
    bytes.clear();
  }
  return bytes;
}

} // namespace

std::vector<uint8_t> convertedBytes(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix) {
  return convertOnto(c, picture, matrix, 0x5A);
}

std::vector<uint16_t> convertedWords(const ResizeCase &c, const support::Picture &picture, const Matrix &matrix) {
  const std::vector<uint8_t> bytes = convertedBytes(c, picture, matrix);
  std::vector<uint16_t> words;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    words.push_back(static_cast<uint16_t>(bytes[i] | bytes[i + 1] << 8));
  }
  return words;
}

std::string leavesUnwritten(const ResizeCase &c) {
  const support::Picture picture = pictureFor(c);
  const std::vector<uint8_t> onBlack = convertOnto(c, picture, {}, 0);
  const std::vector<uint8_t> onWhite = convertOnto(c, picture, {}, 0xFF);
  if (onBlack.empty() || onBlack.size() != onWhite.size()) {
    return describe(c) + "the conversion fails";
  }
  for (std::size_t i = 0; i < onBlack.size(); ++i) {
    if (onBlack[i] != onWhite[i]) {
      return describe(c) + "byte " + std::to_string(i) + " of the picture is not written";
    }
  }
  return "";
}

int Mixer::below(int count) {
  state_ ^= state_ << 13;
  state_ ^= state_ >> 17;
  state_ ^= state_ << 5;
  return static_cast<int>((state_ >> 7) % static_cast<uint32_t>(count));
}

void Mixer::vary(ResizeCase &c) {
  c.fill = static_cast<support::Fill>(below(3));
  c.seed = static_cast<uint32_t>(below(100000));
  c.inPadding = below(3) == 0 ? 0 : below(19);
  c.outPadding = below(3) == 0 ? 0 : below(19);
  c.misalign = static_cast<unsigned>(below(16));
}

} // namespace reference
