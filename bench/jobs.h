// What is measured: a table of conversions. Every job runs at all of its sizes and in every program that can do it.
#pragma once

#include "zqColorConversion.h"

#include <cstdint>
#include <span>

namespace bench {

/// A layout that the first library does not have: bytes B, G, R, A.
constexpr int32_t kBgra = 100;

struct Size {
  int32_t width;
  int32_t height;
};

constexpr Size turned(const Size &size) {
  return {size.height, size.width};
}

constexpr Size kSmall = {320, 240};
constexpr Size kHd = {1280, 720};
constexpr Size kFullHd = {1920, 1080};
/// Where most jobs are measured.
constexpr Size kSizes[] = {kHd, kFullHd};
/// A frame of 256 pixels costs little but the call itself.
constexpr Size kTinySize = {16, 16};

/// How a resized sample is made. The library decides by type, turn and quality; the other libraries are told.
enum class Sampling { None, Nearest, Bilinear, Filtered, Box };

/// Output size as a fraction of the input size.
struct Scale {
  int32_t numerator;
  int32_t denominator;
};

/// Mean difference in steps of 8-bit channels. Roundings, ranges and dithers differ by a few steps; a wrong turn or an
/// exchanged channel by far more.
constexpr double kTolerance = 14;
/// For conversions in which this library is meant to take other samples than everybody else: as much work, another
/// picture.
constexpr double kAnyPicture = 255;

struct Job {
  const char *group;
  const char *name;
  int32_t inType;
  int32_t outType;
  Scale scale = {1, 1};
  Sampling sampling = Sampling::None;
  uint32_t rotation = ROTATION_NONE;
  uint32_t quality = 0;
  /// How far another library's picture may be from this library's before it counts as another picture.
  double tolerance = kTolerance;
  /// Sizes of the input.
  std::span<const Size> sizes = kSizes;
  /// Size of the output in the input's orientation where it is no matter of scale; else zero.
  Size fixedOutput{};

  [[nodiscard]] bool resizes() const { return fixedOutput.width != 0 || scale.numerator != scale.denominator; }
  [[nodiscard]] bool quarterTurns() const { return rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT; }
  [[nodiscard]] bool turns() const { return quarterTurns() || rotation == ROTATION_180; }
  /// Output size in the input's orientation.
  [[nodiscard]] Size outputOf(const Size &in) const {
    if (fixedOutput.width != 0) {
      return fixedOutput;
    }
    return {in.width * scale.numerator / scale.denominator, in.height * scale.numerator / scale.denominator};
  }
};

/// Jobs that are reported together: how many times faster than the best peer they must be, as a geometric mean over the
/// group's jobs and sizes, and how many they aim at. Zero where nothing is demanded.
struct Group {
  const char *key;
  const char *title;
  double must = 0;
  double aim = 0;
  double mustEach = 0; ///< of every single job, where it is not what the mean must be

  [[nodiscard]] double jobMust() const { return mustEach == 0 ? must : mustEach; }
};

/// The same for all jobs of the groups that something is demanded of.
constexpr double kMustOverall = 1.6;
constexpr double kAimOverall = 3;

std::span<const Group> groups();
std::span<const Job> jobs();
/// Jobs at kTinySize.
std::span<const Job> calls();
/// One description for every format of resampling table and every kind of scratch memory that set-up can make.
std::span<const Job> setUps();

/// zqPicture's table of its own. Chroma is nearest at the same size, as it is in the other libraries.
std::span<const Group> pictureGroups();
/// Beside the best peer, and beside the first library.
std::span<const Job> pictureJobs();
std::span<const Job> pictureJobsOfBoth();

} // namespace bench
