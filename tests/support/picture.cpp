#include "support/picture.h"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace support {

bool isSemiPlanar(int type) {
  return type == 11 || type == 35;
}
bool isPacked422(int type) {
  return (type >= 6 && type <= 9) || (type >= 14 && type <= 17);
}
bool isRgb16(int type) {
  return type == 30 || type == 31;
}

int planeCount(int type) {
  if (isSemiPlanar(type)) {
    return 2;
  }
  return isPacked422(type) || isRgb16(type) || type == 32 ? 1 : 3;
}

template <class Number>
Number tightStride(int type, Number width) {
  if (isPacked422(type)) {
    return (width + 1) / 2 * 4;
  }
  if (isRgb16(type)) {
    return 2 * width;
  }
  return type == 32 ? 3 * width : width;
}

namespace {
template <class Number>
Number pairBytes(Number width, Number stride, LastPair lastPair) {
  if (lastPair == LastPair::Dropped || width % 2 == 0) {
    return width / 2 * 2;
  }
  return stride > width ? width + 1 : width;
}
} // namespace

LastPair lastInputPair(const ConvertParams &p) {
  return p.inType == p.outType ? LastPair::Kept : LastPair::Dropped;
}

LastPair lastOutputPair(const ConvertParams &p) {
  const bool turned = p.rotation == ROTATION_90_LEFT || p.rotation == ROTATION_90_RIGHT;
  return turned ? LastPair::Dropped : lastInputPair(p);
}

template <class Number>
BasicPlaneShape<Number> planeShape(int type, Number width, Number height, Number stride, int index, LastPair lastPair) {
  if (index == 0) {
    return {tightStride(type, width), height, stride};
  }
  switch (type) {
  case 1:
  case 13:
    return {width / 2, height, stride >> 1};
  case 2:
    return {width, height / 2, stride};
  case 3:
  case 12:
    return {width / 2, height / 2, stride >> 1};
  case 4:
    return {width / 4, height, stride >> 2};
  case 11:
  case 35:
    return index == 1 ? BasicPlaneShape<Number>{pairBytes(width, stride, lastPair), height / 2, stride}
                      : BasicPlaneShape<Number>{};
  case 37:
    return {width, height / 4, stride};
  case 0:
  case 34:
    return {width, height, stride};
  default:
    return {};
  }
}

template int tightStride(int, int);
template int64_t tightStride(int, int64_t);
template BasicPlaneShape<int> planeShape(int, int, int, int, int, LastPair);
template BasicPlaneShape<int64_t> planeShape(int, int64_t, int64_t, int64_t, int, LastPair);

Block::Block(std::size_t bytes, unsigned misalign) : store_(misalign + bytes), offset_(misalign), size_(bytes) {}

Block::Block(const Block &other) : Block(other.size_) {
  std::copy_n(other.data(), size_, data());
}

Block &Block::operator=(const Block &other) {
  if (this != &other) {
    *this = Block(other);
  }
  return *this;
}

namespace {
uint32_t next(uint32_t &state) {
  state ^= state << 13;
  state ^= state >> 17;
  state ^= state << 5;
  return state;
}
} // namespace

void fill(uint8_t *bytes, std::size_t count, Fill kind, uint32_t seed) {
  uint32_t state = seed * 2654435761U + 1U;
  for (std::size_t i = 0; i < count; ++i) {
    switch (kind) {
    case Fill::Noise:
      bytes[i] = static_cast<uint8_t>(next(state) >> 11);
      break;
    case Fill::Ramp:
      bytes[i] = static_cast<uint8_t>(i * 3 + seed * 37);
      break;
    case Fill::Extremes:
      bytes[i] = (next(state) & 0x400U) != 0 ? 255 : 0;
      break;
    case Fill::Flat:
      bytes[i] = static_cast<uint8_t>(seed);
      break;
    }
  }
}

