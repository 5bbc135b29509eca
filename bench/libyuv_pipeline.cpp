#include "libyuv_pipeline.h"

#include <utility>

namespace bench::yuv {
namespace {

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

/// Means of boxes have vector code for reductions by 2 and 4. Larger ones are faster in two steps: how many times the
/// output's size the picture has between them, or 1.
int32_t boxesBetween(const Task &task) {
  const int32_t factor = task.input.size.width / task.resized().width;
  if (task.job.sampling != Sampling::Box || factor * task.resized().width != task.input.size.width) {
    return 1;
  }
  return factor == 8 ? 2 : factor == 6 ? 3 : 1;
}

} // namespace

Pipeline::Pipeline(const Task &task, Packer packer, Scaled scaled)
    : packer_(packer), scaled_(scaled), type_(task.input.type), size_(task.input.size) {
  unpack(task.job);
  scaleAndTurn(task);
  finish(target(task));
  for (std::size_t i = 0; i + 1 < stages_.size(); ++i) {
    between_.emplace_back(stages_[i].type, stages_[i].size, Lines::Aligned);
  }
}

bool Pipeline::run(const View &input, const View &output) {
  View from = input;
  for (std::size_t i = 0; i < stages_.size(); ++i) {
    View to = i + 1 == stages_.size() ? output : between_[i].view();
    if (stages_[i].sharesLuma) {
      to.plane[0] = from.plane[0];
      to.stride[0] = from.stride[0];
    }
    if (!stages_[i].run(from, to)) {
      return false;
    }
    from = to;
  }
  return true;
}

void Pipeline::add(int32_t type, const Size &size, StageFunction run, bool sharesLuma) {
  stages_.push_back({type, size, std::move(run), sharesLuma});
  type_ = type;
  size_ = size;
}

void Pipeline::addConversion(int32_t type) {
  add(type, size_, [packer = packer_](const View &from, const View &to) { return convert(from, to, packer); });
}

void Pipeline::addScale(const Size &size, libyuv::FilterMode filter) {
  add(type_, size, [filter](const View &from, const View &to) { return scale(from, to, filter); });
}

/// To a layout that can be converted, and scaled and turned if the job asks for it.
void Pipeline::unpack(const Job &job) {
  const bool moves = job.resizes() || job.turns();
  switch (job.inType) {
  case COLOR_YUV422_PLANAR:
    if (job.turns()) { // turning 4:2:2 is slow, and every second chroma line is all that the job asks for
      add(COLOR_YUV420_PLANAR, size_, spreadChroma, true);
    }
    break;
  case COLOR_YUV440_PLANAR:
  case COLOR_YUV_QUARTER_HEIGHT:
    add(COLOR_YUV420_PLANAR, size_, spreadChroma, true);
    break;
  case COLOR_YUV411_PLANAR:
    add(job.turns() ? COLOR_YUV420_PLANAR : COLOR_YUV422_PLANAR, size_, spreadChroma, true);
    break;
  case COLOR_YUV422_YUYV:
  case COLOR_YUV422_UYVY:
    if (moves) { // turned 4:2:2 has chroma for half the lines
      addConversion(isPacked(job.outType) && !job.turns() ? COLOR_YUV422_PLANAR : COLOR_YUV420_PLANAR);
    }
    break;
  case COLOR_RGB24:
  case COLOR_RGB565:
    if (job.resizes() || (moves && job.inType == COLOR_RGB24)) {
      addConversion(kBgra);
    }
    break;
  default:
    break;
  }
}

/// Enlarged planes are interpolated in plain C unless they double; ARGB pixels never are.
bool Pipeline::scalesAsArgb(const Task &task) const {
  if (!task.job.resizes() || (task.job.outType != COLOR_RGB565 && task.job.outType != COLOR_RGB24)) {
    return false;
  }
  if (scaled_ != Scaled::Cheapest) {
    return scaled_ == Scaled::Argb;
  }
  const bool doubles = task.resized().width == 2 * task.input.size.width;
  return task.job.sampling == Sampling::Bilinear && task.enlarges() && !doubles;
}

void Pipeline::addScales(const Task &task, bool turned) {
  const Size size = turned ? bench::turned(task.resized()) : task.resized();
  const libyuv::FilterMode filter = filterOf(task.job.sampling);
  const int32_t between = boxesBetween(task);
  if (between > 1) {
    addScale({between * size.width, between * size.height}, filter);
  }
  addScale(size, filter);
}

void Pipeline::addRotate(const Job &job) {
  const libyuv::RotationMode mode = modeOf(job.rotation);
  const bool splits = type_ == COLOR_YUV420_PACK && job.outType != COLOR_YUV420_PACK;
  add(splits ? COLOR_YUV420_PLANAR : type_, job.quarterTurns() ? turned(size_) : size_,
      [mode](const View &from, const View &to) { return rotate(from, to, mode); });
}

/// The turn goes where the picture is smaller.
void Pipeline::scaleAndTurn(const Task &task) {
  const Job &job = task.job;
  const bool turnFirst = job.turns() && task.enlarges();
  if (turnFirst) {
    addRotate(job);
  }
  if (scalesAsArgb(task) && type_ != kBgra) {
    addConversion(kBgra);
  }
  if (job.resizes()) {
    addScales(task, turnFirst && job.quarterTurns());
  }
  if (job.turns() && !turnFirst) {
    addRotate(job);
  }
}

void Pipeline::finish(const View &output) {
  if (type_ != output.type) {
    addConversion(output.type);
  } else if (stages_.empty()) {
    add(output.type, output.size, copy);
  }
}

View target(const Task &task) {
  View output = task.job.rotation == ROTATION_FLIP_V ? bottomUp(task.output) : task.output;
  if (output.type == COLOR_YVU420_PLANAR) {
    output.type = COLOR_YUV420_PLANAR; // planes go over in their order
  }
  return output;
}

} // namespace bench::yuv
