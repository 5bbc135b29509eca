// libyuv's functions in a chain, the way somebody would put them together: unpack what cannot be scaled or turned as it
// is, scale and turn in the cheaper order, convert last. Where one function does the whole job it is the whole chain.
#pragma once

#include "libyuv_stages.h"
#include "runner.h"

#include <deque>
#include <functional>
#include <vector>

namespace bench::yuv {

/// What is scaled on the way to RGB: planes, or the pixels that were made of them. Cheapest is what the numbers of
/// samples suggest.
enum class Scaled { Cheapest, Planes, Argb };

/// Stages with the pictures between them, for one size.
class Pipeline {
public:
  Pipeline(const Task &task, Packer packer, Scaled scaled);
  /// Input and output have the sizes that the pipeline was made for.
  bool run(const View &input, const View &output);

private:
  using StageFunction = std::function<bool(const View &, const View &)>;
  struct Stage {
    int32_t type;
    Size size;
    StageFunction run;
    bool sharesLuma; ///< the result's first plane is the source's
  };

  void add(int32_t type, const Size &size, StageFunction run, bool sharesLuma = false);
  void addConversion(int32_t type);
  void addScale(const Size &size, libyuv::FilterMode filter);
  void addScales(const Task &task, bool turned);
  void addRotate(const Job &job);
  void unpack(const Job &job);
  void scaleAndTurn(const Task &task);
  void finish(const View &output);

  [[nodiscard]] bool scalesAsArgb(const Task &task) const;

  Packer packer_;
  Scaled scaled_;
  int32_t type_;
  Size size_;
  std::vector<Stage> stages_;
  std::deque<Frame> between_;
};

/// The output as the last stage writes it.
View target(const Task &task);

} // namespace bench::yuv
