// Fixed limited-range BT.601 to RGB565 in 16-bit lanes.
#if defined(ZQCC_VECTOR_STUDIO565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_STUDIO565_INL_H
#undef ZQCC_VECTOR_STUDIO565_INL_H
#else
#define ZQCC_VECTOR_STUDIO565_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

constexpr uint16_t low16(int64_t value) {
  return static_cast<uint16_t>(value & 0xFFFF);
}

/// The lowest of the four values that an approximation T >> 14 is spread over is clamped with this offset.
constexpr int64_t kStudioBase = 49152;

template <class D>
struct StudioTermsOf {
  using V = hn::Vec<D>;
  V redLow, redHigh, greenLow, greenHigh, blueLow, blueHigh;
};

template <class D>
HWY_INLINE StudioTermsOf<D> studioTerms(D d, const uint8_t *u8, const uint8_t *v8) {
  constexpr int64_t kY = 1220542, kCrR = 1673527, kCrG = 852492, kCbG = 411041, kCbB = 2114977;
  const hn::Rebind<uint8_t, D> bytes;
  const auto K = [d](int64_t value) HWY_ATTR { return hn::Set(d, low16(value)); };
  const auto u = hn::PromoteTo(d, hn::LoadU(bytes, u8));
  const auto v = hn::PromoteTo(d, hn::LoadU(bytes, v8));
  const auto u256 = hn::ShiftLeft<8>(u);
  const auto v256 = hn::ShiftLeft<8>(v);
  StudioTermsOf<D> t;
  t.redLow = hn::Add(hn::Mul(v, K(-kCrR)), K(-1 + 128 * kCrR + 16 * kY));
  t.redHigh = hn::Add(hn::MulHigh(v256, K(26149)), K(kStudioBase - 14265 - 3));
  t.blueLow = hn::Add(hn::Mul(u, K(-kCbB)), K(-1 + 128 * kCbB + 16 * kY));
  t.blueHigh = hn::Add(hn::MulHigh(u256, K(33047)), K(kStudioBase - 17714 - 3));
  t.greenLow = hn::Add(hn::Add(hn::Mul(v, K(kCrG)), hn::Mul(u, K(kCbG))), K(-1 - 128 * (kCrG + kCbG) + 16 * kY));
  t.greenHigh = hn::Sub(hn::Sub(K(kStudioBase + 8680 - 3), hn::MulHigh(u256, K(6423))), hn::MulHigh(v256, K(13320)));
  return t;
}

template <class D>
HWY_INLINE hn::Vec<D> studioComponent(D d, hn::Vec<D> yHigh, hn::Vec<D> yLow, hn::Vec<D> high, hn::Vec<D> low) {
  const auto sum = hn::SaturatedAdd(yHigh, hn::Add(high, hn::ShiftRight<14>(hn::Add(yLow, low))));
  return hn::SaturatedSub(sum, hn::Set(d, low16(kStudioBase)));
}

template <class D>
HWY_INLINE hn::Vec<D> studioPixels(D d, hn::Vec<D> y257, const StudioTermsOf<D> &t) {
  const auto yHigh = hn::MulHigh(y257, hn::Set(d, 18997));
  const auto yLow = hn::Mul(y257, hn::Set(d, low16(-57790)));
  const auto r = studioComponent(d, yHigh, yLow, t.redHigh, t.redLow);
  const auto g = studioComponent(d, yHigh, yLow, t.greenHigh, t.greenLow);
  const auto b = studioComponent(d, yHigh, yLow, t.blueHigh, t.blueLow);
  const auto rb = hn::OrAnd(hn::ShiftRight<9>(b), hn::ShiftLeft<2>(r), hn::Set(d, 0xF800));
  return hn::OrAnd(rb, hn::ShiftRight<3>(g), hn::Set(d, 0x07E0));
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
