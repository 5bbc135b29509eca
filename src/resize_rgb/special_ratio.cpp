#include "resize_rgb/special_ratio.h"

#include "resize_rgb/resize_picture.h"
#include "resize_rgb/thirds.h"

namespace zqcc {
namespace {

template <class Sampler, class Weights, Turn turn>
void resizeBy(const Job &job) {
  resizePicture<YuvSource<QuadChroma, Sampler>, Weights, turn>(job, viewOf420Or422(job));
}

// Every ratio has a sampler of its own; weights of the fixed phases follow from the place within the group.

template <Turn turn>
constexpr Routine kPow2 = resizeBy<Point, TableWeights, turn>;
template <Turn turn>
constexpr Routine kThreeQuarters = resizeBy<Thirds<ThreeQuarters>, ThreeQuarterWeights, turn>;
template <Turn turn>
constexpr Routine kThreeHalves = resizeBy<Thirds<ThreeHalves>, ThreeHalfWeights, turn>;
template <Turn turn>
constexpr Routine kDouble = resizeBy<PairAverage, TableWeights, turn>;

} // namespace

void resizeYuvToRgb565Pow2(const Job &job) {
  kPow2<Turn::Upright>(job);
}
void resizeYuvToRgb565Pow2Rot3(const Job &job) {
  kPow2<Turn::Left>(job);
}
void resizeYuvToRgb565Pow2Rot4(const Job &job) {
  kPow2<Turn::Right>(job);
}
void resizeYuvToRgb565ThreeQuarters(const Job &job) {
  kThreeQuarters<Turn::Upright>(job);
}
void resizeYuvToRgb565ThreeQuartersRot3(const Job &job) {
  kThreeQuarters<Turn::Left>(job);
}
void resizeYuvToRgb565ThreeQuartersRot4(const Job &job) {
  kThreeQuarters<Turn::Right>(job);
}
void resizeYuvToRgb565ThreeHalves(const Job &job) {
  kThreeHalves<Turn::Upright>(job);
}
void resizeYuvToRgb565ThreeHalvesRot3(const Job &job) {
  kThreeHalves<Turn::Left>(job);
}
void resizeYuvToRgb565ThreeHalvesRot4(const Job &job) {
  kThreeHalves<Turn::Right>(job);
}
void resizeYuvToRgb565Double(const Job &job) {
  kDouble<Turn::Upright>(job);
}
void resizeYuvToRgb565DoubleRot3(const Job &job) {
  kDouble<Turn::Left>(job);
}
void resizeYuvToRgb565DoubleRot4(const Job &job) {
  kDouble<Turn::Right>(job);
}

} // namespace zqcc
