// What zqPicture's header says of descriptions and views, one sentence after the other, for the fuzzers: which errors
// apply. Of several that apply any may be returned.
#pragma once

#include "fuzz/script.h"
#include "zqPicture.h"

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// A set of errors: bit number ZqpError.
using Errors = uint32_t;
constexpr Errors only(int32_t error) {
  return Errors{1} << error;
}

/// None if a converter is to be made.
Errors errorsOf(const ZqpConversion &conversion);

/// Of the views of one conversion and a band of its output. None if it is to be converted.
Errors errorsOf(const ZqpConversion &conversion, const ZqpPicture &in, const ZqpPicture &out, int32_t firstLine,
                int32_t lineCount);

/// Whether an error is one of these, and none if there is none.
void expect(int32_t error, Errors allowed, const char *what);
/// Ends the run with a message: the library did what it must not do.
[[noreturn]] void failPicture(const char *what, int32_t error);

/// Any bytes, or a description that is near a good one, with small sizes.
ZqpConversion readConversion(Script &script);
/// A good one.
ZqpConversion readGoodConversion(Script &script);
void writeConversion(ScriptWriter &writer, int32_t in, int32_t out, int variety);

} // namespace fuzz
