#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/studio565.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/studio565.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;
using D16 = hn::ScalableTag<uint16_t>;
using D8 = hn::Repartition<uint8_t, D16>;


using V16 = hn::Vec<D16>;


constexpr D16 d16; constexpr D8 d8; 
constexpr int N = HWY_LANES(uint16_t);

// ---- B: 16-bit ----
constexpr uint16_t w(int64_t x) { return static_cast<uint16_t>(x & 0xFFFF); }
constexpr int64_t kY = 1220542, kCrR = 1673527, kCrG = 852492, kCbG = 411041, kCbB = 2114977;
constexpr int kBase = 49152;
HWY_INLINE V16 K(int64_t x) { return hn::Set(d16, w(x)); }

struct Terms16 { V16 rl, rh, gl, gh, bl, bh; };
HWY_INLINE Terms16 termsOf(V16 u, V16 v) {
  const V16 u256 = hn::ShiftLeft<8>(u), v256 = hn::ShiftLeft<8>(v);
  Terms16 t;
  t.rl = hn::Add(hn::Mul(v, K(-kCrR)), K(-1 + 128 * kCrR + 16 * kY));
  t.rh = hn::Add(hn::MulHigh(v256, K(26149)), K(kBase - 14265 - 3));
  t.bl = hn::Add(hn::Mul(u, K(-kCbB)), K(-1 + 128 * kCbB + 16 * kY));
  t.bh = hn::Add(hn::MulHigh(u256, K(33047)), K(kBase - 17714 - 3));
  t.gl = hn::Add(hn::Add(hn::Mul(v, K(kCrG)), hn::Mul(u, K(kCbG))), K(-1 - 128 * (kCrG + kCbG) + 16 * kY));
  t.gh = hn::Sub(hn::Sub(K(kBase + 8680 - 3), hn::MulHigh(u256, K(6423))), hn::MulHigh(v256, K(13320)));
  return t;
}
HWY_INLINE Terms16 terms16(const uint8_t *u8, const uint8_t *v8) {
  const hn::Rebind<uint8_t, D16> dh;
  return termsOf(hn::PromoteTo(d16, hn::LoadU(dh, u8)), hn::PromoteTo(d16, hn::LoadU(dh, v8)));
}
// 14-bit clamped component
HWY_INLINE V16 comp(V16 yh, V16 yl, V16 h, V16 l) {
  const V16 a = hn::SaturatedAdd(yh, hn::Add(h, hn::ShiftRight<14>(hn::Add(yl, l))));
  return hn::SaturatedSub(a, K(kBase));
}
HWY_INLINE V16 pix16(V16 y257, const Terms16 &t) {
  const V16 yh = hn::MulHigh(y257, K(18997));
  const V16 yl = hn::Mul(y257, K(-57790));
  const V16 r = comp(yh, yl, t.rh, t.rl), g = comp(yh, yl, t.gh, t.gl), b = comp(yh, yl, t.bh, t.bl);
  return hn::OrAnd(hn::OrAnd(hn::ShiftRight<9>(b), hn::ShiftLeft<2>(r), K(0xF800)), hn::ShiftRight<3>(g), K(0x07E0));
}

HWY_ALIGN constexpr uint8_t kEven[16] = {0,0,2,2,4,4,6,6,8,8,10,10,12,12,14,14};
HWY_ALIGN constexpr uint8_t kOdd[16] = {1,1,3,3,5,5,7,7,9,9,11,11,13,13,15,15};
HWY_INLINE void run(const uint8_t *y, const Terms16 &t, uint8_t *out) {
    const auto e = hn::LoadDup128(d8, kEven), o = hn::LoadDup128(d8, kOdd);
    const auto yy = hn::LoadU(d8, y);
    hn::StoreInterleaved2(pix16(hn::BitCast(d16, hn::TableLookupBytes(yy, e)), t),
                          pix16(hn::BitCast(d16, hn::TableLookupBytes(yy, o)), t), d16,
                          reinterpret_cast<uint16_t *>(out));
}
void studio565Pair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t, const ColourConstants &) {
  const ptrdiff_t last = pixels / 2 - N;
  for (ptrdiff_t x = 0;; x += N) {
    if (x > last) x = last;
    const Terms16 t = terms16(from.u + x, from.v + x);
    run(from.y[0] + 2 * x, t, to[0] + 4 * x);
    run(from.y[1] + 2 * x, t, to[1] + 4 * x);
    if (x == last) break;
  }
}
} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> STUDIO565_PAIR = ZQCC_EVERY_LEVEL(studio565Pair);
}
#endif
