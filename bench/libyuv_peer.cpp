// libyuv doing a job, the way somebody would who chains its functions: unpack what cannot be scaled or turned as it is,
// scale and turn in the cheaper order, convert last. Where one function does the whole job it is called directly.
#include "libyuv_stages.h"
#include "runner.h"

#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace bench {
namespace {

using StageFunction = std::function<bool(const View &, const View &)>;

struct Stage {
  int32_t type;
  Size size;
  StageFunction run;
  bool sharesLuma = false; ///< the result's first plane is the source's
};

/// Stages with the pictures between them.
class Pipeline {
public:
  Pipeline(const Task &task, yuv::Packer packer)
      : task_(task), packer_(packer), type_(task.input.type), size_(task.input.size) {}

  void add(int32_t type, const Size &size, StageFunction run, bool sharesLuma = false) {
    stages_.push_back({type, size, std::move(run), sharesLuma});
    type_ = type;
    size_ = size;
  }
  void addConversion(int32_t type, const Size &size) {
    add(type, size, [packer = packer_](const View &from, const View &to) { return yuv::convert(from, to, packer); });
  }
  [[nodiscard]] int32_t type() const { return type_; }
  [[nodiscard]] Size size() const { return size_; }
  [[nodiscard]] bool empty() const { return stages_.empty(); }

  /// The last stage writes the output.
  void connect(const View &output) {
    View from = task_.input;
    for (std::size_t i = 0; i < stages_.size(); ++i) {
      View to = i + 1 == stages_.size() ? output : frames_.emplace_back(stages_[i].type, stages_[i].size).view();
      if (stages_[i].sharesLuma) {
        to.plane[0] = from.plane[0];
        to.stride[0] = from.stride[0];
      }
      links_.emplace_back(from, to);
      from = to;
    }
  }

  [[nodiscard]] bool run() const {
    for (std::size_t i = 0; i < stages_.size(); ++i) {
      if (!stages_[i].run(links_[i].first, links_[i].second)) {
        return false;
      }
    }
    return true;
  }

private:
  Task task_;
  yuv::Packer packer_;
  int32_t type_;
  Size size_;
  std::vector<Stage> stages_;
  std::deque<Frame> frames_;
  std::vector<std::pair<View, View>> links_;
};

libyuv::FilterMode filterOf(Sampling sampling) {
  switch (sampling) {
  case Sampling::Bilinear:
    return libyuv::kFilterBilinear;
  case Sampling::Filtered:
  case Sampling::Box:
    return libyuv::kFilterBox;
  default:
    return libyuv::kFilterNone;
  }
}

libyuv::RotationMode modeOf(uint32_t rotation) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return libyuv::kRotate270;
  case ROTATION_90_RIGHT:
    return libyuv::kRotate90;
  default:
    return libyuv::kRotate180;
  }
}

bool isPacked(int32_t type) {
  return type == COLOR_YUV422_YUYV || type == COLOR_YUV422_UYVY;
}

bool turns(const Job &job) {
  return job.quarterTurns() || job.rotation == ROTATION_180;
}

/// Enlarged planes are interpolated in plain C unless they double; ARGB pixels never are.
bool enlargesAsArgb(const Job &job) {
  const bool doubles = job.scale.numerator == 2 * job.scale.denominator;
  return job.sampling == Sampling::Bilinear && job.scale.numerator > job.scale.denominator && !doubles &&
         (job.outType == COLOR_RGB565 || job.outType == COLOR_RGB24);
}

