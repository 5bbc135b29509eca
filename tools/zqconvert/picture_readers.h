// Picture files as streams of one frame.
#pragma once

#include "frame.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace zqconvert {

class PictureReader : public FrameSource {
public:
  [[nodiscard]] const StreamInfo &info() const override { return info_; }
  bool next(Frame &frame) override;
  /// More than any file has: nobody needs to guess how many pictures a picture is.
  [[nodiscard]] uint64_t bytesPerFrame() const override { return UINT64_MAX; }

protected:
  PictureReader(std::istream &stream, std::string name);
  /// Makes the plane of a frame of info()'s type and size. Memory is taken as bytes arrive where it can be, so that a
  /// header that lies about the size costs none. Throws Truncated or Error.
  virtual void readPixels(Frame &frame) = 0;
  /// `count` bytes; throws Truncated where the stream has fewer.
  void readBytes(uint8_t *bytes, std::size_t count);
  [[noreturn]] void refuse(const std::string &reason) const;
  [[nodiscard]] const std::string &name() const { return name_; }
  void setShape(int type, Size size);

private:
  std::istream &stream_;
  std::string name_;
  StreamInfo info_;
  bool done_ = false;
};

/// Uncompressed bitmaps of 16, 24 and 32 bits, in lines of either direction, with or without masks.
class BmpReader final : public PictureReader {
public:
  /// Reads the headers; `name` stands for the stream in messages. Throws Error for what is damaged or not taken.
  BmpReader(std::istream &stream, const std::string &name);

private:
  struct Mask {
    uint32_t bits = 0;
    int shift = 0;
    uint32_t most = 0; ///< The largest value of the component.
  };

  void readPixels(Frame &frame) override;
  std::vector<uint8_t> readHeader();
  void readMasks(const std::vector<uint8_t> &header);
  void setMasks(const std::array<uint32_t, 4> &masks);
  [[nodiscard]] int typeOfPixels() const;
  void convertLine(const uint8_t *in, uint8_t *out) const;
  [[nodiscard]] static uint8_t componentOf(uint32_t pixel, const Mask &mask);

  uint32_t bits_ = 0;
  bool bottomUp_ = true;
  std::array<Mask, 4> masks_; ///< Of red, green, blue and alpha.
};

/// Every kind of PNG, as 8-bit RGB, or RGBA where the file knows transparency.
class PngReader final : public PictureReader {
public:
  /// Reads the header. Throws Error for what libpng cannot read.
  PngReader(std::istream &stream, const std::string &name);
  PngReader(const PngReader &) = delete;
  PngReader &operator=(const PngReader &) = delete;
  ~PngReader() override;

private:
  struct State;

  void readPixels(Frame &frame) override;

  std::unique_ptr<State> state_;
  int passes_ = 1; ///< More than one where the file is interlaced.
};

} // namespace zqconvert
