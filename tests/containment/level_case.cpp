#include "containment/level_case.h"

#include "containment/expectation.h"
#include "support/levels.h"
#include "support/picture.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace containment {
namespace {

using support::Against;
using support::GuardedPages;

constexpr std::size_t kAlignments = 64;

std::size_t inputBytes(const ConvertParams &p, int plane) {
  return support::planeShape(p.inType, p.inWidth, p.inHeight, p.inStride, plane, support::lastInputPair(p)).bytes();
}

/// Turned pictures may lie at the right end of their lines.
std::size_t outputBytes(const ConvertParams &p, int plane) {
  const reference::Size written = writtenSize(p);
  const support::PlaneShape shape =
      support::planeShape(p.outType, written.width, written.height, p.outStride, plane, support::lastOutputPair(p));
  const bool turned = p.rotation >= ROTATION_90_LEFT && p.rotation <= ROTATION_180;
  const std::size_t whole = static_cast<std::size_t>(shape.lines) * static_cast<std::size_t>(shape.stride);
  return turned ? std::max(shape.bytes(), whole) : shape.bytes();
}

void place(GuardedPages &pages, std::size_t bytes, Placement placement, std::size_t alignment) {
  if (placement != Placement::Aligned) {
    pages.place(bytes, placement == Placement::End ? Against::End : Against::Start);
    return;
  }
  // The pages begin at a multiple of 64.
  pages.place(bytes, Against::End, (pages.capacity() - bytes - alignment) % kAlignments);
}

} // namespace

std::string LevelCase::describe() const {
  static constexpr std::array<const char *, 3> kPlacements{"unmapped behind", "unmapped in front", "aligned"};
  std::ostringstream text;
  text << "type " << mode.inType << " to " << mode.outType << ", isResize " << mode.isResize << ", rotation "
       << mode.rotation << ", quality " << mode.quality << ", " << sizes.width << "x" << sizes.height << " to "
       << sizes.outWidth << "x" << sizes.outHeight << ", strides " << inStride << "/" << outStride << ", "
       << kPlacements.at(static_cast<std::size_t>(placement)) << " (" << inAlignment << "/" << outAlignment
       << "), seed " << seed << ", matrix " << static_cast<int>(matrix.kind) << "/" << matrix.entry;
  for (const double value : matrix.custom) {
    text << " " << value;
  }
  return text.str();
}

LevelBench::LevelBench(std::size_t bytesPerPlane) {
  for (auto &pages : in_) {
    pages = std::make_unique<GuardedPages>(bytesPerPlane, GuardedPages::Access::ReadOnly);
  }
  for (auto &pages : out_) {
    pages = std::make_unique<GuardedPages>(bytesPerPlane, GuardedPages::Access::ReadWrite);
  }
}

void LevelBench::placeInputs(const LevelCase &c, ConvertParams &params) {
  const bool extremes = c.seed % 4 == 3;
  for (int i = 0; i < support::planeCount(params.inType); ++i) {
    const auto plane = static_cast<std::size_t>(i);
    GuardedPages &pages = *in_[plane];
    // No two planes lie alike.
    place(pages, inputBytes(params, i), c.placement, (c.inAlignment + 21 * plane) % kAlignments);
    support::fill(pages.write(), pages.size(), extremes ? support::Fill::Extremes : support::Fill::Noise,
                  c.seed + static_cast<uint32_t>(i));
    params.inBuf[i] = pages.data();
  }
}

void LevelBench::placeOutputs(const LevelCase &c, ConvertParams &params) {
  for (int i = 0; i < support::planeCount(params.outType); ++i) {
    const auto plane = static_cast<std::size_t>(i);
    GuardedPages &pages = *out_[plane];
    place(pages, outputBytes(params, i), c.placement, (c.outAlignment + 21 * plane) % kAlignments);
    support::fill(pages.write(), pages.size(), support::Fill::Noise, 77U + static_cast<uint32_t>(i));
    params.outBuf[i] = pages.data();
  }
}

LevelBench::Result LevelBench::convertAt(zqcc::Level level, const LevelCase &c, ConvertParams params) {
  placeOutputs(c, params);
  Result result;
  const support::LevelsForced forced(level);
  const std::optional<support::Fault> fault =
      support::catchFault([&] { result.code = reference::convertWith(params, c.matrix); });
  if (fault) {
    result.report += "  touches memory that is not its own at " + std::string(support::nameOf(level)) + "\n";
  }
  for (int i = 0; i < support::planeCount(params.outType); ++i) {
    const auto plane = static_cast<std::size_t>(i);
    const GuardedPages &pages = *out_[plane];
    if (const auto offset = pages.damage()) {
      result.report += "  writes at byte " + std::to_string(*offset) + " of the " + std::to_string(pages.size()) +
                       " of output plane " + std::to_string(i) + " at " + support::nameOf(level) + "\n";
    }
    result.planes[plane].assign(pages.write(), pages.write() + pages.size());
  }
  return result;
}

LevelBench::Outcome LevelBench::compare(const LevelCase &c, zqcc::Level level) {
  const reference::DitherRestorer restorer;
  ConvertParams params = recordOf(c.mode, c.sizes);
  params.inStride = c.inStride;
  params.outStride = c.outStride;
  placeInputs(c, params);
  const Result portable = convertAt(zqcc::LEVEL_PORTABLE, c, params);
  const Result vector = convertAt(level, c, params);
  Outcome outcome{portable.code, portable.report + vector.report};
  if (vector.code != portable.code) {
    outcome.report +=
        "  answers " + std::to_string(vector.code) + " instead of " + std::to_string(portable.code) + "\n";
  }
  for (std::size_t i = 0; i < 3; ++i) {
    const Bytes &found = vector.planes[i];
    const Bytes &expected = portable.planes[i];
    const auto [differs, other] = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end());
    if (differs != found.end()) {
      outcome.report += "  output plane " + std::to_string(i) + " differs, first at byte " +
                        std::to_string(differs - found.begin()) + " of " + std::to_string(found.size()) + ": " +
                        std::to_string(*differs) + " instead of " + std::to_string(*other) + "\n";
    }
  }
  if (!outcome.report.empty()) {
    outcome.report = c.describe() + ":\n" + outcome.report;
  }
  return outcome;
}

} // namespace containment
