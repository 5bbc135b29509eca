#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/place_packed422.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/place_packed422.h"
#include "vector/transpose_blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Where the bytes of four macropixels come from, `luma` being the place of the first luma byte.
template <int luma>
struct Orders {
  static constexpr uint8_t kZero = 128;
  static constexpr bool isLuma(int byte) { return byte % 2 == luma; }
  /// Chroma is the first sample of the macropixel.
  static constexpr uint8_t first(int byte) { return static_cast<uint8_t>(isLuma(byte) ? byte : byte & ~2); }
  /// Chroma is the second sample; there is no luma.
  static constexpr uint8_t second(int byte) { return isLuma(byte) ? kZero : static_cast<uint8_t>(byte | 2); }

  alignas(16) static constexpr uint8_t kFirst[16] = {first(0),  first(1),  first(2),  first(3), first(4),  first(5),
                                                     first(6),  first(7),  first(8),  first(9), first(10), first(11),
                                                     first(12), first(13), first(14), first(15)};
  alignas(16) static constexpr uint8_t kSecond[16] = {
      second(0), second(1), second(2),  second(3),  second(4),  second(5),  second(6),  second(7),
      second(8), second(9), second(10), second(11), second(12), second(13), second(14), second(15)};
  static constexpr uint16_t kLumaBits = luma == 0 ? 0x00FF : 0xFF00;
};

/// Gives the pixels that become one macropixel the chroma of the first one's.
template <int luma>
struct SharedChroma {
  template <class D>
  HWY_INLINE void operator()(D d, hn::Vec<D> (&rows)[8]) const {
    const hn::Repartition<uint8_t, D> bytes;
    const auto first = hn::LoadDup128(bytes, Orders<luma>::kFirst);
    const auto second = hn::LoadDup128(bytes, Orders<luma>::kSecond);
    const auto lumaBits = hn::Set(d, Orders<luma>::kLumaBits);
    for (int row = 0; row < 8; row += 2) {
      const auto upper = hn::BitCast(bytes, rows[row]);
      const auto chroma = hn::BitCast(d, hn::TableLookupBytes(upper, second));
      rows[row] = hn::BitCast(d, hn::TableLookupBytes(upper, first));
      rows[row + 1] = hn::Or(hn::And(rows[row + 1], lumaBits), chroma);
    }
  }
};

template <int luma>
void transposeMacropixels(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  transposeByLines<SharedChroma<luma>>(hn::ScalableTag<uint16_t>(), from, to, toStride);
}

constexpr TransposeBlock lumaFirst = transposeMacropixels<0>;
constexpr TransposeBlock chromaFirst = transposeMacropixels<1>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<TransposeBlock> TRANSPOSE_LUMA_FIRST = ZQCC_EVERY_LEVEL(lumaFirst);
constexpr PerLevel<TransposeBlock> TRANSPOSE_CHROMA_FIRST = ZQCC_EVERY_LEVEL(chromaFirst);

} // namespace zqcc
#endif
