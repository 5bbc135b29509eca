// Makes every allocation of zqPicture fail in turn: the code, that no converter comes back, that every block is given
// back exactly once. Conversions, views and refusals allocate nothing.
#include "frame/memory_ledger.h"
#include "picture/cases.h"
#include "picture/reference/own_picture.h"

#include <string>

namespace {

using memory::begin;
using memory::check;
using memory::failureReached;
using memory::finish;
using memory::ledger;
using reference::OwnPicture;

/// A converter's life. True while the n-th allocation was reached.
bool life(const ZqpConversion &c, const std::string &name, int n) {
  OwnPicture in(c.inFormat, c.inWidth, c.inHeight);
  OwnPicture out(c.outFormat, c.outWidth, c.outHeight);
  const OwnPicture blank = out;
  const ZqpPicture inView = in.view();
  const ZqpPicture outView = out.view();
  int unchanged = 0;
  auto *converter = reinterpret_cast<ZqpConverter *>(&unchanged);
  begin(n);
  const int32_t code = zqpConverterMake(&c, &converter);
  if (failureReached()) {
    finish(name.c_str(), n);
    check(code == ZQP_ERR_MEMORY && converter == nullptr, "the lack of memory is reported", name.c_str(), n);
    return true;
  }
  check(code == ZQP_OK, "the converter is made", name.c_str(), n);
  const int before = ledger.asked;
  check(before > 0, "a converter takes memory", name.c_str(), n);
  check(zqpConvert(converter, &inView, &outView) == ZQP_OK, "the picture is converted", name.c_str(), n);
  check(zqpConvertLines(converter, &inView, &outView, 0, 1) == ZQP_OK, "so are lines", name.c_str(), n);
  check(zqpConvertLines(converter, &inView, &outView, -1, 1) == ZQP_ERR_LINES, "no such lines", name.c_str(), n);
  check(ledger.asked == before, "conversions allocate nothing", name.c_str(), n);
  zqpConverterFree(converter);
  finish(name.c_str(), n);
  check(out.memory() != blank.memory(), "the picture is written", name.c_str(), n);
  return false;
}

void lives() {
  picture::Random random(5);
  for (const int32_t in : picture::inputFormats()) {
    for (const int32_t out : picture::outputFormats()) {
      ZqpConversion c = picture::anyResized(random, in, out, 60);
      c.outWidth += 300; // wider than a chunk, now and then
      const std::string name = picture::describe(c);
      for (int n = 1; life(c, name, n); ++n) {
      }
    }
  }
}

void refusals() {
  const char *name = "refused";
  const ZqpConversion good = picture::usual(ZQP_NV12, ZQP_RGB565, 16, 16);
  struct Refusal {
    int32_t ZqpConversion::*field;
    int32_t value;
    int32_t code;
  };
  for (const Refusal &refusal :
       {Refusal{&ZqpConversion::outFormat, ZQP_RGB_PLANES, ZQP_ERR_FORMAT},
        Refusal{&ZqpConversion::inWidth, 32769, ZQP_ERR_SIZE},
        Refusal{&ZqpConversion::orientation, 9, ZQP_ERR_ORIENTATION},
        Refusal{&ZqpConversion::filter, 3, ZQP_ERR_FILTER}, Refusal{&ZqpConversion::dither, -1, ZQP_ERR_DITHER}}) {
    ZqpConversion c = good;
    c.*refusal.field = refusal.value;
    ZqpConverter *converter = nullptr;
    begin(0);
    check(zqpConverterMake(&c, &converter) == refusal.code && converter == nullptr, "the code", name, 0);
    check(ledger.asked == 0, "a refused description takes no memory", name, 0);
    finish(name, 0);
  }
}

void views() {
  const char *name = "views";
  uint8_t bytes[64] = {};
  ZqpPicture picture{};
  picture.recordSize = sizeof picture;
  ZqpConversion conversion{};
  conversion.recordSize = sizeof conversion;
  std::size_t size = 0;
  begin(1);
  check(zqpPictureBytes(ZQP_NV12, 6, 4, 1, &size) == ZQP_OK && size == 36, "bytes", name, 0);
  check(zqpPictureLayOut(&picture, ZQP_NV12, 6, 4, 1, bytes, sizeof bytes) == ZQP_OK, "layout", name, 0);
  check(zqpPicturePart(&picture, 2, 2, 2, 2, &picture) == ZQP_OK, "part", name, 0);
  check(zqpConversionInit(&conversion) == ZQP_OK, "init", name, 0);
  check(zqpErrorText(ZQP_ERR_MEMORY) != nullptr, "text", name, 0);
  zqpConverterFree(nullptr);
  check(ledger.asked == 0, "nothing is allocated", name, 0);
  finish(name, 0);
}

/// The longest sides there are: tables of many weights fit, and their sizes are right.
void longestSides() {
  for (const int32_t filter : {ZQP_FILTER_BILINEAR, ZQP_FILTER_AREA}) {
    ZqpConversion c = picture::usual(ZQP_I420, ZQP_RGB24, ZQP_MOST_PIXELS, ZQP_MOST_PIXELS);
    c.filter = filter;
    c.outWidth = c.outHeight = ZQP_MOST_PIXELS - 1;
    for (int n = 0; n < 2; ++n) {
      ZqpConverter *converter = nullptr;
      begin(n);
      check(zqpConverterMake(&c, &converter) == (n == 0 ? ZQP_OK : ZQP_ERR_MEMORY), "code", "longest sides", n);
      zqpConverterFree(converter);
      finish("longest sides", n);
    }
  }
}

} // namespace

int main() {
  lives();
  refusals();
  views();
  longestSides();
  return memory::report(3000);
}
