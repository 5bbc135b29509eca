#include "convert.h"

#include "error.h"
#include "notes.h"
#include "stream_tags.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace zqconvert {

namespace {

std::string hex(uint32_t code) {
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += "0123456789ABCDEF"[(code >> shift) & 15];
  }
  return text;
}

/// Bytes from the start of plane `index` to its sample for pixel (x, y), which must lie on a sample.
std::size_t offsetOf(const Frame &frame, int index, int x, int y) {
  const ColorTypeInfo &type = colorType(frame.type);
  const auto stride = static_cast<std::size_t>(frame.shape(index).stride);
  auto column = static_cast<std::size_t>(x);
  auto line = static_cast<std::size_t>(y);
  if (index == 0) {
    // tightStride() of an even width is what so many pixels take; positions inside packed groups are refused earlier.
    column = static_cast<std::size_t>(tightStride(frame.type, x));
  } else {
    line >>= static_cast<unsigned>(type.chromaShiftY);
    if (type.family == Family::Planar) {
      column >>= static_cast<unsigned>(type.chromaShiftX);
    }
  }
  return line * stride + column;
}

} // namespace

std::string describeResult(uint32_t code) {
  switch (code) {
  case CC_OK:
    return "success";
  case CC_ERR_ARGUMENT:
    return "the library refuses these sizes or modes";
  case CC_ERR_NO_MEMORY:
  case CC_ERR_NO_MEMORY_ONESHOT:
    return "the library could not get enough memory";
  case CC_ERR_PARAM_ID:
    return "the library does not know this parameter";
  case CC_ERR_IN_TYPE:
    return "the library does not take this input type here";
  case CC_ERR_OUT_TYPE:
    return "the library has no route to this output type";
  case CC_ERR_UNINIT:
    return "the library could not release its memory";
  case CC_ERR_SAME_TYPE:
    return "the library converts between different types only here";
  default:
    return "the library reports an unknown code";
  }
}

Converter::Converter(const StreamInfo &input, const Request &request)
    : input_(input), request_(request), part_{0, 0, input.width, input.height}, output_(input) {
  requirePlausible({input_.width, input_.height}, "input");
  if (request_.crop) {
    requireCrop();
    part_ = *request_.crop;
  }
  requireSamples(input_.type, part_.width, part_.height, "input");
  if (request_.scale) {
    request_.scale = completed(*request_.scale, {part_.width, part_.height});
  }
  const Size upright = request_.scale.value_or(Size{part_.width, part_.height});
  requireRoute(upright);
  requirePlausible(upright, "--scale");
  const bool quarter = request_.rotation == ROTATION_90_LEFT || request_.rotation == ROTATION_90_RIGHT;
  output_.type = request_.outType;
  output_.width = quarter ? upright.height : upright.width;
  output_.height = quarter ? upright.width : upright.height;
  requireSamples(output_.type, output_.width, output_.height, "output");
  adaptTags(output_, {part_, upright, request_.rotation}, input_.type);
  requireOk(zqCCInit(&handle_));
}

Converter::~Converter() {
  if (handle_ != nullptr) {
    zqCCUninit(handle_);
  }
}

void Converter::requireCrop() const {
  const Rectangle &part = *request_.crop;
  requireInside(part, {input_.width, input_.height});
  const ColorTypeInfo &type = colorType(input_.type);
  const int stepX = 1 << type.chromaShiftX;
  const int stepY = 1 << type.chromaShiftY;
  if (part.x % stepX != 0 || part.y % stepY != 0) {
    throw Error("--crop must start at a multiple of " + std::to_string(stepX) + " in X and of " +
                std::to_string(stepY) + " in Y, where " + shortName(input_.type) + " has chroma samples");
  }
}

void Converter::requireRoute(Size upright) {
  Route route{input_.type, request_.outType, request_.scale.has_value(), request_.rotation, request_.quality};
  route.reduced = upright.width < part_.width && upright.height < part_.height;
  if (const std::string reason = whyNot(route); !reason.empty()) {
    throw Error(reason);
  }
  if (const std::string idle = whyQualityIsIdle(route); !idle.empty()) {
    notes_.push_back(idle);
    request_.quality = 0;
  }
  const Circumstances circumstances{
      {part_.width, part_.height}, upright, request_.matrix.index != MATRIX_BT601, input_.range};
  const std::vector<std::string> others = notesOn(route, circumstances);
  notes_.insert(notes_.end(), others.begin(), others.end());
}

void Converter::requireOk(uint32_t code) const {
  if (code != CC_OK) {
    throw Error(shortName(input_.type) + " " + toText({part_.width, part_.height}) + " to " + shortName(output_.type) +
                " " + toText({output_.width, output_.height}) + ": " + describeResult(code) + " (" + hex(code) + ")");
  }
}

ConvertParams Converter::describe(const Frame &in, Frame &out) const {
  ConvertParams params{};
  params.inType = in.type;
  params.inWidth = part_.width;
  params.inHeight = part_.height;
  params.inStride = in.stride;
  for (int i = 0; i < planeCount(in.type); ++i) {
    params.inBuf[i] = in.planes[static_cast<std::size_t>(i)].data() + offsetOf(in, i, part_.x, part_.y);
  }
  const Size upright = request_.scale.value_or(Size{part_.width, part_.height});
  params.outType = out.type;
  params.outWidth = upright.width;
  params.outHeight = upright.height;
  params.outStride = out.stride;
  for (int i = 0; i < planeCount(out.type); ++i) {
    params.outBuf[i] = out.planes[static_cast<std::size_t>(i)].data();
  }
  if (out.type == COLOR_YVU420_PLANAR && in.type != out.type) {
    // Conversions give U before V whatever the type says; only copies of yv12 keep its order.
    std::swap(params.outBuf[1], params.outBuf[2]);
  }
  params.isResize = request_.scale ? 1 : 0;
  params.rotation = request_.rotation;
  params.antiAlias = request_.quality;
  return params;
}

void Converter::selectMatrix() {
  if (request_.matrix.index == MATRIX_CUSTOM) {
    requireOk(zqCCSetParameter(handle_, PARAM_CUSTOM_MATRIX, request_.matrix.custom.data()));
    return;
  }
  // An index travels as a pointer-sized integer; the library never follows it.
  const auto index = static_cast<uintptr_t>(request_.matrix.index);
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  requireOk(zqCCSetParameter(handle_, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(index)));
}

void Converter::setUp(ConvertParams &params) {
  const uint32_t code = zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &params);
  if (code == CC_ERR_NO_MEMORY) {
    handle_ = nullptr; // the library has released it
  }
  requireOk(code);
  selectMatrix();
  ready_ = true;
}

void Converter::convert(const Frame &in, Frame &out) {
  if (handle_ == nullptr) {
    throw Error("the conversion is not ready");
  }
  if (out.type != output_.type || out.width != output_.width || out.height != output_.height) {
    out = makeRoomyFrame(output_.type, output_.width, output_.height);
  }
  out.tags = output_.frameTags ? in.tags : "";
  // Made anew for every frame: the library exchanges the chroma planes of yv12 and yv16 in the record.
  ConvertParams params = describe(in, out);
  if (!ready_) {
    setUp(params);
  }
  const auto start = std::chrono::steady_clock::now();
  const uint32_t code = zqCCProcess(handle_, &params);
  seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  requireOk(code);
}

} // namespace zqconvert
