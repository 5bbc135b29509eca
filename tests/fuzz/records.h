// Conversion records as the fuzzers draw them.
#pragma once

#include "fuzz/script.h"
#include "zqColorConversion.h"

#include <cstdint>

namespace fuzz {

/// A record without planes. Mostly codes that exist and small sizes; strides are mostly tight or a little more.
ConvertParams readRecord(Script &script);
/// The script of an ordinary record: sizes 0..71, tight strides plus 0..31 bytes.
void writeRecord(ScriptWriter &writer, const ConvertParams &record, int inExtra, int outExtra);

/// Draws one field anew.
void changeRecord(Script &script, ConvertParams &record);
/// Draws the two strides anew.
void readStrides(Script &script, ConvertParams &record);
void writeStrides(ScriptWriter &writer, int inExtra, int outExtra);

/// Converters of semi-planar input find the split chroma in planes that set-up made; how large those are beyond what
/// set-up asked for is the library's own affair.
bool isSemiPlanarConversion(const ConvertParams &record);
/// The stride is shorter than a line. The library reads no byte outside such planes, but what a picture made of them
/// would be, nobody says.
bool inputLinesOverlap(const ConvertParams &record);
/// More bytes than anything here is given, few enough that such figures can be added up.
constexpr int64_t bounded(int64_t bytes) {
  return bytes < int64_t{1} << 50 ? bytes : int64_t{1} << 50;
}
/// Pixels of the output; many more than its bytes where the stride is short.
int64_t pixelsOf(const ConvertParams &record);
/// Bytes that set-up needs for tables and scratch planes, roughly.
int64_t setUpBytes(const ConvertParams &record);

inline constexpr int64_t kLargest = int64_t{1} << 20;       ///< of all planes of a frame that is converted
inline constexpr int64_t kLargestCompared = 40000;          ///< pixels of a picture that the slow models make as well
inline constexpr int64_t kLargestSetUp = int64_t{16} << 20; ///< of what set-up allocates

} // namespace fuzz
