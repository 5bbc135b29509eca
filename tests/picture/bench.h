// Conversions by the library, compared with the model, all bytes of the memory.
#pragma once

#include "picture/cases.h"
#include "picture/contents.h"
#include "picture/reference/own_picture.h"

#include <cstdint>
#include <memory>
#include <string>

namespace picture {

struct FreeConverter {
  void operator()(ZqpConverter *converter) const { zqpConverterFree(converter); }
};
using Converter = std::unique_ptr<ZqpConverter, FreeConverter>;

/// Null, and a failure of the test, if the library refuses.
Converter makeConverter(const ZqpConversion &conversion);

/// Where two pictures of one lie differ first; empty if nowhere.
std::string difference(const reference::OwnPicture &made, const reference::OwnPicture &expected);

/// Alignment, padding and direction of lines, any. Nothing lies behind an input, where an address sanitizer looks;
/// outputs have noise around them.
reference::Lie anyInputLie(Random &random);
reference::Lie anyOutputLie(Random &random);

/// One conversion and what it should make.
class Trial {
public:
  Trial(const ZqpConversion &conversion, Content content, uint32_t seed);

  /// Empty if the library made exactly what the model makes, at every level, as a whole and in bands, and left its
  /// input alone.
  std::string run();

private:
  [[nodiscard]] std::string runHere();

  ZqpConversion conversion_;
  Random random_;
  reference::OwnPicture in_;
  reference::OwnPicture blank_;
  reference::OwnPicture expected_;
};

} // namespace picture