Picture::Picture(int type_, int width_, int height_, int stride_, Fill kind, uint32_t seed, unsigned misalign,
                 LastPair lastPair)
    : type(type_), width(width_), height(height_), stride(stride_) {
  for (int i = 0; i < planeCount(type); ++i) {
    Block &block = planes_[static_cast<std::size_t>(i)];
    block = Block(planeShape(type, width, height, stride, i, lastPair).bytes(), misalign);
    fill(block.data(), block.size(), kind, seed + static_cast<uint32_t>(i) * 1000U);
  }
}

const uint8_t *Picture::plane(int index) const {
  return planes_[static_cast<std::size_t>(index)].data();
}
uint8_t *Picture::plane(int index) {
  return planes_[static_cast<std::size_t>(index)].data();
}

void Picture::describe(ConvertParams &params) const {
  params.inType = type;
  params.inWidth = width;
  params.inHeight = height;
  params.inStride = stride;
  for (int i = 0; i < 3; ++i) {
    params.inBuf[i] = i < planeCount(type) ? plane(i) : nullptr;
  }
}

Canvas::Canvas(const std::vector<PlaneShape> &shapes, unsigned misalign) : shapes_(shapes) {
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const std::size_t bytes = static_cast<std::size_t>(std::max(shapes[i].lines, 0)) *
                              static_cast<std::size_t>(std::max(shapes[i].stride, shapes[i].lineBytes));
    blocks_.emplace_back(2 * kGuard + bytes, misalign);
    fill(blocks_.back().data(), blocks_.back().size(), Fill::Noise, 77U + static_cast<uint32_t>(i));
  }
}

Canvas Canvas::forPicture(int type, int width, int height, int stride, unsigned misalign) {
  std::vector<PlaneShape> shapes;
  for (int i = 0; i < planeCount(type); ++i) {
    shapes.push_back(planeShape(type, width, height, stride, i));
  }
  return Canvas(shapes, misalign);
}

uint8_t *Canvas::plane(int index) {
  return blocks_[static_cast<std::size_t>(index)].data() + kGuard;
}

void Canvas::describe(ConvertParams &params) {
  params.outStride = shapes_[0].stride;
  for (int i = 0; i < 3; ++i) {
    params.outBuf[i] = static_cast<std::size_t>(i) < blocks_.size() ? plane(i) : nullptr;
  }
}

std::string Canvas::difference(const Canvas &expected) const {
  std::ostringstream text;
  for (std::size_t p = 0; p < blocks_.size(); ++p) {
    const Block &got = blocks_[p];
    const Block &want = expected.blocks_.at(p);
    if (got.size() != want.size()) {
      return "the canvases have different shapes";
    }
    if (std::memcmp(got.data(), want.data(), got.size()) == 0) {
      continue;
    }
    std::size_t first = got.size();
    std::size_t count = 0;
    for (std::size_t i = 0; i < got.size(); ++i) {
      if (got.data()[i] != want.data()[i]) {
        first = std::min(first, i);
        ++count;
      }
    }
    const auto at = static_cast<std::ptrdiff_t>(first) - static_cast<std::ptrdiff_t>(kGuard);
    const std::ptrdiff_t stride = std::max(shapes_[p].stride, 1);
    text << "plane " << p << ": " << count << " bytes differ, first at offset " << at << " (line " << at / stride
         << ", byte " << at % stride << " of stride " << stride << "): got " << int{got.data()[first]} << ", expected "
         << int{want.data()[first]} << "\n";
  }
  return text.str();
}

std::string Canvas::touched() const {
  Canvas fresh(shapes_);
  return difference(fresh);
}

ConvertParams blankParams() {
  ConvertParams params{};
  params.rotation = ROTATION_NONE;
  return params;
}

uint32_t convertOnce(ConvertParams &params) {
  ConvertContext *handle = nullptr;
  uint32_t code = zqCCInit(&handle);
  if (code != CC_OK) {
    return code;
  }
  code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params);
  if (code == CC_ERR_NO_MEMORY) {
    return code;
  }
  if (code == CC_OK) {
    code = zqCCProcess(handle, &params);
  }
  zqCCUninit(handle);
  return code;
}

} // namespace support
