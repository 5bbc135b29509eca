#include "containment/guarded_case.h"

#include "containment/expectation.h"
#include "reference/result_code.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

namespace containment {
namespace {

using support::Against;
using support::GuardedPages;
using support::PlaneShape;

/// A line is never longer than its stride: a packed line of odd width may be cut there.
PlaneShape shapeOf(int type, int width, int height, int stride, int index, support::LastPair lastPair) {
  PlaneShape shape = support::planeShape(type, width, height, stride, index, lastPair);
  shape.lineBytes = std::min(shape.lineBytes, shape.stride);
  return shape;
}

PlaneShape inputShape(const ConvertParams &p, const Sizes &sizes, int index) {
  return shapeOf(p.inType, sizes.width, sizes.height, p.inStride, index, support::lastInputPair(p));
}

PlaneShape outputShape(const ConvertParams &p, int index) {
  const reference::Size written = writtenSize(p);
  return shapeOf(p.outType, written.width, written.height, p.outStride, index, support::lastOutputPair(p));
}

int pixelBytesOf(int type) {
  if (support::isPacked422(type)) {
    return 4;
  }
  if (support::isRgb16(type) || support::isSemiPlanar(type)) {
    return 2;
  }
  return type == COLOR_RGB24 ? 3 : 1;
}

std::string hex(uint32_t code) {
  std::ostringstream text;
  text << "0x" << std::hex << code;
  return text.str();
}

} // namespace

std::string GuardedCase::describe() const {
  std::ostringstream text;
  text << "type " << mode.inType << " to " << mode.outType << ", isResize " << mode.isResize << ", rotation "
       << mode.rotation << ", quality " << mode.quality << ", " << sizes.width << "x" << sizes.height << " to "
       << sizes.outWidth << "x" << sizes.outHeight << ", line padding " << inPadding << "/" << outPadding << ", fill "
       << static_cast<int>(fill) << ", seed " << seed << ", matrix " << static_cast<int>(matrix.kind) << "/"
       << matrix.entry;
  return text.str();
}

Bench::Bench(std::size_t bytesPerPlane) {
  for (auto &pages : in_) {
    pages = std::make_unique<GuardedPages>(bytesPerPlane, GuardedPages::Access::ReadOnly);
  }
  for (auto &pages : out_) {
    pages = std::make_unique<GuardedPages>(bytesPerPlane, GuardedPages::Access::ReadWrite);
  }
}

/// Samples depend on the case alone, padding between the lines on the placement too: what reads padding cannot come out
/// the same twice.
void Bench::placeInputs(const GuardedCase &c, ConvertParams &params, Against against) {
  const Sizes &s = c.sizes;
  params.inStride = support::tightStride(params.inType, s.width) + c.inPadding;
  inputs_.clear();
  std::fill(std::begin(params.inBuf), std::end(params.inBuf), nullptr);
  for (int i = 0; i < support::planeCount(params.inType); ++i) {
    GuardedPages &pages = *in_[static_cast<std::size_t>(i)];
    const PlaneShape shape = inputShape(params, s, i);
    pages.place(shape.bytes(), against);
    const bool same = against == Against::End || readsPadding(params);
    const uint32_t padding = c.seed + (same ? 0x51U : 0xA7U);
    support::fill(pages.write(), pages.size(), support::Fill::Noise, padding);
    if (shape.bytes() > 0) {
      Bytes line(static_cast<std::size_t>(shape.lineBytes));
      for (int y = 0; y < shape.lines; ++y) {
        support::fill(line.data(), line.size(), c.fill, c.seed + static_cast<uint32_t>(1000 * i + 7 * y));
        std::copy(line.begin(), line.end(), pages.write() + std::ptrdiff_t{y} * shape.stride);
      }
    }
    params.inBuf[i] = pages.data();
    inputs_.push_back({"input plane " + std::to_string(i), shape, &pages, pixelBytesOf(params.inType)});
  }
}

/// The expected bytes of every plane, and with them how far the plane reaches: pictures that lie at the right end of
/// their lines take the last line's padding as well.
void Bench::makeExpected(const GuardedCase &c, const ConvertParams &params, uint32_t code) {
  std::array<std::size_t, 3> tight{};
  for (int i = 0; i < 3; ++i) {
    const bool exists = i < support::planeCount(params.outType);
    const PlaneShape shape = exists ? outputShape(params, i) : PlaneShape{};
    const auto index = static_cast<std::size_t>(i);
    tight[index] = shape.bytes();
    ground_[index].assign(
        static_cast<std::size_t>(std::max(shape.lines, 0)) * static_cast<std::size_t>(std::max(shape.stride, 0)), 0);
    support::fill(ground_[index].data(), ground_[index].size(), support::Fill::Noise, 77U + static_cast<uint32_t>(i));
  }
  expected_ = modelled(params, c, code, ground_);
  const bool turned = params.rotation >= ROTATION_90_LEFT && params.rotation <= ROTATION_180;
  std::array<Bytes, 3> inverted = ground_;
  if (turned) {
    for (Bytes &plane : inverted) {
      std::transform(plane.begin(), plane.end(), plane.begin(), [](uint8_t byte) { return ~byte & 0xFF; });
    }
    inverted = modelled(params, c, code, inverted);
  }
  for (std::size_t i = 0; i < 3; ++i) {
    // A byte that comes out the same on both grounds has been written.
    bool beyond = false;
    for (std::size_t k = tight[i]; turned && k < ground_[i].size(); ++k) {
      beyond = beyond || inverted[i][k] == expected_[i][k];
    }
    if (!beyond) {
      ground_[i].resize(tight[i]);
      expected_[i].resize(tight[i]);
    }
  }
}

std::array<Bench::Bytes, 3> Bench::modelled(ConvertParams p, const GuardedCase &c, uint32_t code,
                                            std::array<Bytes, 3> planes) {
  for (std::size_t i = 0; i < 3; ++i) {
    p.outBuf[i] = planes[i].data();
  }
  if (code == CC_OK) {
    convertByReference(p, c.matrix.colour());
  }
  return planes;
}

void Bench::placeOutputs(ConvertParams &params, Against against) {
  outputs_.clear();
  std::fill(std::begin(params.outBuf), std::end(params.outBuf), nullptr);
  for (int i = 0; i < support::planeCount(params.outType); ++i) {
    const auto index = static_cast<std::size_t>(i);
    GuardedPages &pages = *out_[index];
    pages.place(ground_[index].size(), against);
    std::copy(ground_[index].begin(), ground_[index].end(), pages.write());
    params.outBuf[i] = pages.data();
    outputs_.push_back(
        {"output plane " + std::to_string(i), outputShape(params, i), &pages, pixelBytesOf(params.outType)});
  }
}

std::string Bench::faultReport(const support::Fault &fault) const {
  static constexpr std::array<const char *, 3> kVerbs{"reads", "writes", "touches"};
  const std::string verb = kVerbs.at(static_cast<std::size_t>(fault.kind));
  for (const auto *planes : {&inputs_, &outputs_}) {
    for (const PlaneInMemory &plane : *planes) {
      if (plane.pages->covers(fault.address)) {
        const auto offset =
            static_cast<std::ptrdiff_t>(fault.address - reinterpret_cast<std::uintptr_t>(plane.pages->data()));
        return "  " + verb + " outside its memory at " + plane.name + ": " + placeOf(plane, offset) + "\n";
      }
    }
  }
  std::ostringstream text;
  text << "  " << verb << " memory that is nowhere near a plane, at 0x" << std::hex << fault.address << "\n";
  return text.str();
}

std::string Bench::convertAndCompare(const GuardedCase &c, ConvertParams &params, uint32_t code) {
  uint32_t answer = CC_OK;
  const std::optional<support::Fault> fault = support::catchFault([&] {
    answer = reference::convertWith(params, c.matrix);
    if (sabotage_) {
      sabotage_(inputs_, outputs_);
    }
  });
  std::string report = fault ? faultReport(*fault) : "";
  if (!fault && answer != code) {
    report += "  answers " + hex(answer) + " instead of " + hex(code) + "\n";
  }
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    if (const auto offset = outputs_[i].pages->damage()) {
      report += "  writes outside " + outputs_[i].name + ": " + placeOf(outputs_[i], *offset) + "\n";
    }
    report += differences(outputs_[i], expected_[i].data(), expected_[i].size());
  }
  return report;
}

Outcome Bench::run(const GuardedCase &c) {
  const reference::DitherRestorer restorer;
  Outcome outcome;
  ConvertParams params = recordOf(c.mode, c.sizes);
  params.outStride = support::tightStride(params.outType, writtenSize(params).width) + c.outPadding;
  for (const Against against : {Against::End, Against::Start}) {
    placeInputs(c, params, against);
    if (against == Against::End) {
      // Planes of the output do not matter to the code, so long as they are there.
      std::fill(std::begin(params.outBuf), std::end(params.outBuf), in_[0]->write());
      outcome.code = reference::setupCode(params);
      outcome.code = outcome.code == CC_OK ? reference::resultCode(params, params) : outcome.code;
      makeExpected(c, params, outcome.code);
    }
    placeOutputs(params, against);
    const std::string report = convertAndCompare(c, params, outcome.code);
    if (!report.empty()) {
      outcome.report +=
          c.describe() +
          (against == Against::End ? ", unmapped behind the planes:\n" : ", unmapped in front of the planes:\n") +
          report;
    }
  }
  return outcome;
}

} // namespace containment
