#include "resize_rgb/special_ratio.h"

#include "resize_rgb/tile.h"

namespace zqcc {
namespace {

constexpr int kStep = 6;

/// Whole steps of six columns of line pair `line` within a step; returns how many columns they cover.
template <class Source, class Writer, Turn turn, int line>
int32_t resizeSteps(const PlaneView &view, const typename Source::Lines &lines, const TripleTaps &x, int32_t count,
                    uint8_t *to, std::ptrdiff_t stride) {
  const std::ptrdiff_t dx = columnStep<turn, Writer::kPixelBytes>(stride);
  int32_t i = 0;
  for (; i + kStep <= count; i += kStep, to += kStep * dx) {
    resizeGroup<Source, Writer, 0, line, 2, 2>(view, lines, {x[i], x[i + 1]}, to, stride);
    resizeGroup<Source, Writer, 2, line, 2, 2>(view, lines, {x[i + 2], x[i + 3]}, to + 2 * dx, stride);
    resizeGroup<Source, Writer, 4, line, 2, 2>(view, lines, {x[i + 4], x[i + 5]}, to + 4 * dx, stride);
  }
  return i;
}

/// Whole steps of 6 x 6 have their weights built in. What is left of a tile goes through the general loops with the
/// same weights, handed out by position.
template <class Phases, Turn turn, class Stores>
class PhasedTile {
public:
  PhasedTile(const PlaneView &view, const TableTile &tile, uint8_t *out, std::ptrdiff_t stride)
      : view_(view), tile_(tile), out_(out), stride_(stride) {}

  void convert() const {
    int32_t j = 0;
    for (; j + kStep <= tile_.lines; j += kStep) {
      linePair<0>(j);
      linePair<2>(j + 2);
      linePair<4>(j + 4);
    }
    resizeLines<Left, Writer, turn, PhaseTaps<Phases>>(view_, tile_, j, lineAt(j), stride_);
  }

private:
  using Writer = Rgb565Writer<turn, Stores>;
  using Whole = YuvSource<GroupChroma, FixedPhase<Phases>>;
  using Left = YuvSource<GroupChroma, Bilinear>;

  uint8_t *lineAt(int32_t j) const { return out_ + j * lineStep<turn, Writer::kPixelBytes>(stride_); }

  template <int line>
  void linePair(int32_t j) const {
    const TripleTaps x(tile_.xTriples);
    const TripleTaps y(tile_.yTriples);
    uint8_t *to = lineAt(j);
    const int32_t covered = resizeSteps<Whole, Writer, turn, line>(view_, Whole::linesAt(view_, {y[j], y[j + 1]}), x,
                                                                   tile_.columns, to, stride_);
    const PhaseTaps<Phases> phaseX(tile_.xTriples);
    const PhaseTaps<Phases> phaseY(tile_.yTriples);
    resizeColumns<Left, Writer, turn, 2>(view_, Left::linesAt(view_, {phaseY[j], phaseY[j + 1]}), phaseX, covered,
                                         tile_.columns, to + covered * columnStep<turn, 2>(stride_), stride_);
  }

  const PlaneView &view_;
  const TableTile &tile_;
  uint8_t *out_;
  std::ptrdiff_t stride_;
};

template <class Phases, Turn turn>
void resizePhasedTile(const PlaneView &view, const TableTile &tile, uint8_t *out, std::ptrdiff_t stride) {
  withStores(firstWordAt<turn>(out), stride,
             [&]<class Stores>(Stores) { PhasedTile<Phases, turn, Stores>(view, tile, out, stride).convert(); });
}

template <Turn turn>
constexpr ResizeKernel kPow2 = resizeTile<YuvSource<GroupChroma, Point>, turn>;
template <Turn turn>
constexpr ResizeKernel kThreeQuarters = resizePhasedTile<ThreeQuarterPhases, turn>;
template <Turn turn>
constexpr ResizeKernel kThreeHalves = resizePhasedTile<ThreeHalfPhases, turn>;
template <Turn turn>
constexpr ResizeKernel kDouble = resizeTile<YuvSource<GroupChroma, PairAverage>, turn>;

constexpr ResizeKernel resizeBlockYuvToRgb565Pow2 = kPow2<Turn::Upright>;
constexpr ResizeKernel resizeBlockYuvToRgb565Pow2Rot3 = kPow2<Turn::Left>;
constexpr ResizeKernel resizeBlockYuvToRgb565Pow2Rot4 = kPow2<Turn::Right>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeQuarters = kThreeQuarters<Turn::Upright>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeQuartersRot3 = kThreeQuarters<Turn::Left>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeQuartersRot4 = kThreeQuarters<Turn::Right>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeHalves = kThreeHalves<Turn::Upright>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeHalvesRot3 = kThreeHalves<Turn::Left>;
constexpr ResizeKernel resizeBlockYuvToRgb565ThreeHalvesRot4 = kThreeHalves<Turn::Right>;
constexpr ResizeKernel resizeBlockYuvToRgb565Double = kDouble<Turn::Upright>;
constexpr ResizeKernel resizeBlockYuvToRgb565DoubleRot3 = kDouble<Turn::Left>;
constexpr ResizeKernel resizeBlockYuvToRgb565DoubleRot4 = kDouble<Turn::Right>;

template <Turn turn>
void resizeWith(const Job &job, ResizeKernel kernel) {
  resizeBlocks<turn>(job, viewOf420Or422(job), kernel);
}

} // namespace

void resizeYuvToRgb565Pow2(const Job &job) {
  resizeWith<Turn::Upright>(job, resizeBlockYuvToRgb565Pow2);
}
void resizeYuvToRgb565Pow2Rot3(const Job &job) {
  resizeWith<Turn::Left>(job, resizeBlockYuvToRgb565Pow2Rot3);
}
void resizeYuvToRgb565Pow2Rot4(const Job &job) {
  resizeWith<Turn::Right>(job, resizeBlockYuvToRgb565Pow2Rot4);
}

void resizeYuvToRgb565ThreeQuarters(const Job &job) {
  resizeWith<Turn::Upright>(job, resizeBlockYuvToRgb565ThreeQuarters);
}
void resizeYuvToRgb565ThreeQuartersRot3(const Job &job) {
  resizeWith<Turn::Left>(job, resizeBlockYuvToRgb565ThreeQuartersRot3);
}
void resizeYuvToRgb565ThreeQuartersRot4(const Job &job) {
  resizeWith<Turn::Right>(job, resizeBlockYuvToRgb565ThreeQuartersRot4);
}

void resizeYuvToRgb565ThreeHalves(const Job &job) {
  resizeWith<Turn::Upright>(job, resizeBlockYuvToRgb565ThreeHalves);
}
void resizeYuvToRgb565ThreeHalvesRot3(const Job &job) {
  resizeWith<Turn::Left>(job, resizeBlockYuvToRgb565ThreeHalvesRot3);
}
void resizeYuvToRgb565ThreeHalvesRot4(const Job &job) {
  resizeWith<Turn::Right>(job, resizeBlockYuvToRgb565ThreeHalvesRot4);
}

void resizeYuvToRgb565Double(const Job &job) {
  resizeWith<Turn::Upright>(job, resizeBlockYuvToRgb565Double);
}
void resizeYuvToRgb565DoubleRot3(const Job &job) {
  resizeWith<Turn::Left>(job, resizeBlockYuvToRgb565DoubleRot3);
}
void resizeYuvToRgb565DoubleRot4(const Job &job) {
  resizeWith<Turn::Right>(job, resizeBlockYuvToRgb565DoubleRot4);
}

} // namespace zqcc
