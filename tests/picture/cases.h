// Conversions of the tests.
#pragma once

#include "zqPicture.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace picture {

using Random = std::mt19937;

/// A number from `least` to `most`.
int between(Random &random, int least, int most);

std::vector<int32_t> inputFormats();
std::vector<int32_t> outputFormats();

/// What zqpConversionInit() says is usual, of two formats and one size.
ZqpConversion usual(int32_t inFormat, int32_t outFormat, int width, int height);

/// Any orientation, filter, dither, siting, matrix and range; the size is that of the input, turned.
ZqpConversion anySameSize(Random &random, int32_t inFormat, int32_t outFormat, int width, int height);

/// The same, of a part of the input that may begin anywhere, made any size up to `most` a side.
ZqpConversion anyResized(Random &random, int32_t inFormat, int32_t outFormat, int most);

/// Gives both sides of a conversion the same colours.
void keepColours(ZqpConversion &conversion);

std::string describe(const ZqpConversion &conversion);

} // namespace picture
