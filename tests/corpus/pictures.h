// Small pictures from a fixed generator and output buffers with guards, over the public interface alone: the corpus
// must build for every platform, and against the shared library as its users get it.
#pragma once

#include "noise.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corpus {

/// Bytes of one line of the first plane.
int lineBytes(int type, int width);

/// Bytes that the planes of a picture span one after the other, without gaps, the last padding included.
std::size_t pictureBytes(int type, int height, int stride);

/// Input planes, one after the other without gaps in one block that starts `misalign` bytes past a multiple of 64.
class Input {
public:
  Input(int type, int width, int height, int stride, unsigned misalign, uint32_t seed);
  void describe(ConvertParams &params) const;
  [[nodiscard]] const uint8_t *data() const { return start_; }

private:
  std::vector<uint8_t> store_;
  const uint8_t *start_;
  int type_, width_, height_, stride_;
};

/// Output planes of a picture, surrounded and separated by guard bytes, everything filled with one pattern.
class Output {
public:
  Output(int type, int height, int stride, unsigned misalign);
  void describe(ConvertParams &params);
  [[nodiscard]] uint8_t *data() { return planes_[0]; }
  /// Planes, paddings and guards alike.
  void addTo(Hash &hash) const { hash.add(block_, blockBytes_); }

private:
  std::vector<uint8_t> store_;
  uint8_t *planes_[3] = {};
  uint8_t *block_ = nullptr;
  std::size_t blockBytes_ = 0;
  int type_, stride_;
};

} // namespace corpus