/// To a layout that can be converted, and scaled and turned if the job asks for it.
void unpack(Pipeline &pipeline, const Job &job) {
  const Size size = pipeline.size();
  const bool moves = job.resizes() || turns(job);
  switch (job.inType) {
  case COLOR_YUV422_PLANAR:
    if (turns(job)) { // turning 4:2:2 is slow, and every second chroma line is all that the job asks for
      pipeline.add(COLOR_YUV420_PLANAR, size, yuv::spreadChroma, true);
    }
    break;
  case COLOR_YUV440_PLANAR:
  case COLOR_YUV_QUARTER_HEIGHT:
    pipeline.add(COLOR_YUV420_PLANAR, size, yuv::spreadChroma, true);
    break;
  case COLOR_YUV411_PLANAR:
    pipeline.add(turns(job) ? COLOR_YUV420_PLANAR : COLOR_YUV422_PLANAR, size, yuv::spreadChroma, true);
    break;
  case COLOR_YUV422_YUYV:
  case COLOR_YUV422_UYVY:
    if (moves) {
      pipeline.addConversion(isPacked(job.outType) ? COLOR_YUV422_PLANAR : COLOR_YUV420_PLANAR, size);
    }
    break;
  case COLOR_RGB24:
  case COLOR_RGB565:
    if (job.resizes() || (moves && job.inType == COLOR_RGB24)) {
      pipeline.addConversion(kArgb, size);
    }
    break;
  default:
    break;
  }
}

void addScale(Pipeline &pipeline, const Task &task, bool turned) {
  const Size size = task.resized();
  const libyuv::FilterMode filter = filterOf(task.job.sampling);
  pipeline.add(pipeline.type(), turned ? bench::turned(size) : size,
               [filter](const View &from, const View &to) { return yuv::scale(from, to, filter); });
}

void addRotate(Pipeline &pipeline, const Job &job) {
  const libyuv::RotationMode mode = modeOf(job.rotation);
  const bool splits = pipeline.type() == COLOR_YUV420_PACK && job.outType != COLOR_YUV420_PACK;
  pipeline.add(splits ? COLOR_YUV420_PLANAR : pipeline.type(),
               job.quarterTurns() ? bench::turned(pipeline.size()) : pipeline.size(),
               [mode](const View &from, const View &to) { return yuv::rotate(from, to, mode); });
}

/// The turn goes where the picture is smaller.
void scaleAndTurn(Pipeline &pipeline, const Task &task) {
  const Job &job = task.job;
  const bool turnFirst = turns(job) && job.scale.numerator > job.scale.denominator;
  if (turnFirst) {
    addRotate(pipeline, job);
  }
  if (enlargesAsArgb(job) && pipeline.type() != kArgb) {
    pipeline.addConversion(kArgb, pipeline.size());
  }
  if (job.resizes()) {
    addScale(pipeline, task, turnFirst && job.quarterTurns());
  }
  if (turns(job) && !turnFirst) {
    addRotate(pipeline, job);
  }
}

void finish(Pipeline &pipeline, const View &output) {
  if (pipeline.type() != output.type) {
    pipeline.addConversion(output.type, output.size);
  } else if (pipeline.empty()) {
    pipeline.add(output.type, output.size, yuv::copy);
  }
}

Runner libyuvRunner(const Task &task, yuv::Packer packer) {
  View output = task.job.rotation == ROTATION_FLIP_V ? bottomUp(task.output) : task.output;
  if (output.type == COLOR_YVU420_PLANAR) {
    output.type = COLOR_YUV420_PLANAR; // planes go over in their order
  }
  const auto pipeline = std::make_shared<Pipeline>(task, packer);
  unpack(*pipeline, task.job);
  scaleAndTurn(*pipeline, task);
  finish(*pipeline, output);
  pipeline->connect(output);
  if (!pipeline->run()) {
    return {};
  }
  return [pipeline] { return pipeline->run(); };
}

} // namespace

void addLibyuv(std::vector<Program> &programs) {
  programs.push_back({"libyuv", [](const Task &task) { return libyuvRunner(task, yuv::Packer::Plain); }});
  // For everything but 16-bit words it is the same.
  programs.push_back({"libyuv dithering", [](const Task &task) {
                        return task.job.outType == COLOR_RGB565 && task.job.inType != COLOR_RGB565
                                   ? libyuvRunner(task, yuv::Packer::Dithering)
                                   : Runner{};
                      }});
}

} // namespace bench
