// Resizing to RGB24 walks run-length tables, see base/table_format.h.
//
// Repeated output lines are not whole copies. Each gets 2 x W bytes, from byte P on, of the line it repeats (W the
// output width, P = W rounded up to a multiple of four): a length and an offset suited to two-byte pixels. That is what
// users of this converter have always received, so it stays; only bytes inside the picture are written. Lines that
// repeat a line behind a single one take what the output buffer holds there.
#include "resize_rgb/rgb24_output.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "base/table_format.h"
#include "kernels/arithmetic.h"
#include "kernels/writers.h"
#include "vector/nearest_rgb24.h"

#include <cstring>

namespace zqcc {
namespace {

class RunLengthResize {
public:
  explicit RunLengthResize(const Job &job)
      : p_(job.params), xTable_(job.xTable), yTable_(job.yTable), arithmetic_(*job.matrix),
        pitch_(job.params.inStride >> 1), limits_(halfPitchLimits(p_.inType, p_.inWidth, p_.inHeight, p_.inStride)),
        hasRows_(rows_.prepare(job, limits_.column)) {}

  void convert() {
    for (int32_t j = 0; j < p_.outHeight;) {
      j = convertInstruction(j);
    }
  }

private:
  /// One line instruction with the repeats around it, for output line j on; returns the next output line.
  int32_t convertInstruction(int32_t j) {
    const int32_t leading = takeRepeat();
    const int32_t source = *yTable_++;
    const int32_t upper = j + leading;
    const int32_t lines = source >= kLinePair ? 2 : 1;
    convertLines(source & kLineMask, upper, smaller(lines, p_.outHeight - upper));
    for (int32_t k = j; k < upper; ++k) {
      repeatLine(upper, k);
    }
    const int32_t trailing = takeRepeat();
    for (int32_t k = 0; k < trailing; ++k) {
      repeatLine(upper + 1, upper + 2 + k);
    }
    return upper + lines + trailing;
  }

  int32_t takeRepeat() { return *yTable_ < 0 ? -*yTable_++ : 0; }

  /// Output lines from `to` on, none, one or two of them, from luma line `source` and the next one, all with the same
  /// chroma.
  void convertLines(int32_t source, int32_t to, int32_t lines) const {
    if (lines <= 0) {
      return;
    }
    const uint8_t *luma = p_.inBuf[0] + std::ptrdiff_t{source} * p_.inStride;
    const std::ptrdiff_t chroma = smaller(source / 2, limits_.line) * pitch_;
    const uint8_t *u = p_.inBuf[1] + chroma;
    const uint8_t *v = p_.inBuf[2] + chroma;
    if (hasRows_) {
      const int32_t second = lines - 1; // the first one again if it is alone
      rows_.make({{luma, luma + second * std::ptrdiff_t{p_.inStride}}, u, v, {lineAt(to), lineAt(to + second)}, lines});
      return;
    }
    for (int32_t line = 0; line < lines; ++line, luma += p_.inStride) {
      convertLine(luma, u, v, lineAt(to + line));
    }
  }

  void convertLine(const uint8_t *luma, const uint8_t *u, const uint8_t *v, uint8_t *out) const {
    ColorTerms terms{};
    Bgr pixel{};
    for (int32_t x = 0; x < p_.outWidth; ++x, out += 3) {
      const auto word = static_cast<uint32_t>(xTable_[x]);
      if ((word & kNewChroma) != 0) {
        const int32_t column = smaller(static_cast<int32_t>(word >> (kRunColumnShift + 1)), limits_.column);
        terms = arithmetic_.terms(u[column], v[column]);
      }
      if ((word & kNewPixel) != 0) {
        pixel = arithmetic_.pixel<0, 0>(terms, luma[word >> kRunColumnShift]);
      }
      Rgb24Writer<Turn::Upright>::one(out, pixel);
    }
  }

  /// Repeats line `from` in line `to` as far as both lie in the picture.
  void repeatLine(int32_t from, int32_t to) const {
    const std::ptrdiff_t width = p_.outWidth;
    const std::ptrdiff_t first = (width + 3) & ~std::ptrdiff_t{3};
    const std::ptrdiff_t end = smaller(first + 2 * width, 3 * width);
    if (from < p_.outHeight && to < p_.outHeight && first < end) {
      // Lines overlap where the stride is shorter than they are.
      std::memmove(lineAt(to) + first, lineAt(from) + first, static_cast<std::size_t>(end - first));
    }
  }

  [[nodiscard]] uint8_t *lineAt(int32_t line) const { return p_.outBuf[0] + std::ptrdiff_t{line} * p_.outStride; }

  const ConvertParams &p_;
  const int32_t *xTable_;
  const int32_t *yTable_;
  const MatrixRgb24 arithmetic_;
  std::ptrdiff_t pitch_;
  ChromaLimits limits_;
  NearestRgb24 rows_;
  bool hasRows_;
};

} // namespace

void resizeYuvToRgb24(const Job &job) {
  RunLengthResize(job).convert();
}

} // namespace zqcc
